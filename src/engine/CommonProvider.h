#pragma once

#include <memory>
#include <string>

#include "engine/EngineDocument.h"

namespace quillbox {

// Answers the general tags, which mean the same whatever the items are. What a tag of its own has nothing to
// say to is "{Discard}" from `ProvideData`; a tag that is not its own gets empty text there and
// "!UNCRECOGNISED" from `GetProperty`.
class CommonProvider : public Object, public IDataProvider {
  public:
    static constexpr std::string_view kClassName = "CommonProvider";
    std::string_view ClassName() const override { return kClassName; }

    CommonProvider(const Ref<EngineDocument>& document, IDataProvider* asker)
        : mPlace(document.get()), mAsker(asker) {
        mDocument.Set(document);
    }

    std::string ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) override;
    void Initialise(const Ref<Object>&) override {}
    void Terminate() override {}
    Ref<Object> CurrentRootItem() const override { return mRootItem; }
    void SetCurrentRootItem(const Ref<Object>& item) override { mRootItem = item; }
    Ref<Object> CurrentParentItem() const override { return mParentItem; }
    void SetCurrentParentItem(const Ref<Object>& item) override { mParentItem = item; }
    std::string CurrentItemType() const override { return mItemType; }
    void SetCurrentItemType(const std::string& type) override { mItemType = type; }
    Ref<Object> CurrentItem() const override { return mItem; }
    void SetCurrentItem(const Ref<Object>& item) override { mItem = item; }
    Ref<quillbox::NamespaceDef> NamespaceDef() const override { return mDef; }
    void SetNamespaceDef(const Ref<quillbox::NamespaceDef>& def) override { mDef = def; }
    void SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                        const std::string& itemType, const Ref<Object>& parentItem) override;
    std::string ParseForProperties(const std::string& text) override;
    std::string GetProperty(const std::string& name) override;
    Ref<Object> Clone() override;

  private:
    class Attached;

    ObjectReference<EngineDocument> mDocument;
    EngineDocument* mPlace;
    IDataProvider* mAsker;
    Ref<Object> mRootItem, mParentItem, mItem;
    std::string mItemType;
    Ref<quillbox::NamespaceDef> mDef;
};

}  // namespace quillbox
