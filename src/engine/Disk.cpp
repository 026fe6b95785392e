#include "engine/Disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox::disk {

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kLargest = std::int64_t{1} << 30;

[[noreturn]] void fail(const std::string& path, const std::string& doing, const std::string& reason) {
    throw AutomationError(path + ": cannot " + doing + ": " + reason);
}

[[noreturn]] void failNow(const std::string& path, const std::string& doing) {
    fail(path, doing, std::strerror(errno));
}

// An open file that closes itself.
class File {
  public:
    File(const std::string& path, int flags, const std::string& doing) : mPath(path), mDoing(doing) {
        mHandle = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, 0666);
        if (mHandle < 0) failNow(path, doing);
        struct stat state {};
        if (::fstat(mHandle, &state) != 0 || !S_ISREG(state.st_mode)) {
            ::close(mHandle);
            fail(path, doing, "it is no plain file");
        }
        mSize = state.st_size;
    }
    ~File() {
        if (mHandle >= 0) ::close(mHandle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    std::int64_t Size() const { return mSize; }

    // How many bytes there were; less than asked for only at the end of the file.
    std::size_t Read(char* to, std::size_t count, std::int64_t from) const {
        std::size_t done = 0;
        while (done < count) {
            const auto got =
                ::pread(mHandle, to + done, count - done, from + static_cast<std::int64_t>(done));
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) failNow(mPath, mDoing);
            if (got == 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    bool Write(std::string_view text, std::int64_t at) const {
        while (!text.empty()) {
            const auto put = ::pwrite(mHandle, text.data(), text.size(), at);
            if (put < 0 && errno == EINTR) continue;
            if (put < 0) return false;
            text.remove_prefix(static_cast<std::size_t>(put));
            at += put;
        }
        return true;
    }

    bool Truncate(std::int64_t size) const { return ::ftruncate(mHandle, size) == 0; }

    bool Close() {
        const bool closed = ::close(mHandle) == 0;
        mHandle = -1;
        return closed;
    }

    bool Holds(std::string_view text) const {
        if (mSize != static_cast<std::int64_t>(text.size())) return false;
        std::array<char, 65536> chunk;
        for (std::size_t at = 0; at < text.size();) {
            const auto got =
                Read(chunk.data(), std::min(chunk.size(), text.size() - at), static_cast<std::int64_t>(at));
            if (got == 0 || std::memcmp(chunk.data(), text.data() + at, got) != 0) return false;
            at += got;
        }
        return true;
    }

  private:
    std::string mPath, mDoing;
    int mHandle = -1;
    std::int64_t mSize = 0;
};

// What lies behind the old end goes first: where the disk is full, that is what fails, and the old file is
// whole.
void overwrite(File& file, const std::string& path, std::string_view text) {
    const auto oldSize = file.Size();
    const auto size = static_cast<std::int64_t>(text.size());
    const auto kept = static_cast<std::size_t>(std::min(oldSize, size));
    if (!file.Write(text.substr(kept), oldSize)) {
        const int reason = errno;
        if (oldSize == 0 || !file.Truncate(oldSize)) ::unlink(path.c_str());
        fail(path, "write", std::strerror(reason));
    }
    const bool whole = file.Write(text.substr(0, kept), 0) && (size >= oldSize || file.Truncate(size));
    if (whole && file.Close()) return;
    const int reason = errno;
    ::unlink(path.c_str());
    fail(path, "write", std::strerror(reason));
}

fs::path native(const std::string& path) { return fs::path(std::u8string(path.begin(), path.end())); }

std::string text(const fs::path& path) {
    const auto name = path.generic_u8string();
    return {name.begin(), name.end()};
}

template <class Iterator, class Wanted>
std::vector<std::string> list(const std::string& folder, Wanted wanted) {
    std::vector<std::string> names;
    std::error_code error;
    if (!fs::is_directory(native(folder), error)) return names;
    for (auto at = Iterator(native(folder), error); !error && at != Iterator(); at.increment(error)) {
        std::error_code ignored;
        if (wanted(*at, ignored)) names.push_back(text(at->path().lexically_relative(native(folder))));
    }
    if (error) fail(folder, "list", error.message());
    std::sort(names.begin(), names.end());
    return names;
}

bool isHidden(const std::string& name) {
    return name.starts_with('.') || name.find("/.") != std::string::npos;
}

std::vector<std::string> withoutHidden(std::vector<std::string> names) {
    std::erase_if(names, isHidden);
    return names;
}

}  // namespace

std::string read(const std::string& path) {
    const File file(path, O_RDONLY, "read");
    if (file.Size() > kLargest) fail(path, "read", "it is larger than 1 GiB");
    std::string content(static_cast<std::size_t>(file.Size()), '\0');
    content.resize(file.Read(content.data(), content.size(), 0));
    return content;
}

std::string readUtf8(const std::string& path) {
    auto content = read(path);
    if (content.starts_with("\xEF\xBB\xBF")) content.erase(0, 3);
    if (isValidUtf8(content)) return content;
    std::size_t line = 1;
    for (const auto& one : split(content, "\n")) {
        if (!isValidUtf8(one)) break;
        ++line;
    }
    throw AutomationError(path + ", line " + std::to_string(line) + ": expected text in UTF-8");
}

bool writeIfChanged(const std::string& path, std::string_view text) {
    File file(path, O_RDWR | O_CREAT | O_NOFOLLOW, "write");
    if (!text.empty() && file.Holds(text)) return false;
    overwrite(file, path, text);
    return true;
}

bool isFile(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(native(path), error);
}

bool isPlainFile(const std::string& path) {
    struct stat state {};
    return ::lstat(path.c_str(), &state) == 0 && S_ISREG(state.st_mode);
}

bool isSame(const std::string& path, const std::string& other) {
    std::error_code error;
    return fs::equivalent(native(path), native(other), error);
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(native(path), error);
}

bool isEqual(const std::string& path, std::string_view text) {
    return File(path, O_RDONLY, "read").Holds(text);
}

void createFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(native(path), error);
    if (!isFolder(path)) fail(path, "make the folder", error ? error.message() : "a file has its name");
}

void remove(const std::string& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) failNow(path, "remove");
}

