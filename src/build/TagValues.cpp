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
class TagText {
  public:
    explicit TagText(std::string text) : mText(std::move(text)), mIsScrap(mText.starts_with('@')) {
        if (mIsScrap) mText.erase(0, 1);
    }
    // The text does not change while the handle is held.
    std::shared_ptr<const std::string> Of(const TagCall& call) const {
        if (!mIsScrap) return {std::shared_ptr<void>(), &mText};
        auto scrap = call.provider.Scrap(mText);
        const auto* text = &scrap->Text();
        return {std::move(scrap), text};
    }
    bool IsEmpty() const { return mText.empty() && !mIsScrap; }

  private:
    std::string mText;
    bool mIsScrap;
};

std::string literal(const TagCall& call) { return call.provider.Parse(call.Needed("value"), "the value"); }

std::string scrap(const TagCall& call) {
    return call.provider.ParseScrap(*call.provider.Scrap(call.Needed("name")));
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
                                            lower(*TagText(call.Optional("filter")).Of(call))});
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

std::string unlessDiscarded(std::string value) {
    if (value == "{Discard}") value.clear();
    return value;
}

// The common provider escapes its own values; it knows the ways, and so is asked for those of others too.
std::string escaped(const TagCall& call, const std::string& how, std::string value) {
    if (how.empty() || value.empty() || value.starts_with("!UNCRECOGNISED")) return value;
    const auto text = make<Element>();
    text->Attributes->Add("text", "type");
    text->Attributes->Add(value, "value");
    text->Attributes->Add(how, "escape");
    return unlessDiscarded(fromCommonProvider(call, text));
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

// What a tag says of itself, which holds however often it is asked for.
struct TagPlan : TagNotes {
    explicit TagPlan(const Element& tag)
        : type(tagType(tag)),
          self("%%" + type + "%%"),
          valueFormat(attributeText(tag, "valueformat")),
          emptyFormat(attributeText(tag, "emptyformat")) {
        const auto row = tagTypes().find(type);
        if (row != tagTypes().end()) known = &row->second;
        if (hasAttribute(tag, "condition")) condition = attributeText(tag, "condition");
        escape = attributeText(tag, "escape");
        isForScript = sameText(attributeText(tag, "forscript"), "True");
    }

    // The tag without its attributes: what stands for the value in a format.
    std::string type, self;
    // None for a type without a row here.
    const TagType* known = nullptr;
    std::optional<std::string> condition;
    std::string escape;
    TagText valueFormat, emptyFormat;
    bool isForScript = false;
};

bool holds(const TagCall& call, Condition& condition) {
    auto& provider = call.provider;
    return condition.Evaluate(provider.CurrentItem(), provider.NamespaceDef(), provider.Document(),
                              &provider);
}

std::string general(const TagCall& call, const TagPlan& plan) {
    auto value = fromCommonProvider(call, call.handle);
    if (value.empty()) value = escaped(call, plan.escape, call.provider.GetProperty(plan.type));
    return unlessDiscarded(std::move(value));
}

std::string formatted(const TagCall& call, const TagPlan& plan, std::string value) {
    if (!value.empty() && plan.isForScript) value = replaceAll(value, "'", "\\'");
    const auto& format = value.empty() ? plan.emptyFormat : plan.valueFormat;
    if (!format.IsEmpty()) {
        const auto text = format.Of(call);
        if (!text->empty()) value = value.empty() ? *text : replaceAllText(*text, plan.self, value);
    }
    if (value.find('%') == std::string::npos) return value;
    return replaceAll(value, "/%", "%");
}

std::string plannedValue(const TagCall& call, const TagPlan& plan) {
    if (plan.type.empty()) call.Needed("type");
    if (plan.condition) {
        const auto test = call.provider.Memory().Condition(call.provider.NeedDocument(), *plan.condition);
        if (!test->IsValid()) return "!INVALID CONDITION TYPE!";
        if (!holds(call, *test)) return {};
    }
    if (!plan.known) return formatted(call, plan, general(call, plan));
    auto value = plan.known->value(call);
    if (plan.known->whole) return value;
    return formatted(call, plan, escaped(call, plan.escape, std::move(value)));
}

}  // namespace

std::string tagValue(const TagCall& call) {
    const auto* split = asSplitTag(call.element);
    if (!split) return plannedValue(call, TagPlan(call.element));
    if (!split->notes) split->notes = std::make_unique<const TagPlan>(*split);
    return plannedValue(call, static_cast<const TagPlan&>(*split->notes));
}

std::vector<std::string> tagNames() {
    std::vector<std::string> names;
    for (const auto& [name, type] : tagTypes()) names.push_back(name);
    return names;
}

}  // namespace quillbox
