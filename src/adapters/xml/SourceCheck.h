#pragma once

#include <string>

#include "adapters/xml/SourceLines.h"

namespace quillbox::xml {

// Checks that a text is well-formed and keeps the limits, before the parser sees it, which lets much pass.
// Fails with "line N: ...". A document type declaration is blanked out, so that nobody reads it in another
// way.
SourceLines checkSource(std::string& source);

}  // namespace quillbox::xml
