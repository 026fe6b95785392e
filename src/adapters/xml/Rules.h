#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbox::xml {

inline constexpr std::size_t kMaxDepth = 1000;
inline constexpr std::size_t kMaxSize = std::size_t{1} << 30;

inline bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || (c & 0x80);
}

inline bool isNameCharacter(char c) {
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

bool isName(std::string_view text);

// Compares without regard to case; among ASCII characters the first difference decides.
bool sameName(const char* stored, std::string_view wanted);

// Tells a person what it is that `findNonXml` found at that place.
std::string describeNonXml(std::string_view text, std::size_t at);

}  // namespace quillbox::xml
