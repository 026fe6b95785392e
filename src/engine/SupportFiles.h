#pragma once

#include <string>
#include <vector>

#include "engine/OutputFolder.h"
#include "platform/engine/Templates.h"

namespace quillbox {

// The files of a template that go to the output folder as they are, by their names there.
std::vector<std::string> supportFiles(PageTemplate& pageTemplate);

// Whether the output folder has another file of that name already.
bool replacesFile(PageTemplate& pageTemplate, const std::string& name, const OutputFolder& output);

void copySupportFile(PageTemplate& pageTemplate, const std::string& name, OutputFolder& output);

}  // namespace quillbox
