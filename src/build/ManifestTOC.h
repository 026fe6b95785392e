#pragma once

#include <string>

namespace quillbox {

class Manifest;

// The table of contents of a booklet as HTML. Where a page number belongs stands the key of the entry.
std::string manifestTOC(Manifest& manifest);

}  // namespace quillbox
