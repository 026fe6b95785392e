#pragma once

#include <pybind11/pybind11.h>

namespace quillbox::python {

// What a script may replace or reach of the platform.
void addPorts(pybind11::module_& module);

}  // namespace quillbox::python
