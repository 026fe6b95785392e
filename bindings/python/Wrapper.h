#pragma once

#include <pybind11/pybind11.h>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox::python {

namespace py = pybind11;

// The Python side of a library object. There is one wrapper for an object as long as somebody holds it, so
// that one object is one Python identity; the wrapper holds the object, and the object knows nothing of it.

// Adds the base class `Object` of all wrappers to the extension.
void addObjectType(py::module_& module);

// Says which Python class the objects of a library class are.
void bindClass(const ClassInfo& info, const py::type& type);

// None for no object. An object whose class is not described can be held and passed on, no more.
py::object wrap(const Ref<Object>& object);

bool isWrapper(py::handle object);
// Fails with TypeError for anything but a wrapper.
const Ref<Object>& unwrap(py::handle object);

}  // namespace quillbox::python
