#include "adapters/html/CleanText.h"

#include <unicode/utf8.h>

#include <cstdint>

#include "base/Utf8.h"

namespace quillbox::html {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::string escaped(std::string_view text, std::string_view what) {
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    for (;;) {
        const auto found = text.find_first_of(what);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        switch (text[found]) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += "&quot;";
                break;
        }
        text.remove_prefix(found + 1);
    }
}

}  // namespace

std::string cleanText(std::string_view text) {
    if (text.find('\0') == std::string_view::npos && findInvalidUtf8(text) == std::string_view::npos) {
        return std::string(text);
    }
    std::string clean;
    clean.reserve(text.size());
    const auto size = static_cast<std::int64_t>(text.size());
    for (std::int64_t at = 0; at < size;) {
        const auto start = at;
        UChar32 character = 0;
        U8_NEXT(text.data(), at, size, character);
        if (character > 0) {
            clean += text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
        } else {
            clean += kReplacement;
        }
    }
    return clean;
}

std::string escapedText(std::string_view text) { return escaped(text, "&<>"); }
std::string escapedValue(std::string_view value) { return escaped(value, "&\""); }

}  // namespace quillbox::html
