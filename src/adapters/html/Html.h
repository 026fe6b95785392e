#pragma once

#include <memory>

#include "platform/HTML.h"

namespace quillbox {

// Documents on an HTML5 parser. What is not changed is written back as its author wrote it.
std::shared_ptr<DOMFactory> makeHtmlFactory();

}  // namespace quillbox
