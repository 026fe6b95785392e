#include "build/QbDataProvider.h"

#include "project/QbProject.h"

namespace quillbox {

std::string QbDataProvider::ProvideData(const Ref<Element>&, const Ref<FileSystemObject>&) { return {}; }
Ref<Object> QbDataProvider::CurrentRootItem() const { return mCurrentRootItem; }
void QbDataProvider::SetCurrentRootItem(const Ref<Object>& item) {
    mCurrentRootItem = std::dynamic_pointer_cast<QbProject>(item);
}
void QbDataProvider::SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                                    const std::string& itemType, const Ref<Object>& parentItem) {
    mNamespaceDef = def;
    mCurrentItem = item;
    mCurrentItemType = itemType;
    mCurrentParentItem = parentItem;
}
std::string QbDataProvider::ParseForProperties(const std::string& text) { return text; }
std::string QbDataProvider::GetProperty(const std::string&) { return {}; }
Ref<Object> QbDataProvider::Clone() { return make<QbDataProvider>(); }

}  // namespace quillbox
