#pragma once

#include <memory>

#include "platform/Automation.h"

namespace quillbox {

// Loads the libraries that the machine's settings name for a class. A library stays loaded.
std::shared_ptr<ClassRegistry> makeClassRegistry();

}  // namespace quillbox
