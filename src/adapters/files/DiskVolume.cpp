#include "adapters/files/DiskVolume.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <system_error>

#include <unistd.h>

#include "adapters/files/Descriptor.h"
#include "adapters/files/DiskWriter.h"
#include "base/AutomationError.h"

namespace quillbox::files {

namespace {

constexpr std::size_t kMaxSize = std::size_t{1} << 30;

Date localDate(std::time_t time) {
    std::tm parts{};
    if (::localtime_r(&time, &parts) == nullptr) return {};
    return Date::From({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                       std::min(parts.tm_sec, 59)})
        .value_or(Date());
}

Status statusOf(const struct stat& found) {
    return {!S_ISDIR(found.st_mode), S_ISDIR(found.st_mode), (found.st_mode & S_IWUSR) == 0,
            localDate(found.st_mtime)};
}

bool isAbsence(int error) { return error == ENOENT || error == ENOTDIR; }

}  // namespace

Status DiskVolume::Look(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) == 0) return statusOf(found);
    if (!isAbsence(errno)) failBySystem();
    return {};
}

Status DiskVolume::LookOrNothing(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 ? statusOf(found) : Status{};
}

bool DiskVolume::CanRead(const std::string& path) { return static_cast<bool>(openToRead(path)); }

std::string DiskVolume::Read(const std::string& path) {
    const auto file = openToRead(path);
    if (!file) throw AutomationError("The file is not there");
    const auto size = static_cast<std::size_t>(file.Look().st_size);
    if (size > kMaxSize) throw AutomationError("The file is larger than 1 GiB");
    std::string bytes(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        const auto count = file.Read(bytes.data() + done, size - done);
        if (count == 0) break;
        done += count;
    }
    bytes.resize(done);
    return bytes;
}

std::unique_ptr<Writer> DiskVolume::Write(const std::string& path, WriteMode mode) {
    if (mode == WriteMode::InPlace) return std::make_unique<InPlaceWriter>(path);
    return std::make_unique<ReplacingWriter>(path);
}

void DiskVolume::Copy(const std::string& from, const std::string& to) {
    const auto source = openToRead(from);
    if (!source) throw AutomationError("The file is not there");
    const auto mode = source.Look().st_mode;
    const auto target = at(to, [&] { return std::make_unique<ReplacingWriter>(to); });
    std::array<char, 64 * 1024> buffer;
    while (const auto count = source.Read(buffer.data(), buffer.size())) {
        at(to, [&] { target->Append({buffer.data(), count}); });
    }
    at(to, [&] {
        target->SetModeOfNew(mode | S_IWUSR);
        target->Finish();
    });
}

void DiskVolume::Delete(const std::string& path) {
    if (::unlink(path.c_str()) != 0) failBySystem();
}

void DiskVolume::MakeFolders(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) throw AutomationError(error.message());
}

std::vector<std::string> DiskVolume::FileNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entries(folder.empty() ? "." : folder, error);
    if (error && !isAbsence(error.value())) throw AutomationError(error.message());
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        std::error_code ignored;
        if (!entries->is_directory(ignored)) names.push_back(entries->path().filename().string());
    }
    return names;
}

}  // namespace quillbox::files
