#include "adapters/html/Url.h"

#include <algorithm>

namespace quillbox::html {

namespace {

constexpr std::string_view kSpace = " \t\r\n\f";
constexpr std::string_view kFile = "file:///";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isSchemeCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kSpace);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::string withSlashes(std::string_view path) {
    std::string slashed(path);
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    return slashed;
}

// The scheme with its colon; empty where there is none.
std::string_view schemeOf(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isLetter(address.front())) return {};
    const auto scheme = address.substr(0, colon);
    return std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter) ? address.substr(0, colon + 1)
                                                                        : std::string_view();
}

bool isPath(std::string_view text) {
    if (text.starts_with('/') || text.starts_with('\\')) return true;
    const bool drive = text.size() >= 2 && isLetter(text[0]) && text[1] == ':';
    return drive && (text.size() == 2 || text[2] == '/' || text[2] == '\\');
}

// Appends a relative path to a folder that ends in "/", following "." and "..". Never above the folder's
// root.
std::string joined(std::string folder, std::string_view path) {
    while (true) {
        const auto slash = path.find('/');
        const bool last = slash == std::string_view::npos;
        const auto segment = path.substr(0, slash);
        if (segment == "..") {
            if (folder.size() > 1) folder.resize(folder.rfind('/', folder.size() - 2) + 1);
        } else if (segment != ".") {
            folder += segment;
            if (!last) folder += '/';
        }
        if (last) return folder;
        path.remove_prefix(slash + 1);
    }
}

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

}  // namespace

BaseAddress::BaseAddress(std::string_view href) {
    href = trimmed(href);
    if (isPath(href)) {
        auto path = withSlashes(href);
        if (path.front() == '/') path.erase(0, 1);
        mPrefix = kFile;
        mPath = folderOf(path);
        mIsFolder = true;
        return;
    }
    const auto scheme = schemeOf(href);
    if (scheme.empty() || !href.substr(scheme.size()).starts_with("//")) return;
    const auto pathStart = std::min(href.find_first_of("/?#", scheme.size() + 2), href.size());
    const auto pathEnd = std::min(href.find_first_of("?#", pathStart), href.size());
    mPrefix = href.substr(0, pathStart);
    const auto path = withSlashes(href.substr(pathStart, pathEnd - pathStart));
    mPath = path.empty() ? "/" : joined("/", std::string_view(path).substr(1));
}

std::string BaseAddress::Resolve(std::string_view address) const {
    address = trimmed(address);
    if (address.empty() || address.front() == '#' || !schemeOf(address).empty()) return std::string(address);
    if (mPrefix.empty()) return "about:blank" + std::string(address);
    const auto rest = std::min(address.find_first_of("?#"), address.size());
    const auto path = withSlashes(address.substr(0, rest));
    return (mIsFolder ? FromFolder(path) : FromAddress(path)) + std::string(address.substr(rest));
}

std::string BaseAddress::FromFolder(std::string_view path) const {
    if (!path.starts_with('/')) return mPrefix + joined(mPath, path);
    if (path.starts_with("//")) return "file:" + std::string(path);
    return mPrefix + joined("/", path.substr(1)).substr(1);
}

std::string BaseAddress::FromAddress(std::string_view path) const {
    if (path.starts_with("//")) return std::string(schemeOf(mPrefix)) + std::string(path);
    if (path.starts_with('/')) return mPrefix + joined("/", path.substr(1));
    if (path.empty()) return mPrefix + mPath;
    return mPrefix + joined(folderOf(mPath), path);
}

}  // namespace quillbox::html
