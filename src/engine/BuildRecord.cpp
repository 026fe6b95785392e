#include "engine/BuildRecord.h"

#include <xxhash.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

#include "engine/Disk.h"
#include "engine/OutputFolder.h"
#include "platform/engine/BuildRecordName.h"

namespace quillbox {

namespace {

constexpr std::string_view kFirstLine =
    "# What builds wrote here. They remove what they do not write any more.";
constexpr std::size_t kDigits = 16;

void appendHexadecimal(std::uint64_t number, std::string& out) {
    std::array<char, kDigits> digits{};
    const auto* end = std::to_chars(digits.data(), digits.data() + kDigits, number, 16).ptr;
    const std::string_view text(digits.data(), static_cast<std::size_t>(end - digits.data()));
    out.append(kDigits - text.size(), '0').append(text);
}

// False for a line that no build wrote.
bool readFile(std::string_view line, WrittenFile& file) {
    if (line.size() < kDigits + 2 || line[kDigits] != ' ') return false;
    const auto* end = line.data() + kDigits;
    const auto [stop, error] = std::from_chars(line.data(), end, file.sum, 16);
    file.name = line.substr(kDigits + 1);
    return error == std::errc() && stop == end;
}

}  // namespace

std::uint64_t contentSum(std::string_view bytes) { return XXH3_64bits(bytes.data(), bytes.size()); }

BuildRecord::BuildRecord(const std::string& folder, std::string owner)
    : mFile(folder + std::string(kBuildRecordName)), mOwner(std::move(owner)) {
    std::replace_if(
        mOwner.begin(), mOwner.end(), [](unsigned char c) { return c < 0x20; }, ' ');
    read();
}

void BuildRecord::read() {
    if (!disk::isFile(mFile)) return;
    const auto content = disk::read(mFile);
    std::string_view rest = content;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        const auto line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        WrittenFile file;
        if (line.starts_with('[') && line.ends_with(']')) {
            mSections.push_back({std::string(line.substr(1, line.size() - 2)), {}});
        } else if (!mSections.empty() && readFile(line, file)) {
            mSections.back().files.push_back(std::move(file));
        }
    }
}

BuildRecord::Section& BuildRecord::section(const std::string& owner) {
    const auto found =
        std::find_if(mSections.begin(), mSections.end(), [&](const auto& one) { return one.owner == owner; });
    if (found != mSections.end()) return *found;
    mSections.push_back({owner, {}});
    return mSections.back();
}

void BuildRecord::RemoveStale(const OutputFolder& output,
                              const std::function<bool(const std::string&)>& isWanted) {
    std::unordered_map<std::string, std::vector<std::uint64_t>> ofOthers;
    for (const auto& one : mSections) {
        if (one.owner == mOwner) continue;
        for (const auto& file : one.files) ofOthers[file.name].push_back(file.sum);
    }
    for (const auto& file : section(mOwner).files) {
        if (isWanted(file.name)) continue;
        const auto& others = ofOthers[file.name];
        if (std::find(others.begin(), others.end(), file.sum) == others.end()) output.RemoveIfSame(file);
    }
}

std::string BuildRecord::text() const {
    std::string text;
    for (const auto& one : mSections) {
        if (one.files.empty()) continue;
        if (text.empty()) text.append(kFirstLine) += '\n';
        text += '[' + one.owner + "]\n";
        for (const auto& file : one.files) {
            appendHexadecimal(file.sum, text);
            text.append(1, ' ').append(file.name) += '\n';
        }
    }
    return text;
}

void BuildRecord::Save(std::vector<WrittenFile> written) {
    section(mOwner).files = std::move(written);
    const auto now = text();
    if (now.empty()) {
        disk::remove(mFile);
    } else {
        disk::writeIfChanged(mFile, now);
    }
}

void BuildRecord::SaveUnfinished(const std::vector<WrittenFile>& written) {
    std::unordered_map<std::string, std::size_t> places;
    auto files = section(mOwner).files;
    for (std::size_t at = 0; at < files.size(); ++at) places.emplace(files[at].name, at);
    for (const auto& file : written) {
        if (const auto old = places.find(file.name); old != places.end()) {
            files[old->second] = file;
        } else {
            files.push_back(file);
        }
    }
    Save(std::move(files));
}

}  // namespace quillbox
