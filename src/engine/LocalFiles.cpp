#include "engine/LocalFiles.h"

#include <algorithm>
#include <array>

#include "base/Text.h"
#include "engine/CharSet.h"
#include "engine/Disk.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

constexpr std::array<std::string_view, 5> kReferring = {"src", "href", "background", "data", "poster"};

std::string folderOf(const std::string& name) { return name.substr(0, name.rfind('/') + 1); }

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool refers(std::string_view attribute) {
    // Few other attributes end like one of these.
    static constexpr CharSet kLast("cCfFdDaArR");
    if (attribute.empty() || !kLast.Has(attribute.back())) return false;
    return std::any_of(kReferring.begin(), kReferring.end(),
                       [&](std::string_view one) { return FoldedEqual{}(attribute, one); });
}

// Relative to the output folder, without "." and ".."; empty for what lies outside.
std::string placed(const std::string& folder, const std::string& reference) {
    std::vector<std::string> pieces;
    for (auto& piece : split(disk::withSlashes(folder + reference), "/")) {
        if (piece == "..") {
            if (pieces.empty()) return {};
            pieces.pop_back();
        } else if (!piece.empty() && piece != ".") {
            pieces.push_back(std::move(piece));
        }
    }
    return join(pieces, "/");
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (isBlank(text.front()) || text.front() == '"' || text.front() == '\''))
        text.remove_prefix(1);
    while (!text.empty() && (isBlank(text.back()) || text.back() == '"' || text.back() == '\''))
        text.remove_suffix(1);
    return text;
}

bool beginsTag(std::string_view html, std::size_t at) {
    const char letter = at + 1 < html.size() ? static_cast<char>(html[at + 1] | 0x20) : '\0';
    return letter >= 'a' && letter <= 'z';
}

bool isPlainName(std::string_view name) {
    return !name.empty() && std::none_of(name.begin(), name.end(), [](unsigned char c) { return c < 0x20; });
}

}  // namespace

void LocalFiles::add(const std::string& folder, std::string_view reference) {
    reference = withoutFragment(trimmed(reference));
    if (reference.empty()) return;
    mWritten.assign(folder).append(reference);
    if (!mSeen.insert(mWritten).second) return;
    reference = trimmed(reference);
    if (reference.empty() || isRemote(reference)) return;
    auto name = placed(folder, decodedLink(replaceAll(reference, "&amp;", "&")));
    if (isPlainName(name) && mKnown.insert(name).second) mNames.push_back(std::move(name));
}

void LocalFiles::scanTag(const std::string& folder, std::string_view tag) {
    for (auto sign = tag.find('='); sign != std::string_view::npos; sign = tag.find('=', sign + 1)) {
        auto end = sign;
        while (end > 0 && isBlank(tag[end - 1])) --end;
        auto begin = end;
        while (begin > 0 && !isBlank(tag[begin - 1])) --begin;
        const auto name = tag.substr(begin, end - begin);
        auto value = tag.substr(sign + 1);
        while (!value.empty() && isBlank(value.front())) value.remove_prefix(1);
        if (value.empty()) return;
        if (value.front() == '"' || value.front() == '\'') {
            const char quote = value.front();
            value.remove_prefix(1);
            value = value.substr(0, value.find(quote));
        } else {
            value = value.substr(0, value.find_first_of(" \t\r\n"));
        }
        if (refers(name)) add(folder, value);
        sign = static_cast<std::size_t>(value.data() - tag.data()) + value.size();
        if (sign >= tag.size()) return;
    }
}

void LocalFiles::scanStyles(const std::string& folder, std::string_view css) {
    // Of the characters of "url(", few texts hold many of the last.
    for (auto at = css.find('('); at != std::string_view::npos; at = css.find('(', at + 1)) {
        if (!css.substr(0, at).ends_with("url")) continue;
        const auto inside = css.substr(at + 1);
        add(folder, inside.substr(0, inside.find(')')));
    }
    for (auto at = css.find("@import"); at != std::string_view::npos; at = css.find("@import", at + 7)) {
        const auto rest = trimmed(css.substr(at + 7, css.find(';', at) - at - 7));
        if (!rest.starts_with("url")) add(folder, rest.substr(0, rest.find_first_of("\"' ")));
    }
}

void LocalFiles::ScanPage(const std::string& name, std::string_view html) {
    const auto folder = folderOf(name);
    for (auto at = html.find('<'); at != std::string_view::npos; at = html.find('<', at)) {
        const bool comment = html.substr(at, 4) == "<!--";
        if (!comment && !beginsTag(html, at)) {
            ++at;
            continue;
        }
        const auto end = comment ? html.find("-->", at) : endOfTag(html, at);
        if (end == std::string_view::npos) break;
        if (!comment) scanTag(folder, html.substr(at + 1, end - at - 1));
        at = end;
    }
    scanStyles(folder, html);
}

void LocalFiles::ScanStyles(const std::string& name, std::string_view css) {
    scanStyles(folderOf(name), css);
}

std::vector<std::string> LocalFiles::Closure(const OutputFolder& output) {
    std::vector<std::string> found;
    for (std::size_t at = 0; at < mNames.size(); ++at) {
        const auto name = mNames[at];
        if (output.IsClaimed(name)) continue;
        const auto path = disk::isFile(output.DiskName(name)) ? output.DiskName(name) : output.FullName(name);
        if (!disk::isFile(path)) continue;
        found.push_back(name);
        if (endsWithText(name, ".css")) ScanStyles(name, disk::read(path));
    }
    return found;
}

}  // namespace quillbox
