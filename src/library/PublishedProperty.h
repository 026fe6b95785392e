#pragma once

#include <optional>
#include <string>

#include "base/Object.h"

namespace quillbox {

// A published property of an object as text; nothing where there is none that can be read without arguments.
// "Topic.Name" goes on through the object that the first property gives; the text is empty where that is
// none.
std::optional<std::string> readPublishedProperty(Object& item, const std::string& path);

}  // namespace quillbox
