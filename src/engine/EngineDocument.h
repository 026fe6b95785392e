#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/FoldedMap.h"
#include "engine/Conditions.h"
#include "engine/ContentsTree.h"
#include "engine/Engine.h"
#include "engine/ItemSource.h"
#include "engine/OutputFolder.h"
#include "engine/PageEncoding.h"
#include "engine/TemplateLibrary.h"

namespace quillbox {

// What all documents of an engine share.
struct EngineShared {
    explicit EngineShared(EngineServices given)
        : services(std::move(given)), templates(services.xml, services.templatesFolder) {}

    EngineServices services;
    TemplateLibrary templates;
};

// What holds for one build: its folder and template, the page in work, and what is worked out only once.
struct BuildState {
    BuildState(OutputFolder folder, Ref<FolderTemplate> own)
        : output(std::move(folder)), pageTemplate(std::move(own)) {}

    OutputFolder output;
    Ref<FolderTemplate> pageTemplate;
    // A page that the build may write: what it is of, and how many layouts may still write it.
    struct Page {
        Ref<Object> item;
        int offers = 0;
    };
    FoldedMap<Page> pages;
    std::string firstPage;
    // The page being written: its name under the output path, and the template's page that it is made from.
    std::string pageName;
    Ref<PageLayout> layout;
    // Its place in the contents, once somebody asked for it.
    std::optional<std::optional<std::size_t>> readingPlace;
    std::shared_ptr<const std::vector<ItemSource>> sources;
    std::shared_ptr<const ContentsTree> contents;
    bool knowsLanguage = false;
    EncodingNotes notes;
};

class EngineDocument : public Document {
  public:
    explicit EngineDocument(std::shared_ptr<EngineShared> shared) : mShared(std::move(shared)) {}

    Ref<PageTemplate> Template() override;
    Ref<quillbox::NamespaceDefs> NamespaceDefs() override { return mNamespaceDefs; }
    Ref<Object> NamespaceProvider(const std::string& className) override;
    std::string CompilerLog() const override { return mLog; }
    bool Cancelled() const override { return mCancelled; }
    void Cancel() override { mCancelled = true; }
    void Build() override;
    std::string Scrap(const std::string& name) override;
    bool IsMemberIncluded(const std::string& name) override;
    void StreamTOC(const Ref<FileSystemObject>& file, const Ref<PageTemplate>& pageTemplate) override;
    void CopyTemplateSupportFiles(const Ref<PageTemplate>& pageTemplate) override;
    Ref<LoadedPage> LoadPage(const std::string& file) override;
    Ref<Object> NewCommonProvider(IDataProvider* asker) override;
    std::unique_ptr<Condition> NewCondition(const std::string& text) override;

    // The rest is for the engine's own parts.

    EngineShared& Shared() { return *mShared; }
    // None outside a build.
    BuildState* Building() { return mState.get(); }
    // The sources of the items of the current template. Fails where one has no root object in `Objects`.
    std::shared_ptr<const std::vector<ItemSource>> Sources();
    std::optional<std::string> ReadProperty(const Ref<Object>& item, const std::string& name);
    // What a tag of that name gives for an item; nothing where nobody knows the name.
    std::optional<std::string> ReadData(const std::string& name, const Ref<quillbox::NamespaceDef>& def,
                                        const Ref<Object>& item, const std::string& type,
                                        const Ref<Object>& parent);
    // Whether the build that is under way writes a page of that name.
    bool IsPage(const std::string& name) const;
    // Empty where there is no such variable.
    std::string Variable(const std::string& name) const;
    const quillbox::Language& Language();
    // The contents of the template being generated; none where it has none.
    std::shared_ptr<const ContentsTree> Contents();
    // The node that is being written with a scrap, in its tree.
    struct NodePlace {
        const ContentsTree* tree = nullptr;
        std::size_t node = 0;
    };
    const NodePlace& CurrentNode() const { return mCurrentNode; }

  private:
    friend class BuildRun;

    std::shared_ptr<const ContentsTree> treeOf(const std::string& templateName);
    std::vector<std::shared_ptr<const ContentsTree>> otherTrees();
    void makeContents();
    ContentsStyle::WriteNode nodeWriter(const std::string& scrap, const Ref<FileSystemObject>& file);
    void writeNode(const std::string& scrap, const TagPieces& pieces, const Ref<FileSystemObject>& file,
                   const ContentsTree& tree, std::size_t node, std::string& out);

    std::shared_ptr<EngineShared> mShared;
    Ref<quillbox::NamespaceDefs> mNamespaceDefs = make<quillbox::NamespaceDefs>();
    FoldedMap<Ref<Object>> mProviders;
    std::unique_ptr<BuildState> mState;
    NodePlace mCurrentNode;
    bool mCollectingContents = false;
    quillbox::Language mLanguage;
    std::unordered_map<std::string, std::shared_ptr<const ConditionExpression>> mConditions;
    std::unordered_map<std::string, std::pair<std::uint64_t, std::shared_ptr<const TagPieces>>> mLoadedPages;
    std::string mBuiltTemplate;
    std::string mLog;
    bool mCancelled = false;
};

}  // namespace quillbox
