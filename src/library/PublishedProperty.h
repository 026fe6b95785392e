#pragma once

#include <optional>
#include <string>

#include "base/Object.h"

namespace quillbox {

// A published property of an object as text; nothing where there is none that can be read without arguments.
std::optional<std::string> readPublishedProperty(Object& item, const std::string& name);

}  // namespace quillbox
