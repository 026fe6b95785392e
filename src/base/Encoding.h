#pragma once

#include <string>

namespace quillbox {

// The text of a file: decoded by its byte order mark, by its XML declaration, as UTF-8, else as windows-1252.
// Fails for bytes that a mark or a declaration belies, and for a declared encoding that is not known.
std::string decodeText(std::string bytes);

}  // namespace quillbox
