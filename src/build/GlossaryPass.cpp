#include "build/GlossaryPass.h"

#include <string_view>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "build/ItemFamily.h"
#include "build/QbDataProvider.h"
#include "content/GlossaryItems.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

constexpr std::string_view kMark = "$$";

// Writes references; what it needs is made at the first one.
class References {
  public:
    explicit References(QbDataProvider& owner) : mOwner(owner), mItems(owner.NeedProject().GlossaryItems()) {}

    std::string ValueOf(const std::string& term) {
        const auto item = mItems->ItemByTerm(term);
        if (!item) return term;
        if (!mData) prepare();
        mData->SetCurrentItem(mDef, item, mDef->Name, mOwner.CurrentItem());
        auto value = mData->ExpandScrap("_GLOSSARYREFERENCE");
        if (!value.starts_with("!UNCRECOGNISED")) return value;
        return std::string(kMark) + term + std::string(kMark);
    }

  private:
    void prepare() {
        const auto pageTemplate = mOwner.NeedDocument().Template();
        if (!pageTemplate)
            throw AutomationError("A glossary reference needs a template that is being generated");
        mDef = pageTemplate->NamespaceDefs()->ByName(kGlossaryItems)->Item(1);
        mData = mOwner.ForList();
    }

    QbDataProvider& mOwner;
    Ref<GlossaryItems> mItems;
    Ref<NamespaceDef> mDef;
    Ref<QbDataProvider> mData;
};

}  // namespace

std::string resolveGlossaryReferences(QbDataProvider& provider, std::string text) {
    auto open = text.find(kMark);
    if (open == std::string::npos) return text;
    References references(provider);
    std::string out;
    out.reserve(text.size() + text.size() / 4);
    std::size_t start = 0;
    while (open != std::string::npos) {
        const auto inside = open + kMark.size();
        const auto close = text.find(kMark, inside);
        if (close == std::string::npos) break;
        out.append(text, start, open - start);
        out +=
            references.ValueOf(replaceAll(std::string_view(text).substr(inside, close - inside), "\r\n", ""));
        start = close + kMark.size();
        open = text.find(kMark, start);
    }
    return out.append(text, start);
}

}  // namespace quillbox
