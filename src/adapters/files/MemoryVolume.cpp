#include "adapters/files/MemoryVolume.h"

#include "adapters/files/Paths.h"
#include "base/AutomationError.h"

namespace quillbox::files {

namespace {

constexpr std::size_t kLongestName = 255;

std::string folderOf(const std::string& path) { return normalised(directoryOf(path)); }

class ReplacingMemoryWriter : public Writer {
  public:
    ReplacingMemoryWriter(std::shared_ptr<MemoryVolume> volume, std::string path)
        : mVolume(std::move(volume)), mPath(std::move(path)) {}
    void Append(std::string_view bytes) override { mBytes += bytes; }
    void Finish() override {
        mVolume->Put(mPath, std::move(mBytes));
        mVolume->calls.push_back("finish " + mPath);
    }

  private:
    std::shared_ptr<MemoryVolume> mVolume;
    std::string mPath;
    std::string mBytes;
};

class InPlaceMemoryWriter : public Writer {
  public:
    InPlaceMemoryWriter(std::shared_ptr<MemoryVolume> volume, std::string path)
        : mVolume(std::move(volume)), mPath(std::move(path)) {
        mVolume->Put(mPath, "");
        mVolume->Find(mPath)->isLocked = true;
    }
    ~InPlaceMemoryWriter() override {
        if (auto* const content = mVolume->Find(mPath)) content->isLocked = false;
    }
    void Append(std::string_view bytes) override {
        if (auto* const content = mVolume->Find(mPath)) content->bytes += bytes;
    }
    void Finish() override { mVolume->calls.push_back("finish " + mPath); }

  private:
    std::shared_ptr<MemoryVolume> mVolume;
    std::string mPath;
};

}  // namespace

MemoryVolume::Content* MemoryVolume::Find(const std::string& path) {
    const auto found = mFiles.find(normalised(path));
    return found == mFiles.end() ? nullptr : &found->second;
}

MemoryVolume::Content& MemoryVolume::needed(const std::string& path) {
    if (auto* const content = Find(path)) return *content;
    throw AutomationError(isFolder(path) ? "It is a folder" : "The file is not there");
}

bool MemoryVolume::isFolder(const std::string& path) const {
    const auto place = normalised(path);
    return place.empty() || place == std::string(1, kSeparator) || mFolders.contains(place);
}

void MemoryVolume::Put(const std::string& path, std::string bytes) {
    auto& content = mFiles[normalised(path)];
    content.bytes = std::move(bytes);
    const int time = ++mWrites;
    content.modifiedOn =
        Date::From({2026, 1, 1 + time / 86400 % 28, time / 3600 % 24, time / 60 % 60, time % 60}).value();
}

Status MemoryVolume::Look(const std::string& path) {
    if (fileNameOf(path).size() > kLongestName) throw AutomationError("File name too long");
    return LookOrNothing(path);
}

Status MemoryVolume::LookOrNothing(const std::string& path) {
    if (path.empty()) return {};
    if (const auto* const content = Find(path))
        return {true, false, content->isReadOnly, content->modifiedOn};
    return {false, isFolder(path), false, {}};
}

bool MemoryVolume::CanRead(const std::string& path) {
    const auto status = Look(path);
    if (status.isFolder) throw AutomationError("It is a folder");
    return status.isFile;
}

std::string MemoryVolume::Read(const std::string& path) {
    calls.push_back("read " + path);
    return needed(path).bytes;
}

void MemoryVolume::requireWritable(const std::string& path) {
    if (isFolder(path)) throw AutomationError("It is a folder");
    if (!isFolder(folderOf(path))) throw AutomationError("No such file or directory");
    const auto* const content = Find(path);
    if (content && content->isLocked) throw AutomationError("The file is being written by somebody else");
}

std::unique_ptr<Writer> MemoryVolume::Write(const std::string& path, WriteMode mode) {
    requireWritable(path);
    calls.push_back("write " + path);
    if (mode == WriteMode::InPlace) return std::make_unique<InPlaceMemoryWriter>(shared_from_this(), path);
    return std::make_unique<ReplacingMemoryWriter>(shared_from_this(), path);
}

void MemoryVolume::Copy(const std::string& from, const std::string& to) {
    auto bytes = needed(from).bytes;
    at(to, [&] { requireWritable(to); });
    Put(to, std::move(bytes));
    calls.push_back("copy " + from + " to " + to);
}

void MemoryVolume::Delete(const std::string& path) {
    needed(path);
    mFiles.erase(normalised(path));
    calls.push_back("delete " + path);
}

void MemoryVolume::MakeFolders(const std::string& path) {
    AddFolders(path);
    calls.push_back("make folder " + path);
}

void MemoryVolume::AddFolders(const std::string& path) {
    std::vector<std::string> missing;
    for (auto place = normalised(path); !isFolder(place); place = folderOf(place)) {
        if (Find(place)) throw AutomationError("Not a directory");
        missing.push_back(place);
    }
    mFolders.insert(missing.begin(), missing.end());
}

std::vector<std::string> MemoryVolume::FileNames(const std::string& folder) {
    std::vector<std::string> names;
    const auto place = normalised(folder);
    for (const auto& [path, content] : mFiles) {
        if (folderOf(path) == place) names.emplace_back(fileNameOf(path));
    }
    return names;
}

}  // namespace quillbox::files
