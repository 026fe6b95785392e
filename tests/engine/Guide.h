#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/engine/Document.h"
#include "support/HeldItem.h"

namespace quillbox {

// A made-up project for the engine: pages, letters with words below them, and contents. It knows nothing of
// help.
class GuideItem : public Object {
  public:
    static constexpr std::string_view kClassName = "GuideItem";
    std::string_view ClassName() const override { return kClassName; }

    GuideItem() = default;
    GuideItem(std::string kind, std::map<std::string, std::string> values)
        : kind(std::move(kind)), properties(std::move(values)) {}

    std::string kind;
    // Published properties, by their names in lower case.
    std::map<std::string, std::string> properties;
    std::vector<Ref<GuideItem>> children;
};

struct GuideNode {
    std::string caption, link;
    int level = 1;
    int icon = -1;
    int kind = 0;
};

class Guide : public GuideItem {
  public:
    Guide() : GuideItem("guide", {{"name", "Guide"}, {"qualifiedname", "/work/guide.prj"}}) {}

    Ref<GuideItem> AddPage(const std::string& name, const std::string& title, const std::string& body = "");

    // The kind of items that pages are.
    std::string pageKind = "page";
    std::vector<GuideNode> contents;
    // What the provider was called with, in order.
    std::vector<std::string> calls;
    // What it writes for streamed content, by content type.
    std::map<std::string, std::string> streams;
    std::string defaultPage;
};

// The answers of a guide's tags: the item's properties, "variable", "scrap", "itemtitle", "linktarget",
// "words" (a list of the item's children, through the scrap "_word"), "tableofcontents", "fail", and the
// general ones.
class GuideData : public HeldItem {
  public:
    std::string_view ClassName() const override { return "GuideData"; }

    std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) override;
    std::string ParseForProperties(const std::string& text) override;
    std::string GetProperty(const std::string& name) override;
    Ref<Object> Clone() override;

    ObjectReference<Document> document;

  private:
    std::string parse(const std::string& text, const Ref<FileSystemObject>& file);
    std::string valueOf(const std::string& type, const Ref<Element>& element,
                        const Ref<FileSystemObject>& file);
    std::string formatted(const std::string& type, const std::string& value, const Element& element);
    std::string list(const Element& element);
    void writeContents(const Ref<Element>& element, const Ref<FileSystemObject>& file);
    IDataProvider& common();

    Ref<Object> mCommon;
};

class GuideProvider : public Object, public INamespaceProvider {
  public:
    std::string_view ClassName() const override { return "GuideProvider"; }

    explicit GuideProvider(std::string name = "Test.Guide") : mName(std::move(name)) {}

    std::vector<Ref<Object>> GetItems(const Ref<NamespaceDef>& def, const Ref<Object>& parent,
                                      const std::string& filter) override;
    Ref<Object> DocumentDataProvider() override { return mData; }
    void Initialise(const Ref<Document>& document) override;
    Ref<Object> GetRootItem(const Ref<NamespaceDef>&, const std::string&) override { return {}; }
    Ref<Object> GetObjectFromQualifiedName(const std::string&) override { return {}; }
    Ref<NamespaceDef> GetNamespaceDefFromObject(const Ref<NamespaceDefs>&, const Ref<Object>&) override {
        return {};
    }
    void AddRootItem(const Ref<Object>&) override {}
    void StreamContent(const Ref<FileSystemObject>& file, const std::string& contentType) override;
    std::string Name() const override { return mName; }
    void ContentCreated(const Ref<Object>& item, const Ref<NamespaceDef>& def,
                        const std::string& file) override;
    void BeforeProcessRootItem(const Ref<Object>&) override;
    void AfterProcessRootItem(const Ref<Object>&) override { note("AfterProcessRootItem"); }
    void BeforeProcessItem(const Ref<Object>& item, const Ref<Object>&) override;
    void AfterProcessItem(const Ref<Object>& item, const Ref<Object>&) override;
    Ref<Collection> GetModuleItems() override { return make<Collection>(); }
    std::string BrowseForMoniker(const std::string&, int) override { return {}; }
    bool VerifyMoniker(const std::string&, std::string&) override { return false; }

  private:
    Guide& guide() const;
    void note(const std::string& call) const { guide().calls.push_back(call); }
    void writeIndex(FileSystemObject& file);
    void writeIds(FileSystemObject& file, bool map);

    std::string mName;
    ObjectReference<Document> mDocument;
    Ref<GuideData> mData = make<GuideData>();
    std::vector<std::string> mFiles;
};

// The family as the engine is told of it: "guide" at the top, below it "page" and "letter", below that
// "word".
TemplateService::Family guideFamily();

// The same provider under the names that help templates ask for.
TemplateService::Family helpFamily();

// What the engine reads published properties with.
std::optional<std::string> readGuideProperty(Object& item, const std::string& name);

}  // namespace quillbox
