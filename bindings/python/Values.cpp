#include "Values.h"

#include <datetime.h>

#include <limits>
#include <unordered_map>

#include "Errors.h"
#include "ScriptObject.h"
#include "Wrapper.h"

namespace quillbox::python {

namespace {

std::unordered_map<std::string, py::dict>& enumerations() {
    static auto* byName = new std::unordered_map<std::string, py::dict>;
    return *byName;
}

void needDates() {
    if (!PyDateTimeAPI) PyDateTime_IMPORT;
    if (!PyDateTimeAPI) throw py::error_already_set();
}

py::object dateToPython(const Date& date) {
    const auto p = date.Split();
    return py::reinterpret_steal<py::object>(
        PyDateTime_FromDateAndTime(p.year, p.month, p.day, p.hour, p.minute, p.second, p.microsecond));
}

Value dateToValue(PyObject* object) {
    Date::Parts parts;
    parts.year = PyDateTime_GET_YEAR(object);
    parts.month = PyDateTime_GET_MONTH(object);
    parts.day = PyDateTime_GET_DAY(object);
    if (PyDateTime_Check(object)) {
        if (PyDateTime_DATE_GET_TZINFO(object) != Py_None) {
            throw py::type_error("a date has no time zone here: pass a naive datetime in local time");
        }
        parts.hour = PyDateTime_DATE_GET_HOUR(object);
        parts.minute = PyDateTime_DATE_GET_MINUTE(object);
        parts.second = PyDateTime_DATE_GET_SECOND(object);
        parts.microsecond = PyDateTime_DATE_GET_MICROSECOND(object);
    }
    return *Date::From(parts);
}

Value integerToValue(py::handle object) {
    if (packageTypes().boolean && py::isinstance(object, packageTypes().boolean)) {
        return PyObject_IsTrue(object.ptr()) == 1;
    }
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(object.ptr(), &overflow);
    using Limits = std::numeric_limits<std::int32_t>;
    if (overflow != 0 || number < Limits::min() || number > Limits::max()) {
        throw AutomationError("Overflow: the number does not fit 32 bits");
    }
    return static_cast<std::int32_t>(number);
}

struct ToPython {
    py::object operator()(const Value::Missing&) const { return py::none(); }
    py::object operator()(const Value::Empty&) const { return py::none(); }
    py::object operator()(bool v) const { return py::bool_(v); }
    py::object operator()(std::int32_t v) const { return py::int_(v); }
    py::object operator()(float v) const { return py::float_(v); }
    py::object operator()(double v) const { return py::float_(v); }
    py::object operator()(const std::string& v) const { return fromUtf8(v); }
    py::object operator()(const Date& v) const {
        needDates();
        return dateToPython(v);
    }
    py::object operator()(const Ref<Object>& v) const {
        if (const auto script = std::dynamic_pointer_cast<ScriptObject>(v)) return script->Carried();
        return wrap(v);
    }
};

}  // namespace

std::string toUtf8(py::handle text) {
    Py_ssize_t size = 0;
    if (const char* bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size)) {
        return {bytes, static_cast<std::size_t>(size)};
    }
    PyErr_Clear();
    const auto encoded =
        py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogatepass"));
    if (!encoded) throw py::error_already_set();
    return encoded;
}

py::object fromUtf8(std::string_view text) {
    const auto size = static_cast<Py_ssize_t>(text.size());
    for (const char* errors : {"surrogatepass", "replace"}) {
        if (PyObject* decoded = PyUnicode_DecodeUTF8(text.data(), size, errors)) {
            return py::reinterpret_steal<py::object>(decoded);
        }
        if (!PyErr_ExceptionMatches(PyExc_UnicodeError)) break;
        if (std::string_view(errors) == "surrogatepass") PyErr_Clear();
    }
    throw py::error_already_set();
}

Value toValue(py::handle object) {
    PyObject* o = object.ptr();
    if (o == Py_None) return Value::None();
    if (PyBool_Check(o)) return o == Py_True;
    if (PyUnicode_Check(o)) return toUtf8(object);
    if (PyLong_Check(o)) return integerToValue(object);
    if (PyFloat_Check(o)) return PyFloat_AS_DOUBLE(o);
    if (isWrapper(object)) return unwrap(object);
    needDates();
    if (PyDate_Check(o)) return dateToValue(o);
    if (packageTypes().result && py::type::handle_of(object).is(packageTypes().result)) {
        return toValue(object.attr("_value"));
    }
    return ScriptObject::Carry(object);
}

py::object toPython(const Value& value, const std::string& type) {
    if (const auto* number = value.If<std::int32_t>()) {
        const auto found = enumerations().find(type);
        if (found != enumerations().end()) {
            const py::int_ key(*number);
            if (found->second.contains(key)) return found->second[key];
        }
    }
    return std::visit(ToPython{}, value.Get());
}

void bindEnumeration(const std::string& name, const py::dict& members) { enumerations()[name] = members; }

}  // namespace quillbox::python
