#include "build/TagValues.h"

#include <unordered_map>

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/BodyPipeline.h"
#include "build/BookletPages.h"
#include "build/ContentsTag.h"
#include "build/EntryNumbers.h"
#include "build/ItemAs.h"
#include "build/ItemLists.h"
#include "build/ManifestTOC.h"
#include "build/QbDataProvider.h"
#include "content/OtherFiles.h"
#include "frame/typelib/TypeLibrary.h"
#include "project/QbProject.h"
#include "topics/Topic.h"

namespace quillbox {

std::string TagCall::Needed(std::string_view name) const {
    if (hasAttribute(element, name)) return attributeText(element, name);
    throw AutomationError("The tag '" + Optional("type") + "' needs the attribute '" + std::string(name) +
                          "'");
}

namespace {

template <class T>
Ref<T> currentAs(const TagCall& call) {
    return itemAs<T>(call.provider.CurrentItem());
}

// What an attribute says as it stands, or a scrap whose name stands there behind "@": a scrap may hold what
// ends an attribute.
std::string textOf(const TagCall& call, const char* attribute) {
    auto text = call.Optional(attribute);
    return text.starts_with('@') ? call.provider.NeedDocument().Scrap(text.substr(1)) : text;
}

std::string literal(const TagCall& call) { return call.provider.Parse(call.Needed("value"), "the value"); }

std::string scrap(const TagCall& call) {
    const auto name = call.Needed("name");
    return call.provider.Parse(call.provider.NeedDocument().Scrap(name), "the scrap '" + name + "'");
}

std::string bookletTitle(const TagCall& call) {
    const auto manifest = call.provider.CurrentManifest();
    if (!manifest) return {};
    const auto& properties = *manifest->BookletProperties;
    if (properties.RawCoverPage() && properties.CoverPageTopic()) return {};
    return properties.Title();
}

std::string bookletTableOfContents(const TagCall& call) {
    const auto manifest = call.provider.CurrentManifest();
    if (!manifest || !manifest->BookletProperties->GenerateTOC()) return {};
    const auto current = currentAs<Manifest>(call);
    if (!current) throw AutomationError("A booklet's table of contents needs a manifest as the current item");
    return manifestTOC(*current);
}

std::string section(const TagCall& call) {
    const auto name = call.Needed("name");
    auto topic = currentAs<Topic>(call);
    if (const auto entry = currentAs<ManifestEntry>(call)) topic = entry->Topic();
    return topic ? topicSection(call.provider, *topic, name, call.file) : std::string();
}

std::string list(const TagCall& call) {
    call.provider.RememberManifest();
    return filteredItemList(call.provider, {call.Needed("scrap"), lower(call.Needed("namespace")),
                                            lower(textOf(call, "filter"))});
}

std::string fileName(const TagCall& call) { return call.file ? call.file->BaseName() : std::string(); }

// Any failure leaves the place empty.
std::string variable(const TagCall& call) {
    std::string value;
    ignoringFailures([&] {
        const auto name = call.Needed("name");
        const ProviderMemory::InVariable scope(call.provider.Memory(), name);
        const auto& values = *call.provider.NeedDocument().VariableValues;
        if (!values.HasKey(name)) return;
        const auto text = values.Item(name)->Value;
        value = call.provider.ExpandTemplateText("%%ReplaceInQuotes:Value=True%%" + text, "the variable",
                                                 call.file);
    });
    return value;
}

// An item that does not choose among the stylesheets gets them all.
std::string styleSheets(const TagCall& call) {
    const auto item = call.provider.CurrentItem();
    if (!item) return {};
    const auto topic = itemAs<Topic>(item);
    std::string lines;
    for (const auto& name : call.provider.NeedProject().OtherFiles->StyleSheetNames()) {
        if (topic && !topic->IncludeStylesheet(name)) continue;
        if (!lines.empty()) lines += "\r\n";
        lines += R"(<link rel="stylesheet" type="text/css" href=")" + replaceAll(name, "\\", "/") + "\">";
    }
    return lines;
}

std::string incrementingValue(const TagCall& call) {
    const auto name = call.Optional("name");
    const auto initial = call.Optional("initialvalue");
    if (name.empty()) return {};
    auto& counters = call.provider.NeedProject().IncrementingValues;
    if (!counters) counters = make<Collection>();
    std::int64_t number = initial.empty() ? 1 : integerOf(initial);
    if (const auto* last = counters->Find(name)) {
        number = static_cast<std::int64_t>(toInteger(*last)) + 1;
        if (number > INT32_MAX) throw AutomationError("The counter '" + name + "' has run full");
        counters->Remove(name);
    }
    counters->Add(static_cast<std::int32_t>(number), name);
    return std::to_string(number);
}

std::string glossaryTerm(const TagCall& call) { return call.provider.GetProperty("glossaryitemterm"); }
std::string glossaryDefinition(const TagCall& call) {
    return call.provider.GetProperty("glossaryitemdefinition");
}

std::string linkCaption(const TagCall& call) {
    const auto link = currentAs<BookletLinkInfo>(call);
    if (!link) return {};
    const bool onlyIfOther = link->LinkTopic && sameText(call.Optional("onlyifnottopictitle"), "True");
    return onlyIfOther && sameText(link->LinkCaption, link->LinkTopic->Title()) ? std::string()
                                                                                : link->LinkCaption;
}

std::string linkURL(const TagCall& call) {
    const auto link = currentAs<BookletLinkInfo>(call);
    return link ? link->LinkURL : std::string();
}

std::string linkEntryNumber(const TagCall& call) {
    const auto link = currentAs<BookletLinkInfo>(call);
    const auto manifest = call.provider.CurrentManifest();
    if (!link || !link->LinkTopic || !manifest) return {};
    const auto entry = call.provider.Memory().OutlineOf(manifest).EntryOf(link->LinkTopic);
    return manifestEntryNumber(*manifest, entry, call.Optional("suffix"));
}

std::string nothing(const TagCall&) { return {}; }

std::string fromCommonProvider(const TagCall& call, const Ref<Element>& element) {
    return call.provider.CommonProvider().ProvideData(element, call.file);
}

std::string unlessDiscarded(std::string value) { return value == "{Discard}" ? std::string() : value; }

// The common provider escapes its own values; it knows the ways, and so is asked for those of others too.
std::string escaped(const TagCall& call, std::string value) {
    const auto how = call.Optional("escape");
    if (how.empty() || value.empty() || value.starts_with("!UNCRECOGNISED")) return value;
    const auto text = make<Element>();
    text->Attributes->Add("text", "type");
    text->Attributes->Add(value, "value");
    text->Attributes->Add(how, "escape");
    return unlessDiscarded(fromCommonProvider(call, text));
}

std::string general(const TagCall& call, const std::string& type) {
    auto value = fromCommonProvider(call, call.handle);
    if (value.empty()) value = escaped(call, call.provider.GetProperty(type));
    return unlessDiscarded(std::move(value));
}

struct TagType {
    std::string (*value)(const TagCall& call);
    // The value is the last word: no formats, no escapes.
    bool whole = false;
};

const std::unordered_map<std::string, TagType>& tagTypes() {
    static const std::unordered_map<std::string, TagType> table = {
        {"literal", {literal}},
        {"booklettitle", {bookletTitle}},
        {"booklettableofcontents", {bookletTableOfContents}},
        {"topiccontent", {topicContent, true}},
        {"coverpage", {coverPage, true}},
        {"topicsection", {section}},
        {"taggedcomment", {nothing, true}},
        {"filtereditemlist", {list}},
        {"scrap", {scrap}},
        {"tableofcontents", {tableOfContents}},
        {"filename", {fileName}},
        {"variable", {variable}},
        {"stylesheets", {styleSheets}},
        {"incrementingvalue", {incrementingValue}},
        {"glossaryitemterm", {glossaryTerm}},
        {"glossaryitemdefinition", {glossaryDefinition}},
        {"linkcaption", {linkCaption}},
        {"linkurl", {linkURL}},
        {"linkentrynumber", {linkEntryNumber}},
    };
    return table;
}

std::string formatted(const TagCall& call, const std::string& type, std::string value) {
    if (call.element.Attributes->Count() > 1) {
        if (!value.empty() && sameText(call.Optional("forscript"), "True"))
            value = replaceAll(value, "'", "\\'");
        const auto format = textOf(call, value.empty() ? "emptyformat" : "valueformat");
        if (!format.empty())
            value = value.empty() ? format : replaceAllText(format, "%%" + type + "%%", value);
    }
    if (value.find('%') == std::string::npos) return value;
    return replaceAll(value, "/%", "%");
}

}  // namespace

std::string tagValue(const TagCall& call) {
    const auto type = tagType(call.element);
    if (type.empty()) call.Needed("type");
    if (hasAttribute(call.element, "condition")) {
        const auto test = call.provider.NeedDocument().NewCondition(call.Optional("condition"));
        if (!test->IsValid()) return "!INVALID CONDITION TYPE!";
        const auto& provider = call.provider;
        if (!test->Evaluate(provider.CurrentItem(), provider.NamespaceDef(), provider.Document())) return {};
    }
    const auto known = tagTypes().find(type);
    if (known == tagTypes().end()) return formatted(call, type, general(call, type));
    auto value = known->second.value(call);
    return known->second.whole ? value : formatted(call, type, escaped(call, std::move(value)));
}

std::vector<std::string> tagNames() {
    std::vector<std::string> names;
    for (const auto& [name, type] : tagTypes()) names.push_back(name);
    return names;
}

}  // namespace quillbox
