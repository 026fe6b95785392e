#include "engine/Guide.h"

#include <algorithm>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "platform/engine/Tags.h"

namespace quillbox {

namespace {

Ref<GuideItem> asItem(const Ref<Object>& object) { return std::dynamic_pointer_cast<GuideItem>(object); }

std::string attribute(const Element& element, const std::string& name) {
    const auto* value = element.Attributes->Find(name);
    return value ? toText(*value) : std::string();
}

std::string nameOf(const Ref<Object>& object) { return readGuideProperty(*object, "name").value_or("?"); }

}  // namespace

std::optional<std::string> readGuideProperty(Object& item, const std::string& name) {
    const auto* guideItem = dynamic_cast<GuideItem*>(&item);
    if (!guideItem) return {};
    const auto found = guideItem->properties.find(lower(name));
    return found == guideItem->properties.end() ? std::nullopt : std::optional(found->second);
}

Ref<GuideItem> Guide::AddPage(const std::string& name, const std::string& title, const std::string& body) {
    auto page = make<GuideItem>(
        pageKind, std::map<std::string, std::string>{
                      {"name", name}, {"title", title}, {"body", body}, {"qualifiedname", name}});
    children.push_back(page);
    return page;
}

IDataProvider& GuideData::common() {
    if (!mCommon) mCommon = document.Get()->NewCommonProvider(this);
    auto& provider = dynamic_cast<IDataProvider&>(*mCommon);
    provider.SetCurrentItem(mDef, mItem, mType, mParent);
    return provider;
}

std::string GuideData::ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) {
    const auto type = lower(attribute(*element, "type"));
    if (const auto text = attribute(*element, "condition"); !text.empty()) {
        const auto condition = document.Get()->NewCondition(text);
        if (!condition->IsValid()) return "!INVALID CONDITION TYPE!";
        if (!condition->Evaluate(mItem, mDef, document.Get(), this)) return {};
    }
    return formatted(type, valueOf(type, element, file), *element);
}

std::string GuideData::formatted(const std::string& type, const std::string& value, const Element& element) {
    auto format = attribute(element, value.empty() ? "EmptyFormat" : "ValueFormat");
    if (format.starts_with('@')) format = document.Get()->Scrap(format.substr(1));
    if (format.empty()) return value;
    return value.empty() ? format : replaceAll(format, "%%" + type + "%%", value);
}

std::string GuideData::valueOf(const std::string& type, const Ref<Element>& element,
                               const Ref<FileSystemObject>& file) {
    auto& owner = *document.Get();
    if (type == "fail") throw AutomationError("the tag failed");
    if (type == "variable") {
        const auto name = attribute(*element, "name");
        return owner.VariableValues->HasKey(name) ? parse(owner.VariableValues->Item(name)->Value, file) : "";
    }
    if (type == "scrap") return parse(owner.Scrap(attribute(*element, "name")), file);
    if (type == "literal") return parse(attribute(*element, "value"), file);
    if (type == "filtereditemlist") return list(*element);
    if (type == "stylesheets") return {};
    if (type == "topicsection") return GetProperty("body");
    if (type == "filename") return file ? file->BaseName() : "";
    if (type == "tableofcontents") {
        writeContents(element, file);
        return {};
    }
    auto value = common().ProvideData(element, file);
    if (value.empty()) value = GetProperty(type);
    return value == "{Discard}" ? "" : value;
}

std::string GuideData::list(const Element& element) {
    auto& owner = *document.Get();
    const auto defs = owner.Template()->NamespaceDefs()->ByRootName(attribute(element, "namespace"));
    const auto def = defs->Item(1);
    const auto scrap = attribute(element, "scrap");
    auto provider = owner.NamespaceProvider(owner.Template()->Namespaces()->Texts().front() + "Provider");
    const auto copy = Clone();
    auto& data = dynamic_cast<GuideData&>(*copy);
    std::string text;
    for (const auto& item : dynamic_cast<INamespaceProvider&>(*provider).GetItems(def, mItem, "")) {
        const auto separator = owner.Scrap(scrap + "_SEPARATOR");
        if (!text.empty() && !separator.starts_with("!MISSING")) text += data.ParseForProperties(separator);
        data.SetCurrentItem(def, item, def->Name, mItem);
        text += data.ParseForProperties(owner.Scrap(scrap + "_body"));
    }
    return text;
}

