#pragma once

#include <vector>

#include "adapters/html/Token.h"
#include "adapters/html/Tree.h"

namespace quillbox::html {

// Tells each node of a parsed tree where it stands in the source, and which of them the source holds in
// pieces.
void layOut(Markup& markup, std::vector<Token>& tokens);

// Makes a fragment fit to stand between other markup: closes what it leaves open, drops stray end tags.
void seal(Markup& fragment);

}  // namespace quillbox::html
