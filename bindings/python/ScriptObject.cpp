#include "ScriptObject.h"

#include <unordered_map>

#include "Errors.h"
#include "Values.h"

namespace quillbox::python {

namespace {

using Carriers = std::unordered_map<PyObject*, std::weak_ptr<ScriptObject>>;

Carriers& carriers() {
    static auto* all = new Carriers;
    return *all;
}

py::tuple toTuple(const Arguments& arguments) {
    py::tuple values(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) values[i] = toPython(arguments[i]);
    return values;
}

py::object attribute(const py::object& object, const std::string& name) {
    return object.attr(py::reinterpret_borrow<py::str>(fromUtf8(name)));
}

}  // namespace

Keeper::~Keeper() {
    if (!Py_IsInitialized()) {
        mObject.release();
        return;
    }
    const py::gil_scoped_acquire lock;
    const py::error_scope pending;
    mObject = py::object();
}

Ref<ScriptObject> ScriptObject::Carry(py::handle object) {
    auto& known = carriers()[object.ptr()];
    if (auto carrier = known.lock()) return carrier;
    auto carrier = make<ScriptObject>(object);
    known = carrier;
    return carrier;
}

ScriptObject::~ScriptObject() {
    const auto found = carriers().find(Carried().ptr());
    if (found != carriers().end() && found->second.expired()) carriers().erase(found);
}

bool ScriptObject::HasMethod(const std::string& name) {
    return asHandler([&] { return PyCallable_Check(attribute(Carried(), name).ptr()) != 0; });
}

// As with the library's own members, a property that a script made a method may be read all the same.
Value ScriptObject::Get(const std::string& name, Arguments& arguments) {
    return asHandler([&]() -> Value {
        const auto found = attribute(Carried(), name);
        if (arguments.empty() && !PyCallable_Check(found.ptr())) return toValue(found);
        return toValue(found(*toTuple(arguments)));
    });
}

void ScriptObject::Put(const std::string& name, Arguments& arguments, const Value& value) {
    asHandler([&] {
        const py::str key = py::reinterpret_borrow<py::str>(fromUtf8(name));
        if (arguments.empty()) {
            py::setattr(Carried(), key, toPython(value));
        } else if (arguments.size() == 1) {
            attribute(Carried(), name)[toPython(arguments[0])] = toPython(value);
        } else {
            attribute(Carried(), name)[toTuple(arguments)] = toPython(value);
        }
    });
}

Value ScriptObject::Call(const std::string& name, Arguments& arguments) {
    return asHandler([&] { return toValue(attribute(Carried(), name)(*toTuple(arguments))); });
}

}  // namespace quillbox::python
