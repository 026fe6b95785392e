#pragma once

#include <string>

#include "platform/engine/Document.h"

namespace quillbox {

// Whether a file that was written is removed after compiling; other files stay.
bool isIntermediate(const std::string& filename);

// Whether an item goes into a page: a topic has one layout, all else goes into every page made for it.
bool isInLayout(const TemplatePage& layout, const Ref<Object>& item, const std::string& defaultLayout);

}  // namespace quillbox
