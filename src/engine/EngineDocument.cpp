#include "engine/EngineDocument.h"

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/BuildRun.h"
#include "engine/CommonProvider.h"
#include "engine/Disk.h"
#include "engine/Expansion.h"
#include "engine/PageFile.h"
#include "engine/SupportFiles.h"

namespace quillbox {

namespace {

// A page of a template that a provider renders for one item.
class RenderedPage : public LoadedPage {
  public:
    RenderedPage(std::string file, std::shared_ptr<const TagPieces> pieces)
        : mFile(std::move(file)), mPieces(std::move(pieces)) {}

    void SetDataProvider(const Ref<Object>& provider) override { mProvider = provider; }
    std::string Render() override {
        auto* provider = dynamic_cast<IDataProvider*>(mProvider.get());
        if (!provider) throw AutomationError(mFile + ": the page has no data provider");
        std::string text;
        expandThrough(*provider, *mPieces, mFile, "", nullptr, text);
        return text;
    }

  private:
    std::string mFile;
    std::shared_ptr<const TagPieces> mPieces;
    Ref<Object> mProvider;
};

class DocumentCondition : public Condition {
  public:
    DocumentCondition(std::string text, std::shared_ptr<const ConditionExpression> expression)
        : mText(std::move(text)), mExpression(std::move(expression)) {}

    bool IsValid() const override { return mExpression != nullptr; }
    bool Evaluate(const Ref<Object>& item, const Ref<NamespaceDef>& def, const Ref<Document>& document,
                  IDataProvider* asker) override {
        if (!mExpression) throw AutomationError("'" + mText + "' is no condition");
        auto* owner = dynamic_cast<EngineDocument*>(document.get());
        if (!owner)
            throw AutomationError("The condition '" + mText + "' was given no document of this engine");
        return mExpression->Holds(FactsOfItem(mText, *owner, item, def, asker));
    }

  private:
    class FactsOfItem : public ConditionExpression::Facts {
      public:
        FactsOfItem(const std::string& condition, EngineDocument& document, const Ref<Object>& item,
                    const Ref<NamespaceDef>& def, IDataProvider* asker)
            : mCondition(condition), mDocument(document), mItem(item), mDef(def), mAsker(asker) {}

        std::string Property(const std::string& name) const override {
            if (auto published = mDocument.ReadProperty(mItem, name)) return *std::move(published);
            if (auto given = mAsker ? known(mAsker->GetProperty(name))
                                    : mDocument.ReadData(name, mDef, mItem, ItemType(), nullptr))
                return *std::move(given);
            const auto what = mItem ? std::string(mItem->ClassName()) + " has no property"
                                    : "There is no item with a property";
            throw AutomationError(what + " '" + name + "', asked for in the condition '" + mCondition + "'");
        }
        std::string Variable(const std::string& name) const override { return mDocument.Variable(name); }
        bool IsPage(const std::string& name) const override { return mDocument.IsPage(name); }
        std::string ItemType() const override { return mDef ? mDef->Name : std::string(); }

      private:
        const std::string& mCondition;
        EngineDocument& mDocument;
        const Ref<Object>& mItem;
        const Ref<NamespaceDef>& mDef;
        IDataProvider* mAsker;
    };

