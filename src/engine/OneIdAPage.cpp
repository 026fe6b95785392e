#include "engine/OneIdAPage.h"

#include <map>
#include <set>

#include "base/Text.h"

namespace quillbox {

namespace {

std::string word(const std::string& line, std::size_t number) {
    const auto words = split(line, " ");
    return words.size() > number ? words[number] : std::string();
}

// The id and the page of a line "ID = PAGE".
std::pair<std::string, std::string> aliasOf(const std::string& line) {
    const auto sign = line.find('=');
    if (sign == std::string::npos) return {};
    return {std::string(trimBlanks(line.substr(0, sign))), lower(trimBlanks(line.substr(sign + 1)))};
}

}  // namespace

OneIdAPage withOneIdAPage(const std::string& project) {
    OneIdAPage result;
    std::map<std::string, std::string> pages;
    std::set<std::string> leftOut;
    std::string section;
    // The aliases come first, in a pass of their own: the map may stand before them.
    const auto lines = split(replaceAll(project, "\r\n", "\n"), "\n");
    for (const auto& line : lines) {
        if (line.starts_with('[')) section = lower(line);
        if (section != "[alias]") continue;
        const auto [id, page] = aliasOf(line);
        if (id.empty() || pages.emplace(page, id).first->second == id) continue;
        leftOut.insert(id);
        result.notes +=
            "Left out: " + id + ", as chmcmd takes one context id for a page, and " + page + " has one\n";
    }
    for (const auto& line : lines) {
        const bool gone = leftOut.contains(aliasOf(line).first) ||
                          (line.starts_with("#define ") && leftOut.contains(word(line, 1)));
        if (!gone) result.project += line + "\n";
    }
    return result;
}

}  // namespace quillbox
