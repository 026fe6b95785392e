#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "base/Value.h"

namespace quillbox::python {

namespace py = pybind11;

// Text that holds half of a surrogate pair goes through in both directions: whether it can be used is for the
// library to say.
std::string toUtf8(py::handle text);
py::object fromUtf8(std::string_view text);

// A Python object that is none of the values is carried as it is, and comes back as itself.
Value toValue(py::handle object);

// `type` is the type as described: a number of an enumeration comes as its member.
py::object toPython(const Value& value, const std::string& type = {});

// Makes the members of an enumeration known, by value.
void bindEnumeration(const std::string& name, const py::dict& members);

}  // namespace quillbox::python
