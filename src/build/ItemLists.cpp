#include "build/ItemLists.h"

#include "base/AutomationError.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"

namespace quillbox {

namespace {

bool isMissing(const std::string& scrap) { return scrap.starts_with("!MISSING"); }

PageTemplate& templateOf(const Ref<PageTemplate>& pageTemplate) {
    if (pageTemplate) return *pageTemplate;
    throw AutomationError("A list of items needs a template that is being generated");
}

// None where the template knows no such kind.
Ref<NamespaceDef> definitionOf(Document& document, const std::string& itemType) {
    Ref<NamespaceDef> def;
    const auto pageTemplate = document.Template();
    ignoringFailures([&] { def = templateOf(pageTemplate).NamespaceDefs()->ByRootName(itemType)->Item(1); });
    return def;
}

INamespaceProvider& itemSource(const Ref<Object>& provider) {
    if (auto* source = dynamic_cast<INamespaceProvider*>(provider.get())) return *source;
    throw AutomationError("The document has no provider of items");
}

class List {
  public:
    List(QbDataProvider& provider, std::string scrap, Ref<NamespaceDef> def)
        : mOwner(provider),
          mDocument(provider.NeedDocument()),
          mScrap(std::move(scrap)),
          mDef(std::move(def)),
          mData(provider.ForList()) {}

    std::string Write(const std::vector<Ref<Object>>& items) {
        makeCurrent(items.front());
        const auto header = mDocument.Scrap(mScrap + "_header");
        if (!isMissing(header)) mText = mData->ExpandTemplateText(header, place("_header")) + "\r\n";
        writeBodies(items);
        // As it stands, with its tags. It is meant so.
        const auto footer = mDocument.Scrap(mScrap + "_footer");
        if (!isMissing(footer)) mText += footer;
        return std::move(mText);
    }

  private:
    void writeBodies(const std::vector<Ref<Object>>& items) {
        const auto body = mDocument.Scrap(mScrap + "_body");
        auto separator = mDocument.Scrap(mScrap + "_SEPARATOR");
        if (isMissing(separator)) separator.clear();
        const auto placeOfBody = place("_body"), placeOfSeparator = place("_SEPARATOR");
        const auto pieces = mData->Memory().Pieces(body);
        for (const auto& item : items) {
            makeCurrent(item);
            mText += mData->ExpandPieces(*pieces, nullptr, placeOfBody);
            // An item that is listed twice has no separator in either place. It is meant so.
            if (item != items.back()) mText += mOwner.Parse(separator, placeOfSeparator);
        }
    }

    void makeCurrent(const Ref<Object>& item) {
        mData->SetCurrentItem(mDef, item, mDef->Name, mOwner.CurrentItem());
    }
    std::string place(const char* part) const { return "the scrap '" + mScrap + part + "'"; }

    QbDataProvider& mOwner;
    Document& mDocument;
    std::string mScrap;
    Ref<NamespaceDef> mDef;
    Ref<QbDataProvider> mData;
    std::string mText;
};

}  // namespace

std::string filteredItemList(QbDataProvider& provider, const ItemListOrder& order) {
    auto& document = provider.NeedDocument();
    const auto def = definitionOf(document, order.itemType);
    if (!def) return "!ERROR: Namespace not found '" + order.itemType + "'!";
    const auto source = document.NamespaceProvider(kProviderClass);
    const auto items = itemSource(source).GetItems(def, provider.CurrentItem(), order.filter);
    if (items.empty()) return {};
    const auto scrap = order.scrap.starts_with('_') ? order.scrap : "_" + order.scrap;
    return List(provider, scrap, def).Write(items);
}

}  // namespace quillbox
