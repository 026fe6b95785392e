#pragma once

#include <string>

#include "build/TagValues.h"

namespace quillbox {

// Has the document write the table of contents into the page at this place; the tag itself is empty.
std::string tableOfContents(const TagCall& call);

}  // namespace quillbox