bool removeEmptyFolder(const std::string& path) { return ::rmdir(path.c_str()) == 0; }

std::uint64_t stamp(const std::string& path) {
    struct stat state {};
    if (::stat(path.c_str(), &state) != 0) return 0;
    std::uint64_t mixed = 1469598103934665603u;
    for (const auto part :
         {static_cast<std::uint64_t>(state.st_mtim.tv_sec), static_cast<std::uint64_t>(state.st_mtim.tv_nsec),
          static_cast<std::uint64_t>(state.st_size), static_cast<std::uint64_t>(state.st_ino)}) {
        mixed = (mixed ^ part) * 1099511628211u;
    }
    return mixed | 1;
}

std::vector<std::string> subfolders(const std::string& folder) {
    return withoutHidden(list<fs::directory_iterator>(
        folder, [](const auto& entry, auto& error) { return entry.is_directory(error); }));
}

std::vector<std::string> files(const std::string& folder) {
    return withoutHidden(list<fs::directory_iterator>(
        folder, [](const auto& entry, auto& error) { return entry.is_regular_file(error); }));
}

std::vector<std::string> filesBelow(const std::string& folder) {
    return withoutHidden(list<fs::recursive_directory_iterator>(
        folder, [](const auto& entry, auto& error) { return entry.is_regular_file(error); }));
}

std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string asFolder(std::string path) {
    path = withSlashes(std::move(path));
    if (!path.empty() && !path.ends_with('/')) path += '/';
    return path;
}

}  // namespace quillbox::disk