void GuideData::writeContents(const Ref<Element>& element, const Ref<FileSystemObject>& file) {
    auto& owner = *document.Get();
    const auto name = owner.Template()->Name();
    if (!owner.TOCDefs->HasKey(name)) {
        auto definition = make<TOCDefinition>();
        std::vector<Ref<NodeDef>> trail;
        for (const auto& node : dynamic_cast<Guide&>(*mRoot).contents) {
            auto def = make<NodeDef>();
            def->Caption = node.caption;
            def->LinkTarget = node.link;
            def->Kind = node.kind;
            def->HasCustomIcon = node.icon >= 0;
            def->IconNumber = node.icon;
            def->Included = true;
            trail.resize(static_cast<std::size_t>(node.level - 1));
            if (!trail.empty()) def->Parent.Set(trail.back());
            trail.push_back(def);
            definition->Nodes->Add(def, def->Key);
        }
        owner.TOCDefs->Add(Value(definition), name);
    }
    owner.TOCBookPrefix = attribute(*element, "BookPrefix");
    owner.TOCBookSuffix = attribute(*element, "BookSuffix");
    owner.TOCNodeScrap = attribute(*element, "NodeScrap");
    if (owner.TOCBookPrefix.empty() && owner.TOCBookSuffix.empty() && owner.TOCNodeScrap.empty()) {
        owner.TOCBookPrefix = "<UL>";
        owner.TOCBookSuffix = "</UL>";
    }
    owner.StreamTOC(file, owner.Template());
}

std::string GuideData::parse(const std::string& text, const Ref<FileSystemObject>& file) {
    std::string out;
    expandTags(
        splitTags(text), [&](const TagPiece& tag) { return ProvideData(tag.element, file); }, out);
    return out;
}

std::string GuideData::ParseForProperties(const std::string& text) { return parse(text, nullptr); }

std::string GuideData::GetProperty(const std::string& name) {
    if (mItem && sameText(name, "glossaryletterlink")) return readGuideProperty(*mItem, "name").value_or("");
    if (sameText(name, "itemtitle") && mItem) return readGuideProperty(*mItem, "title").value_or("");
    if (sameText(name, "linktarget") && mItem)
        return readGuideProperty(*mItem, "qualifiedname").value_or("") + ".html";
    if (sameText(name, "helpfiletitle")) return document.Get()->Title;
    if (sameText(name, "body") && mItem)
        return parse(readGuideProperty(*mItem, "body").value_or(""), nullptr);
    if (const auto own = mItem ? readGuideProperty(*mItem, name) : std::nullopt; own && !own->empty())
        return *own;
    return common().GetProperty(name);
}

Ref<Object> GuideData::Clone() {
    auto copy = make<GuideData>();
    copy->SetCurrentItem(mDef, mItem, mType, mParent);
    copy->SetCurrentRootItem(mRoot);
    copy->document.Set(document.Get());
    return copy;
}

Guide& GuideProvider::guide() const {
    return dynamic_cast<Guide&>(*toObject(mDocument.Get()->Objects->Item(mName)));
}

void GuideProvider::Initialise(const Ref<Document>& document) {
    mDocument.Set(document);
    mData->document.Set(document);
    note("Initialise");
}

std::vector<Ref<Object>> GuideProvider::GetItems(const Ref<NamespaceDef>& def, const Ref<Object>& parent,
                                                 const std::string& filter) {
    note("GetItems " + def->Name + " of " + (parent ? nameOf(parent) : "none") +
         (filter.empty() ? "" : " " + filter));
    const auto kind = def->Name.substr(def->Name.find(':') + 1);
    if (def->ParentName.empty()) return {self(&guide())};
    std::vector<Ref<Object>> items;
    for (const auto& child : asItem(parent)->children) {
        if (child->kind == kind) items.push_back(child);
    }
    return items;
}

