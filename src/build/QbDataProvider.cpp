#include "build/QbDataProvider.h"

#include "base/Text.h"
#include "booklets/Manifest.h"
#include "booklets/ManifestEntry.h"
#include "build/ItemAs.h"
#include "build/ItemFamily.h"
#include "build/ItemProperties.h"
#include "build/TagValues.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

std::string withBreaks(std::string text) {
    constexpr std::string_view kBreak = "<crlf>";
    return text.find(kBreak) == std::string::npos ? text : replaceAll(text, kBreak, "<br>");
}

}  // namespace

quillbox::Document& QbDataProvider::NeedDocument() const {
    if (auto* document = Memory().AnsweringFor(); document && document == mDocumentPlace) return *document;
    // Whoever asks is called by somebody who holds the document.
    if (const auto document = Document()) return *document;
    throw AutomationError("The data provider has no document");
}

QbProject& QbDataProvider::NeedProject() const {
    if (const auto project = projectOf(NeedDocument())) return *project;
    throw AutomationError("The document of the data provider holds no project");
}

Ref<Object> QbDataProvider::CurrentRootItem() const { return mCurrentRootItem; }

void QbDataProvider::SetCurrentRootItem(const Ref<Object>& item) {
    const auto project = std::dynamic_pointer_cast<QbProject>(item);
    if (item && !project) throw AutomationError("The root item of a build has to be a project");
    mCurrentRootItem = project;
    if (!project) return;
    auto& counters = project->IncrementingValues;
    if (!counters || counters->Count() > 0) counters = make<Collection>();
}

void QbDataProvider::SetCurrentItem(const Ref<quillbox::NamespaceDef>& def, const Ref<Object>& item,
                                    const std::string& itemType, const Ref<Object>& parentItem) {
    mNamespaceDef = def;
    mCurrentItem = item;
    mCurrentItemType = itemType;
    mCurrentParentItem = parentItem;
    if (auto project = itemAs<QbProject>(item)) mCurrentRootItem = std::move(project);
    mCommonProviderSet = false;
}

Ref<Manifest> QbDataProvider::CurrentManifest() const {
    if (auto manifest = itemAs<Manifest>(mCurrentItem)) return manifest;
    if (const auto entry = itemAs<ManifestEntry>(mCurrentItem)) {
        if (auto manifest = entry->Manifest()) return manifest;
    }
    if (auto manifest = itemAs<Manifest>(mCurrentParentItem)) return manifest;
    return mCurrentManifest;
}

void QbDataProvider::RememberManifest() {
    if (auto manifest = CurrentManifest()) mCurrentManifest = std::move(manifest);
}

IDataProvider& QbDataProvider::CommonProvider() {
    if (!mCommon) {
        mCommonProvider = NeedDocument().NewCommonProvider(this);
        mCommon = dynamic_cast<IDataProvider*>(mCommonProvider.get());
        if (!mCommon) throw AutomationError("The document has no common provider");
    }
    if (!mCommonProviderSet) {
        mCommon->SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
        mCommon->SetCurrentRootItem(mCurrentRootItem);
        mCommonProviderSet = true;
    }
    return *mCommon;
}

void QbDataProvider::SetDocument(const Ref<quillbox::Document>& document) {
    if (mMemory) mMemory->ForgetResting();
    mDocument.Set(document);
    mDocumentPlace = document.get();
}

void QbDataProvider::Serve(const QbDataProvider& owner) {
    mMemory = owner.sharedMemory();
    if (mDocumentPlace != owner.mDocumentPlace) {
        mDocument = owner.mDocument;
        mDocumentPlace = owner.mDocumentPlace;
        mCommonProvider.reset();
        mCommon = nullptr;
    }
    SetCurrentRootItem(owner.mCurrentRootItem);
}

void QbDataProvider::Rest() {
    SetCurrentItem(nullptr, nullptr, "", nullptr);
    mCurrentRootItem.reset();
    mCurrentManifest.reset();
    mMemory.reset();
    if (!mCommon) return;
    mCommon->SetCurrentItem(nullptr, nullptr, "", nullptr);
    mCommon->SetCurrentRootItem(nullptr);
}

Ref<QbDataProvider> QbDataProvider::ForList() const {
    auto provider = make<QbDataProvider>();
    provider->Serve(*this);
    return provider;
}

Ref<QbDataProvider> QbDataProvider::ForBookletLinks() const {
    auto provider = ForList();
    provider->mCurrentManifest = CurrentManifest();
    return provider;
}

Ref<QbDataProvider> QbDataProvider::Copy() const {
    auto copy = ForList();
    copy->SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
    return copy;
}

std::string QbDataProvider::ParseForProperties(const std::string& text) {
    return Expand(text, nullptr, "the text");
}

std::string QbDataProvider::Expand(std::string text, const Ref<FileSystemObject>& file,
                                   const std::string& place) {
    if (text.find("%%") == std::string::npos) return text;
    std::string out;
    ExpandPieces(splitTags(text), file, place, out);
    return out;
}

std::string QbDataProvider::ExpandTemplateText(const std::string& text, const std::string& place,
                                               const Ref<FileSystemObject>& file) {
    if (text.find("%%") == std::string::npos) return text;
    std::string out;
    ExpandPieces(*Memory().Pieces(text), file, place, out);
    return out;
}

std::string QbDataProvider::ExpandScrap(const KnownScrap& scrap) {
    std::string out;
    ExpandScrap(scrap, out);
    return out;
}

void QbDataProvider::ExpandScrap(const KnownScrap& scrap, std::string& out) {
    if (scrap.HasTags()) {
        ExpandPieces(scrap.Pieces(), nullptr, scrap.Place(), out);
    } else {
        out += scrap.Text();
    }
}

std::string QbDataProvider::Parse(const std::string& text, const std::string& place) {
    return withBreaks(ExpandTemplateText(text, place));
}

std::string QbDataProvider::ParseScrap(const KnownScrap& scrap) { return withBreaks(ExpandScrap(scrap)); }

std::shared_ptr<const KnownScrap> QbDataProvider::Scrap(const std::string& name) const {
    return Memory().Scrap(NeedDocument(), name);
}

void QbDataProvider::ExpandPieces(const TagPieces& pieces, const Ref<FileSystemObject>& file,
                                  const std::string& place, std::string& out) {
    const auto valueOf = [&](const TagPiece& tag) {
        return inside([&] { return place + ", line " + std::to_string(tag.line) + ", " + tag.text; },
                      [&] { return ProvideData(tag.element, file); });
    };
    expandTags(pieces, std::ref(valueOf), out);
}

std::string QbDataProvider::ProvideData(const Ref<Element>& element, const Ref<FileSystemObject>& file) {
    if (!element) throw AutomationError("There is no tag to give a value to");
    const auto answering = Answer();
    return tagValue({*this, *element, element, file});
}

std::string QbDataProvider::GetProperty(const std::string& name) { return itemProperty(*this, name); }

}  // namespace quillbox
