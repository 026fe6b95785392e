#pragma once

#include <cstddef>
#include <string_view>

namespace quillbox {

// Where the first byte stands that belongs to no character of valid UTF-8; npos where all is valid.
std::size_t findInvalidUtf8(std::string_view text);
inline bool isValidUtf8(std::string_view text) { return findInvalidUtf8(text) == std::string_view::npos; }

// Where the first byte stands that XML cannot hold: invalid UTF-8, a control character other than tab, CR and
// LF, U+FFFE or U+FFFF; npos where there is none.
std::size_t findNonXml(std::string_view text);

}  // namespace quillbox
