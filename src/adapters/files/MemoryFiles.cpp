#include "adapters/files/MemoryFiles.h"

#include "adapters/files/File.h"
#include "adapters/files/MemoryVolume.h"
#include "adapters/files/Paths.h"
#include "base/AutomationError.h"

namespace quillbox {

MemoryFiles::MemoryFiles() : mVolume(std::make_shared<files::MemoryVolume>()) {}

Ref<FileSystemObject> MemoryFiles::NewFileSystemObject() { return make<files::File>(mVolume); }

char MemoryFiles::Separator() const { return files::kSeparator; }

void MemoryFiles::Put(const std::string& path, const std::string& bytes) {
    const auto place = files::withLocalSeparators(path);
    mVolume->AddFolders(std::string(files::directoryOf(place)));
    mVolume->Put(place, bytes);
}

std::optional<std::string> MemoryFiles::Bytes(const std::string& path) const {
    if (const auto* const content = mVolume->Find(files::withLocalSeparators(path))) return content->bytes;
    return {};
}

void MemoryFiles::SetReadOnly(const std::string& path, bool isReadOnly) {
    auto* const content = mVolume->Find(files::withLocalSeparators(path));
    if (!content) throw AutomationError(path + ": The file is not there");
    content->isReadOnly = isReadOnly;
}

const std::vector<std::string>& MemoryFiles::Calls() const { return mVolume->calls; }

void MemoryFiles::ForgetCalls() { mVolume->calls.clear(); }

std::shared_ptr<MemoryFiles> makeMemoryFiles() { return std::make_shared<MemoryFiles>(); }

}  // namespace quillbox
