#include "Errors.h"

#include "Values.h"

namespace quillbox::python {

PackageTypes& packageTypes() {
    static PackageTypes types;
    return types;
}

namespace {

// Steals the object; nothing, without a pending error, where there is none.
py::object orNothing(PyObject* object) {
    if (!object) PyErr_Clear();
    return py::reinterpret_steal<py::object>(object);
}

// These must not fail: they run where the stack or the memory may be at its end.

std::string textOf(const py::object& value) {
    const auto text = value ? orNothing(PyObject_Str(value.ptr())) : py::object();
    const char* bytes = text ? PyUnicode_AsUTF8(text.ptr()) : nullptr;
    if (!bytes) PyErr_Clear();
    return bytes ? bytes : "";
}

std::string describe(const py::object& exception) {
    auto text = textOf(exception);
    return text.empty() ? Py_TYPE(exception.ptr())->tp_name : text;
}

int numberOf(const py::object& exception) {
    const auto number = orNothing(PyObject_GetAttrString(exception.ptr(), "number"));
    const long value = number ? PyLong_AsLong(number.ptr()) : -1;
    if (PyErr_Occurred() || !number) {
        PyErr_Clear();
        return AutomationError::kNumber;
    }
    return static_cast<int>(value);
}

}  // namespace

AutomationError failureOf(const py::error_already_set& raised) {
    const py::object exception = raised.value();
    const bool ours = PyErr_GivenExceptionMatches(exception.ptr(), packageTypes().error.ptr()) != 0;
    return AutomationError(describe(exception), ours ? numberOf(exception) : AutomationError::kNumber,
                           std::current_exception());
}

void raiseError(const AutomationError& failure) {
    py::object error = packageTypes().error(failure.Number(), fromUtf8(failure.Description()));
    if (failure.Cause()) {
        try {
            std::rethrow_exception(failure.Cause());
        } catch (const py::error_already_set& raised) {
            if (!raised.matches(PyExc_Exception)) throw;
            py::object cause = raised.value();
            if (raised.trace()) PyException_SetTraceback(cause.ptr(), raised.trace().ptr());
            PyException_SetCause(error.ptr(), cause.release().ptr());
        } catch (const std::exception&) {
            // A cause from another host says nothing to this one; its text is in the description.
        }
    }
    PyErr_SetObject(packageTypes().error.ptr(), error.ptr());
    throw py::error_already_set();
}

}  // namespace quillbox::python
