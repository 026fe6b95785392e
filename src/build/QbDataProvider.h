#pragma once

#include <string>

#include "platform/engine/Document.h"

namespace quillbox {

class Manifest;
class QbProject;

// Gives the tags of template text their values: data of the item that was made current.
class QbDataProvider : public Object, public IDataProvider {
  public:
    static constexpr std::string_view kClassName = "QbDataProvider";
    std::string_view ClassName() const override { return kClassName; }

    Ref<quillbox::Document> Document() const { return mDocument.Get(); }
    void SetDocument(const Ref<quillbox::Document>& document) { mDocument.Set(document); }

    std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) override;
    void Initialise(const Ref<Object>&) override {}
    void Terminate() override {}
    Ref<Object> CurrentRootItem() const override;
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
    Ref<Object> Clone() override;

  private:
    Ref<Object> mCurrentItem;
    Ref<quillbox::NamespaceDef> mNamespaceDef;
    Ref<Object> mCurrentParentItem;
    std::string mCurrentItemType;
    Ref<QbProject> mCurrentRootItem;
    ObjectReference<quillbox::Document> mDocument;
};

}  // namespace quillbox
