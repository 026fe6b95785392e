#pragma once

#include <pugixml.hpp>
#include <string>

namespace quillbox::xml {

// The text of a tree: a declaration, then a line an element. Fails for what could not be read again. The
// expected size spares moving a large text while it grows.
std::string write(pugi::xml_node root, std::size_t expectedSize);

}  // namespace quillbox::xml
