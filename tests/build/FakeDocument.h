#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "platform/engine/Document.h"
#include "support/HeldItem.h"

namespace quillbox {

// A document engine of the tests' own: it generates nothing, says what a test told it to say, and records
// what it was asked for.

class FakeTemplate : public PageTemplate {
  public:
    FakeTemplate(std::string name, std::string supports, Ref<quillbox::NamespaceDefs> defs)
        : mName(std::move(name)), mSupports(std::move(supports)), mDefs(std::move(defs)) {
        namespaces->Add("CM.Quillbox");
    }
    void AddPage(const std::string& name, const std::string& itemType) {
        auto page = make<TemplatePage>();
        page->Name = name;
        page->NamespaceItemType = itemType;
        mPages->Add(Value(page), name);
    }
    std::string Name() const override { return mName; }
    std::string Path() const override { return "/templates/" + mName + "/"; }
    std::string Supports() const override { return mSupports; }
    Ref<Collection> Pages() override { return mPages; }
    Ref<quillbox::NamespaceDefs> NamespaceDefs() override { return mDefs; }
    Ref<Collection> Namespaces() override { return namespaces; }

    Ref<Collection> namespaces = make<Collection>();

  private:
    std::string mName, mSupports;
    Ref<quillbox::NamespaceDefs> mDefs;
    Ref<Collection> mPages = make<Collection>();
};

// What tests tell the common provider to say.
struct CommonAnswers {
    std::map<std::string, std::string> data, properties;
    // How often an item was made current.
    int told = 0;
};

class FakeCommonProvider : public HeldItem {
  public:
    explicit FakeCommonProvider(std::shared_ptr<CommonAnswers> answers) : mAnswers(std::move(answers)) {}
    std::string_view ClassName() const override { return "FakeCommonProvider"; }

    std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>&) override {
        const auto found = mAnswers->data.find(lower(toText(element->Attributes->Item("type"))));
        return found == mAnswers->data.end() ? "" : found->second;
    }
    std::string GetProperty(const std::string& name) override {
        const auto found = mAnswers->properties.find(name);
        return found == mAnswers->properties.end() ? "!UNCRECOGNISED TAG '" + name + "'!" : found->second;
    }
    using HeldItem::SetCurrentItem;
    void SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                        const std::string& type, const Ref<Object>& parent) override {
        HeldItem::SetCurrentItem(def, item, type, parent);
        ++mAnswers->told;
    }
    std::string ParseForProperties(const std::string& text) override { return text; }
    Ref<Object> Clone() override { return make<FakeCommonProvider>(mAnswers); }

  private:
    std::shared_ptr<CommonAnswers> mAnswers;
};

// Knows the words "true" and "false".
class FakeCondition : public Condition {
  public:
    explicit FakeCondition(std::string text) : mText(std::move(text)) {}
    bool IsValid() const override { return mText == "true" || mText == "false"; }
    bool Evaluate(const Ref<Object>&, const Ref<NamespaceDef>&, const Ref<Document>&,
                  IDataProvider*) override {
        return mText == "true";
    }

  private:
    std::string mText;
};

class FakePage : public LoadedPage {
  public:
    explicit FakePage(std::string text) : mText(std::move(text)) {}
    void SetDataProvider(const Ref<Object>& provider) override { mProvider = provider; }
    std::string Render() override {
        return dynamic_cast<IDataProvider&>(*mProvider).ParseForProperties(mText);
    }

  private:
    std::string mText;
    Ref<Object> mProvider;
};

class FakeDocument : public Document {
  public:
    explicit FakeDocument(const TemplateService::Family* family) : mFamily(family) {}

    Ref<PageTemplate> Template() override {
        return PageTemplates->HasKey(TemplateName) ? PageTemplates->Item(TemplateName) : nullptr;
    }
    Ref<quillbox::NamespaceDefs> NamespaceDefs() override { return make<quillbox::NamespaceDefs>(); }
    Ref<Object> NamespaceProvider(const std::string& className) override {
        if (!mFamily || mFamily->providerClass != className)
            throw AutomationError("No provider '" + className + "'");
        if (!mProvider) {
            mProvider = mFamily->makeProvider();
            dynamic_cast<INamespaceProvider&>(*mProvider).Initialise(self(this));
        }
        return mProvider;
    }
    std::string CompilerLog() const override { return log; }
    bool Cancelled() const override { return cancelled; }
    void Cancel() override { cancelled = true; }
    // Each build leaves the next log.
    void Build() override {
        ++builds;
        if (!logs.empty()) {
            log = logs.front();
            logs.pop_front();
        }
        if (onBuild) onBuild(*this);
    }
    std::string Scrap(const std::string& name) override {
        const auto found = scraps.find(name);
        return found == scraps.end() ? "!MISSING SCRAP '" + name + "'!" : found->second;
    }
    bool IsMemberIncluded(const std::string& name) override { return name != "Excluded"; }
    void StreamTOC(const Ref<FileSystemObject>& file, const Ref<PageTemplate>& pageTemplate) override {
        const auto text = "[toc of " + pageTemplate->Name() + ": " + TOCBookPrefix + "|" + TOCNodeScrap +
                          "|" + TOCBookSuffix + "]";
        if (file) file->Write(text);
    }
    void CopyTemplateSupportFiles(const Ref<PageTemplate>& pageTemplate) override {
        copied.push_back((pageTemplate ? pageTemplate->Name() : "none") + " to " + OutputPath +
                         (SwitchC ? "" : " without switch C"));
    }
    Ref<LoadedPage> LoadPage(const std::string& file) override {
        const auto found = pages.find(file);
        if (found == pages.end()) throw AutomationError("There is no page " + file);
        return make<FakePage>(found->second);
    }
    Ref<Object> NewCommonProvider(IDataProvider*) override { return make<FakeCommonProvider>(common); }
    std::unique_ptr<Condition> NewCondition(const std::string& text) override {
        return std::make_unique<FakeCondition>(text);
    }

    std::map<std::string, std::string> scraps, pages;
    std::shared_ptr<CommonAnswers> common = std::make_shared<CommonAnswers>();
    std::deque<std::string> logs;
    std::string log;
    bool cancelled = false;
    int builds = 0;
    std::function<void(FakeDocument&)> onBuild;
    std::vector<std::string> copied;

  private:
    const TemplateService::Family* mFamily;
    Ref<Object> mProvider;
};

class FakeEngine : public DocumentEngine, public TemplateService {
  public:
    Ref<Document> NewDocument() override {
        auto document = make<FakeDocument>(&family);
        if (onNew) onNew(*document);
        made.push_back(document);
        return document;
    }
    TemplateService& Templates() override { return *this; }

    Ref<quillbox::PageTemplates> PageTemplates() override { return templates; }
    void AddFolder(const std::string&) override {}
    Ref<Object> SharedTemplateObject() override { return templates; }
    Ref<NamespaceDefs> Namespaces(const std::string& name) override {
        if (name != family.name) throw AutomationError("There is no family '" + name + "'");
        return family.defs;
    }
    void RegisterFamily(const Family& one) override { family = one; }

    Ref<FakeTemplate> AddTemplate(const std::string& name, const std::string& supports = "") {
        auto added = make<FakeTemplate>(name, supports, family.defs);
        templates->Add(added, name);
        return added;
    }

    Family family;
    Ref<quillbox::PageTemplates> templates = make<quillbox::PageTemplates>();
    // What a new document gets before anybody works with it.
    std::function<void(FakeDocument&)> onNew;
    std::vector<Ref<FakeDocument>> made;
};

}  // namespace quillbox