void GuideProvider::StreamContent(const Ref<FileSystemObject>& file, const std::string& contentType) {
    note("StreamContent " + contentType);
    if (contentType == "files") file->Write(join(mFiles, "\n"));
    if (contentType == "index") writeIndex(*file);
    if (contentType == "map" || contentType == "alias") writeIds(*file, contentType == "map");
    const auto found = guide().streams.find(contentType);
    if (found != guide().streams.end()) file->Write(found->second);
}

// The keywords of all pages, one a line of the property "keywords".
void GuideProvider::writeIndex(FileSystemObject& file) {
    for (const auto& page : guide().children) {
        for (const auto& keyword : split(page->properties["keywords"], "\n")) {
            auto item = make<GuideItem>(
                "keyword", std::map<std::string, std::string>{{"title", keyword},
                                                              {"qualifiedname", page->properties["name"]}});
            mData->SetCurrentItem(nullptr, item, "Keyword", nullptr);
            file.Write(mData->ParseForProperties(mDocument.Get()->Scrap("_INDEX_ENTRY")) + "\n");
        }
    }
}

void GuideProvider::writeIds(FileSystemObject& file, bool map) {
    for (const auto& page : guide().children) {
        const auto id = page->properties["id"];
        if (id.empty()) continue;
        file.Write(map ? "#define IDH_" + id + " " + id + "\n"
                       : "IDH_" + id + " = " + page->properties["name"] + ".html\n");
    }
}

void GuideProvider::ContentCreated(const Ref<Object>& item, const Ref<NamespaceDef>&,
                                   const std::string& file) {
    const auto name = replaceAll(file, mDocument.Get()->OutputPath, "");
    note("ContentCreated " + (item ? nameOf(item) : "none") + " " + name);
    mFiles.push_back(name);
}

void GuideProvider::BeforeProcessRootItem(const Ref<Object>&) {
    note("BeforeProcessRootItem");
    mDocument.Get()->ProgressVerb = "writing";
    mDocument.Get()->ProgressCaption = "Generating content";
    mDocument.Get()->DefaultTopic = guide().defaultPage;
}

void GuideProvider::BeforeProcessItem(const Ref<Object>& item, const Ref<Object>&) {
    note("BeforeProcessItem " + nameOf(item));
}

void GuideProvider::AfterProcessItem(const Ref<Object>& item, const Ref<Object>&) {
    note("AfterProcessItem " + nameOf(item));
    auto& document = *mDocument.Get();
    document.CompilerInputFile = document.OutputPath + document.Title + ".hhp";
}

namespace {

Ref<NamespaceDefs> defsOf(const std::string& family, const std::string& provider,
                          const std::vector<std::pair<std::string, std::string>>& namesAndParents) {
    auto defs = make<NamespaceDefs>();
    for (const auto& [name, parent] : namesAndParents) {
        auto def = make<NamespaceDef>();
        def->Name = family + ":" + name;
        def->NamespaceProvider = provider;
        def->ParentName = parent.empty() ? "" : family + ":" + parent;
        defs->Add(def);
    }
    return defs;
}

}  // namespace

TemplateService::Family guideFamily() {
    const auto defs = defsOf("test.guide", "Test.Guide",
                             {{"guide", ""}, {"page", "guide"}, {"letter", "guide"}, {"word", "letter"}});
    return {"test.guide", "Test.Guide", "Test.GuideProvider", defs, [] { return make<GuideProvider>(); }};
}

TemplateService::Family helpFamily() {
    const auto defs = defsOf("cm.quillbox", "CM.Quillbox",
                             {{"qbproject", ""},
                              {"topic", "qbproject"},
                              {"linkcategory", "topic"},
                              {"link", "linkcategory"},
                              {"glossaryletter", "qbproject"},
                              {"glossaryitem", "glossaryletter"}});
    return {"cm.quillbox", "CM.Quillbox", "CM.QuillboxProvider", defs,
            [] { return make<GuideProvider>("CM.Quillbox"); }};
}

}  // namespace quillbox
