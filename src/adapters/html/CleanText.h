#pragma once

#include <string>
#include <string_view>

namespace quillbox::html {

// The text with U+FFFD in place of what is no UTF-8, and of NUL, which HTML cannot hold.
std::string cleanText(std::string_view text);

// Text and attribute values as markup. An attribute stands in double quotes.
std::string escapedText(std::string_view text);
std::string escapedValue(std::string_view value);

}  // namespace quillbox::html
