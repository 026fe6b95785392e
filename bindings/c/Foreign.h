#pragma once

#include "base/Object.h"
#include "quillbox/automation.h"

namespace quillbox::c {

// The object behind a C side: our own one, or one that reaches the other library's members by name.
Ref<Object> importObject(QbObject* object);

// The C side of an object of another library, with one more reference; none for an object that is ours.
QbObject* foreignObject(const Object& object);

}  // namespace quillbox::c
