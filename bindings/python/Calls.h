#pragma once

#include <pybind11/pybind11.h>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox::python {

namespace py = pybind11;

// Reads a property or calls a method, with arguments by position or by name. ByRef arguments are given back.
py::object invoke(const MemberInfo& member, py::handle object, const py::tuple& arguments,
                  const py::dict& keywords);

// Writes a property; the arguments are those of a parameterised one.
void write(const MemberInfo& member, py::handle object, const py::tuple& arguments, const py::object& value);

// Members of an object of another library, by name.
bool hasLateMethod(py::handle object, const std::string& name);
py::object getLate(py::handle object, const std::string& name);
void putLate(py::handle object, const std::string& name, const py::object& value);
py::object callLate(py::handle object, const std::string& name, const py::tuple& arguments);

}  // namespace quillbox::python
