#include "adapters/files/File.h"

#include <algorithm>

#include "adapters/files/Paths.h"
#include "base/AutomationError.h"
#include "base/Encoding.h"
#include "base/Text.h"

namespace quillbox::files {

namespace {

std::string localPath(const std::string& path) {
    if (path.find('\0') != std::string::npos)
        throw AutomationError("'" + path.substr(0, path.find('\0')) + "': A path holds no NUL");
    return withLocalSeparators(path);
}

// Where a path says that it stands, from a directory that counts for relative ones.
std::string resolved(const std::string& path, const std::optional<std::string>& base) {
    if (path.empty() || !base || isAbsolute(path)) return path;
    return *base + path;
}

void requirePlainName(std::string_view path) {
    const auto name = fileNameOf(path);
    if (name.empty()) throw AutomationError("The path names no file");
    const bool hasControls =
        std::any_of(name.begin(), name.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; });
    if (hasControls) throw AutomationError("The file name holds a control character");
}

}  // namespace

// Runs a step and names the path in its failure.
template <class Step>
auto File::atPath(Step&& step) const {
    if (mPath.empty()) throw AutomationError("The file object has no path");
    return at(FullPath(), step);
}

std::string File::FullPath() const { return resolved(mPath, mBase); }

void File::SetPath(const std::string& path) {
    auto local = localPath(path);
    mWorkDirectory.reset();
    changePath(std::move(local));
}

void File::changePath(std::string path) {
    mPath = std::move(path);
    pathChanged();
}

std::string File::Directory() const { return std::string(directoryOf(FullPath())); }

void File::SetDirectory(const std::string& path) { mWorkDirectory = resolved(localPath(path), mBase); }

std::string File::workDirectory() const { return mWorkDirectory ? *mWorkDirectory : Directory(); }

bool File::DirectoryExists() const {
    const auto directory = workDirectory();
    return !directory.empty() && mVolume->LookOrNothing(directory).isFolder;
}

void File::CreateDirectory() {
    const auto directory = workDirectory();
    at(directory, [&] {
        if (!directory.empty()) mVolume->MakeFolders(directory);
    });
}

std::vector<Ref<FileSystemObject>> File::ListFiles(const std::string& pattern) const {
    auto directory = workDirectory();
    return at(directory, [&] {
        auto names = mVolume->FileNames(directory);
        std::erase_if(names, [&](const std::string& name) { return !matches(name, pattern); });
        std::sort(names.begin(), names.end());
        if (!directory.empty() && !directory.ends_with(kSeparator)) directory += kSeparator;
        std::vector<Ref<FileSystemObject>> files;
        for (const auto& name : names) {
            files.push_back(make<File>(mVolume));
            files.back()->SetPath(directory + name);
        }
        return files;
    });
}

std::string File::FileName() const { return std::string(fileNameOf(mPath)); }

std::string File::BaseName() const { return std::string(baseNameOf(mPath)); }

void File::SetBaseName(const std::string& name) {
    const auto extension = Extension();
    changePath(std::string(directoryOf(mPath)) + localPath(name) +
               (extension.empty() ? "" : "." + extension));
}

std::string File::Extension() const { return std::string(extensionOf(mPath)); }

void File::SetExtension(const std::string& extension) {
    changePath(std::string(directoryOf(mPath)) + BaseName() +
               (extension.empty() ? "" : "." + localPath(extension)));
}

bool File::Exists() const {
    const auto status = mVolume->LookOrNothing(FullPath());
    return status.isFile || status.isFolder;
}

bool File::IsReadOnly() const { return mVolume->LookOrNothing(FullPath()).isReadOnly; }

Date File::ModifiedOn() const { return mVolume->LookOrNothing(FullPath()).modifiedOn; }

void File::Open(const OpenMode& mode) {
    giveUp();
    atPath([&] {
        const auto path = FullPath();
        requirePlainName(path);
        if (mode.mode == kReadWhole.mode && mode.access == kReadWhole.access) {
            if (!mVolume->CanRead(path)) mLines.emplace("");
            mIsReading = true;
        } else if (mode.mode == kWriteElement.mode && mode.access == kWriteElement.access) {
            requireWritable(path);
            const bool isReplacing = mode.lock == kWriteElement.lock;
            mWriter = mVolume->Write(path, isReplacing ? WriteMode::Replace : WriteMode::InPlace);
        } else {
            throw AutomationError(
                "A file opens for reading with mode 3 and access 1, for writing with 4 and 2");
        }
        mOpenPath = path;
    });
}

void File::requireWritable(const std::string& path) const {
    if (mVolume->Look(path).isReadOnly) throw AutomationError("The file is read-only");
}

void File::giveUp() {
    mWriter.reset();
    mLines.reset();
    mIsReading = false;
}

std::string File::ReadAll() {
    return atPath([&] {
        const auto path = FullPath();
        const bool isMissing = mIsReading && !mVolume->CanRead(path);
        return isMissing ? std::string() : decodeText(mVolume->Read(path));
    });
}

// Runs a step on the text of the opened file.
template <class Step>
auto File::withLines(Step&& step) {
    if (!mIsReading) atPath([] { throw AutomationError("The file is not open for reading"); });
    if (!mLines) mLines.emplace(at(mOpenPath, [&] { return decodeText(mVolume->Read(mOpenPath)); }));
    return step(*mLines);
}

std::string File::ReadLine() {
    return withLines([](LineReader& lines) { return lines.Next(); });
}

bool File::EndOfFile() {
    return withLines([](LineReader& lines) { return lines.AtEnd(); });
}

void File::Write(const std::string& text) {
    if (!mWriter) atPath([] { throw AutomationError("The file is not open for writing"); });
    try {
        at(mOpenPath, [&] { mWriter->Append(text); });
    } catch (const AutomationError&) {
        giveUp();  // what is there only in part never takes the place of the old file
        throw;
    }
}

void File::Close() {
    const auto writer = std::move(mWriter);
    giveUp();
    if (writer) at(mOpenPath, [&] { writer->Finish(); });
}

void File::Delete() {
    atPath([&] { mVolume->Delete(FullPath()); });
}

void File::CopyTo(const std::string& path) {
    const auto to = resolved(localPath(path), mBase);
    at(to, [&] {
        requirePlainName(to);
        requireWritable(to);
    });
    atPath([&] { mVolume->Copy(FullPath(), to); });
}

void File::SetRelativeTo(const Ref<FileSystemObject>& base) {
    // The directory as it is now: files that are measured from each other would never come to an end.
    mBase.reset();
    if (base) mBase = base->Directory();
    if (!isAbsolute(mPath)) pathChanged();
}

std::string File::RelativePath() const { return mBase ? relativeTo(*mBase, FullPath()) : FullPath(); }

}  // namespace quillbox::files
