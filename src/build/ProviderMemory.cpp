#include "build/ProviderMemory.h"

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

// Texts of templates are few; what a script hands over again and again is not kept without end.
constexpr std::size_t kMostTexts = 4096;

}  // namespace

std::shared_ptr<const TagPieces> ProviderMemory::Pieces(const std::string& text) {
    if (const auto known = mPieces.find(text); known != mPieces.end()) return known->second;
    if (mPieces.size() == kMostTexts) mPieces.clear();
    auto pieces = std::make_shared<const TagPieces>(splitTags(text));
    mPieces.emplace(text, pieces);
    return pieces;
}

const BookletOutline& ProviderMemory::OutlineOf(const Ref<Manifest>& manifest) {
    if (!mOutline || mOutline->Of() != manifest) mOutline = std::make_unique<BookletOutline>(manifest);
    return *mOutline;
}

ProviderMemory::InVariable::InVariable(ProviderMemory& memory, const std::string& name)
    : mMemory(memory), mKey(foldKey(name)) {
    if (!mMemory.mVariables.insert(mKey).second) {
        throw AutomationError("The variable '" + name + "' contains itself");
    }
}

}  // namespace quillbox
