#include "build/ItemLists.h"

#include "base/AutomationError.h"
#include "build/ItemFamily.h"
#include "build/ListProvider.h"

namespace quillbox {

namespace {

// None where the template knows no such kind.
Ref<NamespaceDef> definitionOf(QbDataProvider& provider, const std::string& itemType) {
    Ref<NamespaceDef> def;
    ignoringFailures([&] { def = provider.Memory().Definition(provider.NeedDocument(), itemType); });
    return def;
}

INamespaceProvider& itemSource(const Ref<Object>& provider) {
    if (auto* source = dynamic_cast<INamespaceProvider*>(provider.get())) return *source;
    throw AutomationError("The document has no provider of items");
}

class List {
  public:
    List(QbDataProvider& provider, const std::string& scrap, Ref<NamespaceDef> def)
        : mOwner(provider),
          mScraps(provider.Memory().ScrapsOfList(provider.NeedDocument(), scrap)),
          mDef(std::move(def)),
          mData(provider) {}

    std::string Write(const std::vector<Ref<Object>>& items) {
        makeCurrent(items.front());
        if (const auto& header = *mScraps->header; !header.IsMissing()) {
            mData->ExpandScrap(header, mText);
            mText += "\r\n";
        }
        writeBodies(items);
        // As it stands, with its tags. It is meant so.
        if (const auto& footer = *mScraps->footer; !footer.IsMissing()) mText += footer.Text();
        return std::move(mText);
    }

  private:
    void writeBodies(const std::vector<Ref<Object>>& items) {
        const auto& separator = *mScraps->separator;
        for (const auto& item : items) {
            makeCurrent(item);
            mData->ExpandScrap(*mScraps->body, mText);
            // An item that is listed twice has no separator in either place. It is meant so.
            if (item != items.back() && !separator.IsMissing()) mText += mOwner.ParseScrap(separator);
        }
    }

    void makeCurrent(const Ref<Object>& item) {
        mData->SetCurrentItem(mDef, item, mDef->Name, mOwner.CurrentItem());
    }
    QbDataProvider& mOwner;
    std::shared_ptr<const ListScraps> mScraps;
    Ref<NamespaceDef> mDef;
    ListProvider mData;
    std::string mText;
};

}  // namespace

std::string filteredItemList(QbDataProvider& provider, const ItemListOrder& order) {
    auto& document = provider.NeedDocument();
    const auto def = definitionOf(provider, order.itemType);
    if (!def) return "!ERROR: Namespace not found '" + order.itemType + "'!";
    const auto source = document.NamespaceProvider(kProviderClass);
    const auto items = itemSource(source).GetItems(def, provider.CurrentItem(), order.filter);
    if (items.empty()) return {};
    const auto scrap = order.scrap.starts_with('_') ? order.scrap : "_" + order.scrap;
    return List(provider, scrap, def).Write(items);
}

}  // namespace quillbox
