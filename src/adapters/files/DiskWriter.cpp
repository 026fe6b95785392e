#include "adapters/files/DiskWriter.h"

#include <cerrno>
#include <cstdlib>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "adapters/files/Paths.h"
#include "base/AutomationError.h"

namespace quillbox::files {

namespace {

constexpr mode_t kModes = 07777;

// Small pieces of text go to the disk together.
void appendTo(std::string& buffer, const Descriptor& file, std::string_view bytes) {
    constexpr std::size_t kEnough = 256 * 1024;
    if (buffer.size() + bytes.size() < kEnough) {
        buffer += bytes;
        return;
    }
    file.Write(buffer);
    buffer.clear();
    file.Write(bytes);
}

// A file system without locks does not bar writing.
void lock(const Descriptor& file) {
    if (::flock(file.Number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
    throw AutomationError("The file is being written by somebody else");
}

// What stands behind symbolic links, so that they stay.
std::string resolveLinks(const std::string& path) {
    char* const resolved = ::realpath(path.c_str(), nullptr);
    if (resolved == nullptr) return path;
    std::string result = resolved;
    std::free(resolved);
    return result;
}

std::string temporaryName() {
    static thread_local std::mt19937_64 random{std::random_device{}()};
    return ".quillbox-" + std::to_string(random()) + ".tmp";
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& folder) {
    do {
        mPath = folder + temporaryName();
        mFile = Descriptor(::open(mPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    } while (!mFile && errno == EEXIST);
    if (!mFile) failBySystem();
}

TemporaryFile::~TemporaryFile() {
    if (!mPath.empty()) ::unlink(mPath.c_str());
}

void TemporaryFile::KeepAs(const std::string& path) {
    mFile.Close();
    if (::rename(mPath.c_str(), path.c_str()) != 0) failBySystem();
    mPath.clear();
}

ReplacingWriter::ReplacingWriter(const std::string& path)
    : mPath(resolveLinks(path)), mOld(openToRead(mPath)), mTemporary(std::string(directoryOf(mPath))) {
    if (!mOld) return;
    mIsNew = false;
    lock(mOld);
    const auto status = mOld.Look();
    const int file = mTemporary.File().Number();
    // The owner first, as a new owner takes special bits of the mode away. Only root may give files to
    // others.
    if (::fchown(file, status.st_uid, status.st_gid) != 0 && errno != EPERM) failBySystem();
    if (::fchmod(file, status.st_mode & kModes) != 0) failBySystem();
    mOld.Close();  // and with it the lock, which only told that nobody else writes the file in place
}

void ReplacingWriter::SetModeOfNew(mode_t mode) {
    if (mIsNew && ::fchmod(mTemporary.File().Number(), mode & kModes) != 0) failBySystem();
}

void ReplacingWriter::Append(std::string_view bytes) { appendTo(mBuffer, mTemporary.File(), bytes); }

void ReplacingWriter::Finish() {
    mTemporary.File().Write(mBuffer);
    mTemporary.KeepAs(mPath);
}

InPlaceWriter::InPlaceWriter(const std::string& path)
    : mFile(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666)) {
    if (!mFile) failBySystem();
    if (!S_ISREG(mFile.Look().st_mode)) throw AutomationError("It is no regular file");
    lock(mFile);
    if (::ftruncate(mFile.Number(), 0) != 0) failBySystem();
}

void InPlaceWriter::Append(std::string_view bytes) { appendTo(mBuffer, mFile, bytes); }

void InPlaceWriter::Finish() {
    mFile.Write(mBuffer);
    mFile.Close();
}

}  // namespace quillbox::files