    std::string mText;
    std::shared_ptr<const ConditionExpression> mExpression;
};

}  // namespace

Ref<PageTemplate> EngineDocument::Template() {
    if (mState) return mState->pageTemplate;
    return PageTemplates && PageTemplates->HasKey(TemplateName) ? PageTemplates->Item(TemplateName) : nullptr;
}

Ref<Object> EngineDocument::NamespaceProvider(const std::string& className) {
    if (const auto known = mProviders.find(className); known != mProviders.end()) return known->second;
    const auto* family = mShared->templates.KnownFamilies().OfClass(className);
    if (!family || !family->makeProvider) {
        throw AutomationError("No provider of items is registered as '" + className + "'");
    }
    const auto handle = family->makeProvider();
    auto* provider = dynamic_cast<INamespaceProvider*>(handle.get());
    if (!provider) throw AutomationError("'" + className + "' makes no provider of items");
    mProviders.emplace(className, handle);
    provider->Initialise(self(this));
    return handle;
}

std::shared_ptr<const std::vector<ItemSource>> EngineDocument::Sources() {
    if (mState && mState->sources) return mState->sources;
    auto sources = std::make_shared<std::vector<ItemSource>>();
    const auto pageTemplate = Template();
    if (!pageTemplate) return sources;
    for (const auto& name : pageTemplate->Namespaces()->Texts()) {
        const auto* family = mShared->templates.KnownFamilies().OfProvider(name);
        if (!family) continue;
        const auto* root = Objects ? Objects->Find(name) : nullptr;
        if (!root) throw AutomationError("The document's objects hold no '" + name + "'");
        ItemSource source;
        source.root = toObject(*root);
        source.defs = family->defs;
        source.providerHandle = NamespaceProvider(family->providerClass);
        source.provider = dynamic_cast<INamespaceProvider*>(source.providerHandle.get());
        source.dataHandle = source.provider->DocumentDataProvider();
        source.data = dynamic_cast<IDataProvider*>(source.dataHandle.get());
        if (!source.data) throw AutomationError("The provider '" + name + "' has no data provider");
        sources->push_back(std::move(source));
    }
    if (mState) mState->sources = sources;
    return sources;
}

std::optional<std::string> EngineDocument::ReadProperty(const Ref<Object>& item, const std::string& name) {
    const auto& read = mShared->services.readProperty;
    return item && read ? read(*item, name) : std::nullopt;
}

std::optional<std::string> EngineDocument::ReadData(const std::string& name,
                                                    const Ref<quillbox::NamespaceDef>& def,
                                                    const Ref<Object>& item, const std::string& type,
                                                    const Ref<Object>& parent) {
    const auto sources = Sources();
    if (sources->empty()) return {};
    auto& data = *sources->front().data;
    const bool isCurrent = data.CurrentItem() == item && data.NamespaceDef() == def &&
                           data.CurrentParentItem() == parent && data.CurrentItemType() == type;
    std::optional<ItemScope> scope;
    if (!isCurrent) scope.emplace(data, def, item, type, parent);
    return known(data.GetProperty(name));
}

bool EngineDocument::IsPage(const std::string& name) const { return mState && mState->pages.contains(name); }

std::string EngineDocument::Variable(const std::string& name) const {
    return VariableValues && VariableValues->HasKey(name) ? VariableValues->Item(name)->Value : std::string();
}

const Language& EngineDocument::Language() {
    if (mState && mState->knowsLanguage) return mLanguage;
    auto tag = Variable("Language");
    if (tag.empty()) tag = mShared->services.language;
    if (tag.empty()) tag = environmentLanguage();
    mLanguage = languageOf(tag);
    if (mState) mState->knowsLanguage = true;
    return mLanguage;
}

std::string EngineDocument::Scrap(const std::string& name) {
    const auto own = std::dynamic_pointer_cast<FolderTemplate>(Template());
    const auto* scrap = own ? own->Scrap(name) : nullptr;
    return scrap ? *scrap : "!MISSING SCRAP '" + name + "'!";
}

bool EngineDocument::IsMemberIncluded(const std::string& name) {
    const auto* found = Objects ? Objects->Find("NamespaceExclusions") : nullptr;
    const auto excluded = found ? std::dynamic_pointer_cast<Collection>(toObject(*found)) : nullptr;
    if (!excluded) return true;
    for (const auto& text : excluded->Texts()) {
        if (sameText(text, name)) return false;
    }
    return true;
}

void EngineDocument::CopyTemplateSupportFiles(const Ref<PageTemplate>& pageTemplate) {
    if (!pageTemplate) throw AutomationError("There is no template to copy the support files of");
    OutputFolder output(OutputPath, OutputRoot);
    for (const auto& name : supportFiles(*pageTemplate)) copySupportFile(*pageTemplate, name, output);
}

Ref<LoadedPage> EngineDocument::LoadPage(const std::string& file) {
    const auto path = disk::withSlashes(file);
    const auto stamp = disk::stamp(path);
    auto& [known, pieces] = mLoadedPages[path];
    if (!pieces || known != stamp) {
        pieces = std::make_shared<const TagPieces>(readPage(path));
        known = stamp;
    }
    return make<RenderedPage>(path, pieces);
}

Ref<Object> EngineDocument::NewCommonProvider(IDataProvider* asker) {
    return make<CommonProvider>(self(this), asker);
}

std::unique_ptr<Condition> EngineDocument::NewCondition(const std::string& text) {
    const auto resolved = text.starts_with('@') ? Scrap(text.substr(1)) : text;
    auto known = mConditions.find(resolved);
    if (known == mConditions.end()) known = mConditions.emplace(resolved, parseCondition(resolved)).first;
    return std::make_unique<DocumentCondition>(resolved, known->second);
}

void EngineDocument::Build() { BuildRun(*this).Run(); }

}  // namespace quillbox
