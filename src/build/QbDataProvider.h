#pragma once

#include <memory>
#include <string>

#include "build/ProviderMemory.h"
#include "platform/engine/Document.h"

namespace quillbox {

class Manifest;
class QbProject;

// Gives the tags of template text their values: data of the item that was made current.
class QbDataProvider : public Object, public IDataProvider {
  public:
    static constexpr std::string_view kClassName = "QbDataProvider";
    std::string_view ClassName() const override { return kClassName; }

    // None where the document has gone.
    Ref<quillbox::Document> Document() const { return mDocument.Get(); }
    void SetDocument(const Ref<quillbox::Document>& document);

    std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) override;
    void Initialise(const Ref<Object>&) override {}
    void Terminate() override {}
    Ref<Object> CurrentRootItem() const override;
    // Restarts the counters of the project, so that every list and every clone does. It is meant so.
    void SetCurrentRootItem(const Ref<Object>& item) override;
    Ref<Object> CurrentParentItem() const override { return mCurrentParentItem; }
    void SetCurrentParentItem(const Ref<Object>& item) override { mCurrentParentItem = item; }
    std::string CurrentItemType() const override { return mCurrentItemType; }
    void SetCurrentItemType(const std::string& type) override { mCurrentItemType = type; }
    Ref<Object> CurrentItem() const override { return mCurrentItem; }
    void SetCurrentItem(const Ref<Object>& item) override { mCurrentItem = item; }
    Ref<quillbox::NamespaceDef> NamespaceDef() const override { return mNamespaceDef; }
    void SetNamespaceDef(const Ref<quillbox::NamespaceDef>& def) override { mNamespaceDef = def; }
    void SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                        const std::string& itemType, const Ref<Object>& parentItem) override;
    std::string ParseForProperties(const std::string& text) override;
    std::string GetProperty(const std::string& name) override;
    Ref<Object> Clone() override { return Copy(); }

    // The rest is for what the tags are made of.

    // Each fails where there is none.
    quillbox::Document& NeedDocument() const;
    QbProject& NeedProject() const;
    // None where no booklet is at work.
    Ref<Manifest> CurrentManifest() const;
    void RememberManifest();
    Ref<quillbox::QbProject> RootProject() const { return mCurrentRootItem; }
    IDataProvider& CommonProvider();
    ProviderMemory& Memory() const { return *sharedMemory(); }
    // To be held while a tag is answered.
    ProviderMemory::Answering Answer() const { return {Memory(), mDocument}; }

    Ref<QbDataProvider> Copy() const;
    // Another provider for the same document and root item, with no current item.
    Ref<QbDataProvider> ForList() const;
    // Takes on the document and the root item of another provider, with no current item.
    void Serve(const QbDataProvider& owner);
    // Lets go of all but the document until it serves again.
    void Rest();
    // The same, which also knows the booklet at work.
    Ref<QbDataProvider> ForBookletLinks() const;

    // The text with the values of its tags, for the page being written. `place` names the text in a failure.
    std::string Expand(std::string text, const Ref<FileSystemObject>& file, const std::string& place);
    // Text of a template, which comes again and again.
    std::string ExpandTemplateText(const std::string& text, const std::string& place,
                                   const Ref<FileSystemObject>& file = nullptr);
    std::string ExpandScrap(const KnownScrap& scrap);
    // The same behind what there is.
    void ExpandScrap(const KnownScrap& scrap, std::string& out);
    void ExpandPieces(const TagPieces& pieces, const Ref<FileSystemObject>& file, const std::string& place,
                      std::string& out);
    // Template text, in which "<crlf>" stands for a line break.
    std::string Parse(const std::string& text, const std::string& place);
    std::string ParseScrap(const KnownScrap& scrap);
    // A scrap of the document's template, or what tells that it is missing.
    std::shared_ptr<const KnownScrap> Scrap(const std::string& name) const;

  private:
    const std::shared_ptr<ProviderMemory>& sharedMemory() const {
        if (!mMemory) mMemory = std::make_shared<ProviderMemory>();
        return mMemory;
    }

    Ref<Object> mCurrentItem;
    Ref<quillbox::NamespaceDef> mNamespaceDef;
    Ref<Object> mCurrentParentItem;
    std::string mCurrentItemType;
    Ref<QbProject> mCurrentRootItem;
    ObjectReference<quillbox::Document> mDocument;
    // To be compared with documents that are alive, and for nothing else.
    const quillbox::Document* mDocumentPlace = nullptr;
    Ref<Object> mCommonProvider;
    // The same, as what it is asked for.
    IDataProvider* mCommon = nullptr;
    // False while the common provider has not been told of the current item.
    bool mCommonProviderSet = false;
    Ref<Manifest> mCurrentManifest;
    // Made when it is needed first.
    mutable std::shared_ptr<ProviderMemory> mMemory;
};

}  // namespace quillbox
