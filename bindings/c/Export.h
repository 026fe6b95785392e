#pragma once

#include "frame/typelib/TypeLibrary.h"
#include "quillbox/automation.h"

namespace quillbox::c {

// The C side of an object, with one more reference for the caller. An object has one C side as long as it is
// held.
QbObject* exportObject(const Ref<Object>& object);
// For an object whose class is in no library.
QbObject* exportObject(const Ref<Object>& object, const ClassInfo& info);

// The object behind a C side that is ours; none for one of another library.
Ref<Object> exportedObject(const QbObject* object);

}  // namespace quillbox::c
