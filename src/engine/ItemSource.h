#pragma once

#include <optional>
#include <string>

#include "base/AutomationError.h"
#include "platform/engine/Providers.h"

namespace quillbox {

// A provider of items that takes part in a document, and the data provider that answers its tags.
struct ItemSource {
    Ref<Object> providerHandle, dataHandle;
    INamespaceProvider* provider = nullptr;
    IDataProvider* data = nullptr;
    Ref<Object> root;
    Ref<NamespaceDefs> defs;
};

// Nothing where a data provider says that it does not know the name.
inline std::optional<std::string> known(std::string value) {
    return value.starts_with("!UNCRECOGNISED") ? std::nullopt : std::optional(std::move(value));
}

// Makes an item current in a data provider for a while.
class ItemScope {
  public:
    ItemScope(IDataProvider& data, const Ref<NamespaceDef>& def, const Ref<Object>& item,
              const std::string& type, const Ref<Object>& parent)
        : mData(data),
          mDef(data.NamespaceDef()),
          mItem(data.CurrentItem()),
          mType(data.CurrentItemType()),
          mParent(data.CurrentParentItem()) {
        data.SetCurrentItem(def, item, type, parent);
    }
    ~ItemScope() {
        ignoringFailures([&] { mData.SetCurrentItem(mDef, mItem, mType, mParent); });
    }
    ItemScope(const ItemScope&) = delete;
    ItemScope& operator=(const ItemScope&) = delete;

  private:
    IDataProvider& mData;
    Ref<NamespaceDef> mDef;
    Ref<Object> mItem;
    std::string mType;
    Ref<Object> mParent;
};

}  // namespace quillbox
