#pragma once

#include "frame/typelib/TypeLibrary.h"
#include "quillbox/automation.h"

namespace quillbox::c {

// The description of a class for C, made once for each.
const QbClass* describe(const ClassInfo& info);

}  // namespace quillbox::c
