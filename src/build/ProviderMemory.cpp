#include "build/ProviderMemory.h"

#include "base/AutomationError.h"
#include "build/QbDataProvider.h"

namespace quillbox {

namespace {

// Templates ask for few things; what a script asks for again and again is not kept without end.
constexpr std::size_t kMost = 4096;

template <class Known, class Make>
Known kept(TextMap<Known>& all, const std::string& name, const Make& make) {
    if (const auto known = all.find(name); known != all.end()) return known->second;
    Known made = make();
    if (all.size() == kMost) all.clear();
    all.emplace(name, made);
    return made;
}

}  // namespace

KnownScrap::KnownScrap(Document& document, const std::string& name)
    : mText(document.Scrap(name)),
      mPlace("the scrap '" + name + "'"),
      mHasTags(mText.find("%%") != std::string::npos) {}

const TagPieces& KnownScrap::Pieces() const {
    if (!mPieces) mPieces = splitTags(mText);
    return *mPieces;
}

ProviderMemory::OfTemplate& ProviderMemory::ofTemplate(Document& document) {
    if (mIsTemplateKnown && &document == mDocument.get()) return mOfTemplate;
    auto now = document.Template();
    mIsTemplateKnown = &document == mDocument.get();
    if (now != mOfTemplate.pageTemplate) mOfTemplate = {std::move(now), {}, {}, {}, {}};
    return mOfTemplate;
}

std::shared_ptr<const TagPieces> ProviderMemory::Pieces(const std::string& text) {
    return kept(mPieces, text, [&] { return std::make_shared<const TagPieces>(splitTags(text)); });
}

std::shared_ptr<const KnownScrap> ProviderMemory::Scrap(Document& document, const std::string& name) {
    return kept(ofTemplate(document).scraps, name,
                [&] { return std::make_shared<const KnownScrap>(document, name); });
}

std::shared_ptr<const ListScraps> ProviderMemory::ScrapsOfList(Document& document, const std::string& name) {
    return kept(ofTemplate(document).lists, name, [&] {
        const auto scrap = [&](const char* part) { return Scrap(document, name + part); };
        return std::make_shared<const ListScraps>(
            ListScraps{scrap("_header"), scrap("_body"), scrap("_SEPARATOR"), scrap("_footer")});
    });
}

std::shared_ptr<quillbox::Condition> ProviderMemory::Condition(Document& document, const std::string& text) {
    return kept(ofTemplate(document).conditions, text,
                [&] { return std::shared_ptr<quillbox::Condition>(document.NewCondition(text)); });
}

Ref<NamespaceDef> ProviderMemory::Definition(Document& document, const std::string& itemType) {
    auto& known = ofTemplate(document);
    return kept(known.definitions, itemType, [&] {
        if (!known.pageTemplate) throw AutomationError("There is no template that is being generated");
        return known.pageTemplate->NamespaceDefs()->ByRootName(itemType)->Item(1);
    });
}

const BookletOutline& ProviderMemory::OutlineOf(const Ref<Manifest>& manifest) {
    if (!mOutline || mOutline->Of() != manifest) mOutline = std::make_unique<BookletOutline>(manifest);
    return *mOutline;
}

Ref<QbDataProvider> ProviderMemory::TakeResting() {
    if (mResting.empty() || !mDocument) return nullptr;
    auto provider = std::move(mResting.back());
    mResting.pop_back();
    return provider;
}

void ProviderMemory::KeepResting(Ref<QbDataProvider> provider) {
    if (mDocument && provider->Document() == mDocument) mResting.push_back(std::move(provider));
}

ProviderMemory::InVariable::InVariable(ProviderMemory& memory, const std::string& name)
    : mMemory(memory), mName(name) {
    if (!mMemory.mVariables.insert(mName).second) {
        throw AutomationError("The variable '" + name + "' contains itself");
    }
}

}  // namespace quillbox
