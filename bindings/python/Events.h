#pragma once

#include <pybind11/pybind11.h>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox::python {

namespace py = pybind11;

// Calls a Python handler for each event, with the published arguments in order, by-reference ones as ByRef.
Disconnect connectHandler(const Ref<Object>& object, const EventInfo& event, const py::object& handler);

// For the collector: the handlers that hang on an object.
int visitHandlers(const Object* object, visitproc visit, void* arg);
void disconnectAll(const Object* object);

}  // namespace quillbox::python
