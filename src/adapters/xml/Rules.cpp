#include "adapters/xml/Rules.h"

#include <cstdio>

#include "base/Text.h"
#include "base/Utf8.h"

namespace quillbox::xml {

bool isName(std::string_view text) {
    if (text.empty() || !isNameStart(text.front())) return false;
    bool isAscii = true;
    for (const char c : text) {
        if (!isNameCharacter(c)) return false;
        if (c & 0x80) isAscii = false;
    }
    return isAscii || findNonXml(text) == std::string_view::npos;
}

bool sameName(const char* stored, std::string_view wanted) {
    const auto lowered = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (lowered(stored[i]) != lowered(wanted[i])) {
            return ((stored[i] | wanted[i]) & 0x80) && sameText(stored, wanted);
        }
        if (stored[i] == '\0') return false;
    }
    return stored[wanted.size()] == '\0';
}

std::string describeNonXml(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    if (byte(at) == 0xED && byte(at + 1) >= 0xA0) return "half of a surrogate pair";
    if (byte(at) == 0xEF && byte(at + 1) == 0xBF && byte(at + 2) >= 0xBE) {
        return byte(at + 2) == 0xBE ? "the character U+FFFE" : "the character U+FFFF";
    }
    char shown[64];
    std::snprintf(shown, sizeof shown,
                  byte(at) < 0x80 ? "the control character U+%04X" : "the byte 0x%02X outside UTF-8",
                  byte(at));
    return shown;
}

}  // namespace quillbox::xml
