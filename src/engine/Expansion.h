#pragma once

#include <string>

#include "platform/engine/Tags.h"

namespace quillbox {

// Expands template text through a provider. A failure tells the template's file and line and what was being
// written.
void expandThrough(IDataProvider& provider, const TagPieces& pieces, const std::string& templateFile,
                   const std::string& writing, const Ref<FileSystemObject>& file, std::string& out);

}  // namespace quillbox
