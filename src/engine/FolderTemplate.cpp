#include "engine/FolderTemplate.h"

#include "engine/Disk.h"

namespace quillbox {

namespace {

std::string folderName(const std::string& folder) {
    const auto slash = folder.rfind('/', folder.size() - 2);
    const auto start = slash == std::string::npos ? 0 : slash + 1;
    return folder.substr(start, folder.size() - 1 - start);
}

std::string withoutLineEnd(std::string text) {
    if (text.ends_with('\n')) text.pop_back();
    if (text.ends_with('\r')) text.pop_back();
    return text;
}

Ref<Collection> keyedByName(const std::vector<Ref<PageLayout>>& pages) {
    auto result = make<Collection>();
    for (const auto& page : pages) result->Add(Value(page), page->Name);
    return result;
}

}  // namespace

TagPieces readPage(const std::string& path) {
    const auto text = disk::readUtf8(path);
    return at(path, [&] { return splitTags(text, true); });
}

FolderTemplate::FolderTemplate(const std::string& folder, XMLParser& xml, DefsOf defsOf)
    : mFolder(folder), mDefsOf(std::move(defsOf)) {
    try {
        mDescription = readTemplate(folder, xml);
    } catch (const AutomationError& failure) {
        Break(failure.Description());
    }
}

void FolderTemplate::Break(const std::string& reason) {
    mFailure = AutomationError(reason);
    mDescription.name = folderName(mFolder);
}

const TemplateDescription& FolderTemplate::description() const {
    if (mFailure) throw *mFailure;
    return mDescription;
}

Ref<Collection> FolderTemplate::Pages() { return keyedByName(description().pages); }

Ref<Collection> FolderTemplate::Namespaces() {
    auto names = make<Collection>();
    for (const auto& name : description().namespaces) names->Add(name);
    return names;
}

const TagPieces& FolderTemplate::PageText(const std::string& file) {
    auto found = mPageTexts.find(file);
    if (found == mPageTexts.end()) found = mPageTexts.emplace(file, readPage(mFolder + file)).first;
    return found->second;
}

const std::string* FolderTemplate::Scrap(const std::string& name) {
    if (!mScraps) readScraps();
    const auto found = mScraps->find(name);
    return found == mScraps->end() ? nullptr : &found->second;
}

void FolderTemplate::readScraps() {
    static constexpr std::string_view kExtension = ".html";
    FoldedMap<std::string> scraps;
    for (const auto& file : disk::files(mFolder + "scraps")) {
        if (!endsWithText(file, kExtension)) continue;
        const auto path = mFolder + "scraps/" + file;
        const auto name = file.substr(0, file.size() - kExtension.size());
        if (!scraps.emplace(name, withoutLineEnd(disk::readUtf8(path))).second) {
            throw AutomationError(path + ": expected each scrap once, found '" + name +
                                  "' in another case too");
        }
    }
    mScraps = std::move(scraps);
}

void FolderTemplate::ReadAll() {
    for (const auto& page : Layouts()) PageText(page->Name);
    if (!mScraps) readScraps();
}

}  // namespace quillbox
