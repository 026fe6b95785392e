#include "adapters/settings/IniFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace {

namespace fs = std::filesystem;

constexpr auto kNone = std::string::npos;
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kEscaped = "escaped:";
constexpr std::string_view kSpecial = "\n\r\t \\";
constexpr std::string_view kSigns = "nrts\\";  // what stands for each behind a backslash

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == kNone) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isSection(std::string_view line) { return line.starts_with('[') && line.find(']') != kNone; }

std::string_view sectionName(std::string_view line) { return line.substr(1, line.rfind(']') - 1); }

bool isComment(std::string_view line) { return line.starts_with(';') || line.starts_with('#'); }

std::string escaped(std::string_view value) {
    if (trimmed(value) == value && value.find_first_of("\n\r") == kNone && !value.starts_with(kEscaped)) {
        return std::string(value);
    }
    std::string text(kEscaped);
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isAtEnd = i == 0 || i + 1 == value.size();
        const auto special = kSpecial.find(value[i]);
        if (special == kNone || (value[i] == ' ' && !isAtEnd)) {
            text += value[i];
        } else {
            text += '\\';
            text += kSigns[special];
        }
    }
    return text;
}

std::string unescaped(std::string_view text) {
    if (!text.starts_with(kEscaped)) return std::string(text);
    std::string value;
    for (auto i = kEscaped.size(); i < text.size(); ++i) {
        const auto sign = text[i] == '\\' && i + 1 < text.size() ? kSigns.find(text[i + 1]) : kNone;
        value += sign == kNone ? text[i] : kSpecial[sign];
        if (sign != kNone) ++i;
    }
    return value;
}

void requireNames(const std::string& section, const std::string& name) {
    const bool isSectionPlain = section.find_first_of("[]\r\n") == kNone;
    const bool isNamePlain = name.find_first_of("=\r\n") == kNone && trimmed(name) == name &&
                             !isComment(name) && !name.starts_with('[');
    if (isSectionPlain && isNamePlain) return;
    throw AutomationError("'" + section + "', '" + name + "' is no name for a setting");
}

[[noreturn]] void fail(const std::string& path) {
    throw AutomationError("The settings could not be written to '" + path + "': " + std::strerror(errno));
}

void writeAll(int file, std::string_view text, const std::string& path) {
    while (!text.empty()) {
        const auto count = write(file, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) fail(path);
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

// Puts a file with that text in the place of the old one, in one step.
void replaceFile(const std::string& path, std::string_view text) {
    auto temporary = path + ".XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);  // made for its owner alone
    if (file < 0) fail(path);
    try {
        writeAll(file, text, path);
        if (rename(temporary.c_str(), path.c_str()) != 0) fail(path);
    } catch (const AutomationError&) {
        close(file);
        unlink(temporary.c_str());
        throw;
    }
    if (close(file) != 0) fail(path);
}

}  // namespace

IniFile::IniFile(std::string path) : mPath(std::move(path)) {
    std::error_code error;
    // What stands behind a symbolic link, so that it stays one.
    if (const auto real = fs::canonical(mPath, error); !error) mPath = real;
    mExists = error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory;
    std::ifstream file(mPath, std::ios::binary);
    mIsRead = !mExists || file.good();
    for (std::string line; std::getline(file, line);) mLines.push_back(line);
    if (!mLines.empty() && mLines.front().starts_with("\xEF\xBB\xBF")) mLines.front().erase(0, 3);
}

IniFile::Place IniFile::find(const std::string& section, const std::string& name) const {
    Place place{kNone, kNone};
    bool within = false;
    for (std::size_t i = 0; i < mLines.size(); ++i) {
        const auto line = trimmed(mLines[i]);
        if (isSection(line)) {
            within = sameText(sectionName(line), section);
            if (within) place.sectionEnd = i + 1;
        } else if (within && !line.empty() && !isComment(line)) {
            place.sectionEnd = i + 1;
            const auto sign = line.find('=');
            if (sign != kNone && sameText(trimmed(line.substr(0, sign)), name)) {
                place.line = i;
                return place;
            }
        }
    }
    return place;
}

std::string IniFile::Read(const std::string& section, const std::string& name) const {
    const auto place = find(section, name);
    if (place.line == kNone) return {};
    const std::string_view line = mLines[place.line];
    return unescaped(trimmed(line.substr(line.find('=') + 1)));
}

void IniFile::Write(const std::string& section, const std::string& name, const std::string& value) {
    requireNames(section, name);
    const auto line = name + "=" + escaped(value);
    const auto place = find(section, name);
    if (place.line != kNone) {
        mLines[place.line] = line + (mLines[place.line].ends_with('\r') ? "\r" : "");
    } else if (place.sectionEnd != kNone) {
        mLines.insert(mLines.begin() + static_cast<std::ptrdiff_t>(place.sectionEnd), line);
    } else {
        if (!mLines.empty() && !trimmed(mLines.back()).empty()) mLines.emplace_back();
        mLines.push_back("[" + section + "]");
        mLines.push_back(line);
    }
}

void IniFile::Delete(const std::string& section, const std::string& name) {
    const auto place = find(section, name);
    if (place.line != kNone) mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(place.line));
}

void IniFile::Save() const {
    if (!mIsRead)
        throw AutomationError("The settings of '" + mPath + "' cannot be read, and stay as they are");
    std::error_code ignored;  // a folder that cannot be made is told by the file in it
    fs::create_directories(fs::path(mPath).parent_path(), ignored);
    replaceFile(mPath, join(mLines, "\n") + "\n");
}

}  // namespace quillbox
