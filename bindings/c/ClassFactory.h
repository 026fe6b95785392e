#pragma once

#include <string_view>

#include "quillbox/automation.h"

namespace quillbox::c {

// The class object of a class id, with a reference for the caller; none for an unknown id.
QbObject* classFactory(std::string_view id);

}  // namespace quillbox::c
