#include "links/LinkHelpers.h"

#include "base/Text.h"
#include "frame/Platform.h"

namespace quillbox {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The code that hexadecimal digits tell; no digit tells 0.
unsigned codeOf(std::string_view digits) {
    unsigned code = 0;
    for (const char c : digits) {
        const int digit = hexDigit(c);
        if (digit < 0) break;
        code = code * 16 + static_cast<unsigned>(digit);
    }
    return code;
}

// The character of a code of the windows-1252 page, as UTF-8.
std::string windowsCharacter(unsigned char code) {
    static constexpr char16_t kHigh[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                         0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    const char16_t point = code >= 0x80 && code < 0xA0 ? kHigh[code - 0x80] : code;
    if (point < 0x80) return {static_cast<char>(point)};
    if (point < 0x800)
        return {static_cast<char>(0xC0 | (point >> 6)), static_cast<char>(0x80 | (point & 0x3F))};
    return {static_cast<char>(0xE0 | (point >> 12)), static_cast<char>(0x80 | ((point >> 6) & 0x3F)),
            static_cast<char>(0x80 | (point & 0x3F))};
}

constexpr std::string_view kNoBase = "about:blank";

}  // namespace

std::string RemoveEntities(const std::string& source) {
    std::string result;
    std::string_view rest = source;
    for (auto sign = rest.find('%'); sign != std::string::npos; sign = rest.find('%')) {
        result += rest.substr(0, sign);
        rest.remove_prefix(sign + 1);
        std::string decoded;
        do {
            auto digits = firstCharacter(rest);
            digits += firstCharacter(rest.substr(digits.size()));
            rest.remove_prefix(digits.size());
            decoded = windowsCharacter(static_cast<unsigned char>(codeOf(digits)));
        } while (decoded == "%");
        result += decoded;
    }
    return result.append(rest);
}

std::string GetLinkText(const std::string& source) {
    return RemoveEntities(source.starts_with(kNoBase) ? source.substr(kNoBase.size()) : source);
}

Ref<HTMLDocument> newDocument(const std::string& html) { return platform().html->NewDocument(html); }

Ref<HTMLDocument> newBodyDocument(const std::string& body) {
    return newDocument("<html><body>" + body + "</body></html>");
}

}  // namespace quillbox
