#include "build/GlossaryPass.h"

#include <optional>
#include <string_view>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "build/ItemFamily.h"
#include "build/ListProvider.h"
#include "content/GlossaryItems.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

constexpr std::string_view kMark = "$$";

// Writes references; what it needs is made at the first one.
class References {
  public:
    explicit References(QbDataProvider& owner) : mOwner(owner), mItems(owner.NeedProject().GlossaryItems()) {}

    void Write(const std::string& term, std::string& out) {
        const auto item = mItems->ItemByTerm(term);
        if (!item) {
            out += term;
            return;
        }
        if (!mData) prepare();
        auto& data = *mData;
        data->SetCurrentItem(mDef, item, mDef->Name, mOwner.CurrentItem());
        const auto begin = out.size();
        data->ExpandScrap(*mScrap, out);
        if (!std::string_view(out).substr(begin).starts_with("!UNCRECOGNISED")) return;
        out.resize(begin);
        out.append(kMark).append(term).append(kMark);
    }

  private:
    void prepare() {
        mDef = mOwner.Memory().Definition(mOwner.NeedDocument(), kGlossaryItems);
        mScrap = mOwner.Scrap("_GLOSSARYREFERENCE");
        mData.emplace(mOwner);
    }

    QbDataProvider& mOwner;
    Ref<GlossaryItems> mItems;
    Ref<NamespaceDef> mDef;
    std::optional<ListProvider> mData;
    std::shared_ptr<const KnownScrap> mScrap;
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
        references.Write(replaceAll(std::string_view(text).substr(inside, close - inside), "\r\n", ""), out);
        start = close + kMark.size();
        open = text.find(kMark, start);
    }
    return out.append(text, start);
}

}  // namespace quillbox
