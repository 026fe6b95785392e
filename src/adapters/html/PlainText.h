#pragma once

#include <string>

#include "adapters/html/Tree.h"

namespace quillbox::html {

// The text of a node as a reader sees it: white space run together, a line for each block, no scripts.
std::string plainText(const Node& top);

}  // namespace quillbox::html
