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

constexpr auto kNone = std::string::npos;

bool isSection(std::string_view line) { return line.starts_with('[') && line.find(']') != kNone; }

std::string sectionName(std::string_view line) { return std::string(line.substr(1, line.rfind(']') - 1)); }

// What cannot stand in a value as it is.
std::string escaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        const bool atEnd = i == 0 || i + 1 == value.size();
        if (c == '\n') {
            text += "\\n";
        } else if (c == '\r') {
            text += "\\r";
        } else if (c == ' ' && atEnd) {
            text += "\\s";
        } else if (c == '\\' && i + 1 < value.size() && std::strchr("nrs\\", value[i + 1])) {
            text += "\\\\";
        } else {
            text += c;
        }
    }
    return text;
}

std::string unescaped(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        constexpr std::string_view kSigns = "nrs\\";
        const auto sign = next ? kSigns.find(next) : kNone;
        if (sign == kNone) {
            value += text[i];
        } else {
            value += "\n\r \\"[sign];
            ++i;
        }
    }
    return value;
}

[[noreturn]] void fail(const std::string& path) {
    throw AutomationError("The settings could not be written to '" + path + "': " + std::strerror(errno));
}

}  // namespace

IniFile::IniFile(std::string path) : mPath(std::move(path)) {
    std::ifstream file(mPath, std::ios::binary);
    mExists = file.good();
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) line.pop_back();
        mLines.push_back(line);
    }
}

IniFile::Place IniFile::find(const std::string& section, const std::string& name) const {
    Place place{kNone, kNone};
    bool within = false;
    for (std::size_t i = 0; i < mLines.size(); ++i) {
        const auto line = trimBlanks(mLines[i]);
        if (isSection(line)) {
            within = sameText(sectionName(line), section);
            if (within) place.sectionEnd = i + 1;
        } else if (within && !line.empty() && line.front() != ';' && line.front() != '#') {
            place.sectionEnd = i + 1;
            const auto sign = line.find('=');
            if (sign != kNone && sameText(trimBlanks(line.substr(0, sign)), name)) {
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
    return unescaped(trimBlanks(line.substr(line.find('=') + 1)));
}

void IniFile::Write(const std::string& section, const std::string& name, const std::string& value) {
    if (section.find_first_of("]\r\n") != kNone || name.find_first_of("=\r\n") != kNone) {
        throw AutomationError("'" + section + "', '" + name + "' is no name for a setting");
    }
    const auto line = name + "=" + escaped(value);
    const auto place = find(section, name);
    if (place.line != kNone) {
        mLines[place.line] = line;
    } else if (place.sectionEnd != kNone) {
        mLines.insert(mLines.begin() + static_cast<std::ptrdiff_t>(place.sectionEnd), line);
    } else {
        if (!mLines.empty() && !mLines.back().empty()) mLines.emplace_back();
        mLines.push_back("[" + section + "]");
        mLines.push_back(line);
    }
}

void IniFile::Delete(const std::string& section, const std::string& name) {
    const auto place = find(section, name);
    if (place.line != kNone) mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(place.line));
}

void IniFile::Save() const {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(mPath).parent_path(), ignored);
    std::string text;
    for (const auto& line : mLines) text += line + "\n";
    auto temporary = mPath + ".XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);  // made for its owner alone
    if (file < 0) fail(mPath);
    const bool written = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (close(file) != 0 || !written || rename(temporary.c_str(), mPath.c_str()) != 0) {
        const int error = errno;
        unlink(temporary.c_str());
        errno = error;
        fail(mPath);
    }
}

}  // namespace quillbox
