#include "adapters/files/Paths.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "base/Text.h"

namespace quillbox::files {

std::string withLocalSeparators(std::string_view path) {
    std::string local(path);
    std::replace(local.begin(), local.end(), '\\', kSeparator);
    return local;
}

bool isAbsolute(std::string_view path) {
    if (path.starts_with(kSeparator)) return true;
    return path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
           path[2] == kSeparator;
}

std::string_view directoryOf(std::string_view path) { return path.substr(0, path.rfind(kSeparator) + 1); }

std::string_view fileNameOf(std::string_view path) { return path.substr(path.rfind(kSeparator) + 1); }

std::string_view baseNameOf(std::string_view path) {
    const auto name = fileNameOf(path);
    return name.substr(0, name.rfind('.'));
}

std::string_view extensionOf(std::string_view path) {
    const auto name = fileNameOf(path);
    const auto dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

std::string normalised(std::string_view path) {
    const bool isRooted = path.starts_with(kSeparator);
    std::vector<std::string_view> steps;
    while (!path.empty()) {
        const auto end = path.find(kSeparator);
        const auto step = path.substr(0, end);
        path = end == std::string_view::npos ? std::string_view() : path.substr(end + 1);
        if (step.empty() || step == ".") continue;
        if (step != "..") {
            steps.push_back(step);
        } else if (!steps.empty() && steps.back() != "..") {
            steps.pop_back();
        } else if (!isRooted) {
            steps.push_back(step);
        }
    }
    std::string result(isRooted ? 1 : 0, kSeparator);
    for (const auto& step : steps) {
        if (&step != &steps.front()) result += kSeparator;
        result += step;
    }
    return result;
}

std::string relativeTo(std::string_view directory, const std::string& path) {
    if (directory.empty()) return path;
    auto base = normalised(directory);
    if (!base.ends_with(kSeparator) && !base.empty()) base += kSeparator;
    const auto whole = normalised(path);
    const bool isBelow = base.empty() ? !isAbsolute(path) : whole.starts_with(base);
    if (!isBelow) return path;
    auto below = whole.substr(base.size());
    return below.empty() || below == ".." || below.starts_with("../") ? path : below;
}

bool matches(std::string_view name, std::string_view pattern) {
    const auto folded = foldKey(name);
    const auto wanted = foldKey(pattern);
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = std::string::npos;
    std::size_t from = 0;
    while (at < folded.size()) {
        if (in < wanted.size() && wanted[in] == '*') {
            star = in++;
            from = at;
        } else if (in < wanted.size() && (wanted[in] == '?' || wanted[in] == folded[at])) {
            at += wanted[in++] == '?' ? firstCharacter(std::string_view(folded).substr(at)).size() : 1;
        } else if (star != std::string::npos) {
            in = star + 1;
            at = ++from;
        } else {
            return false;
        }
    }
    return wanted.find_first_not_of('*', in) == std::string::npos;
}

}  // namespace quillbox::files
