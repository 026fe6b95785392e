#pragma once

#include <pybind11/pybind11.h>

#include <type_traits>

#include "base/AutomationError.h"

namespace quillbox::python {

namespace py = pybind11;

// The Python classes that the package gives to the extension. Never released: the process ends with them.
struct PackageTypes {
    py::handle error;    // quillbox.Error
    py::handle byRef;    // quillbox.ByRef
    py::handle boolean;  // the Boolean that may be called
    py::handle result;   // a value that may be called as well
    py::handle foreign;  // objects of other libraries
};
PackageTypes& packageTypes();

// What a handler raised, as the failure that travels through the library to whoever triggered the handler.
AutomationError failureOf(const py::error_already_set& raised);

// Raises quillbox.Error, with what a handler raised as its cause. An exception that is meant to end the
// program (a keyboard interrupt) goes on as it is.
[[noreturn]] void raiseError(const AutomationError& failure);

// Runs what a script asked for: each failure of the library becomes quillbox.Error.
template <class Step>
auto guarded(Step&& step) -> std::invoke_result_t<Step> {
    try {
        return step();
    } catch (const py::error_already_set&) {
        throw;
    } catch (const py::builtin_exception&) {
        throw;
    } catch (const AutomationError& failure) {
        raiseError(failure);
    } catch (const std::exception& failure) {
        raiseError(AutomationError(failure.what()));
    }
}

// Runs a handler of a script for the library: each exception becomes a failure of the library.
template <class Step>
auto asHandler(Step&& step) -> std::invoke_result_t<Step> {
    const py::gil_scoped_acquire lock;
    try {
        return step();
    } catch (const py::error_already_set& raised) {
        throw failureOf(raised);
    } catch (const py::builtin_exception& raised) {
        throw AutomationError(raised.what());
    }
}

}  // namespace quillbox::python
