#pragma once

#include <string>

#include "platform/engine/Providers.h"

namespace quillbox {

// The current item, as every double of a data provider holds it.
class HeldItem : public Object, public IDataProvider {
  public:
    void Initialise(const Ref<Object>&) override {}
    void Terminate() override {}
    Ref<Object> CurrentRootItem() const override { return mRoot; }
    void SetCurrentRootItem(const Ref<Object>& item) override { mRoot = item; }
    Ref<Object> CurrentParentItem() const override { return mParent; }
    void SetCurrentParentItem(const Ref<Object>& item) override { mParent = item; }
    std::string CurrentItemType() const override { return mType; }
    void SetCurrentItemType(const std::string& type) override { mType = type; }
    Ref<Object> CurrentItem() const override { return mItem; }
    void SetCurrentItem(const Ref<Object>& item) override { mItem = item; }
    Ref<quillbox::NamespaceDef> NamespaceDef() const override { return mDef; }
    void SetNamespaceDef(const Ref<quillbox::NamespaceDef>& def) override { mDef = def; }
    void SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                        const std::string& type, const Ref<Object>& parent) override {
        mDef = def;
        mItem = item;
        mType = type;
        mParent = parent;
    }

  protected:
    Ref<quillbox::NamespaceDef> mDef;
    Ref<Object> mItem, mParent, mRoot;
    std::string mType;
};

}  // namespace quillbox
