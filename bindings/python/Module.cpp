#include <pybind11/pybind11.h>

#include "Calls.h"
#include "Errors.h"
#include "Events.h"
#include "Ports.h"
#include "Values.h"
#include "Wrapper.h"
#include "frame/Platform.h"
#include "frame/typelib/TypeLibrary.h"

// The extension gives the package the description of the library and the few calls that everything is made
// of. Which classes, members and enumerations there are is known to the type library alone.

namespace quillbox::python {

namespace {

// A walk over the items that a collection had when the walk began.
struct Walk {
    std::vector<Value> items;
    std::size_t next = 0;
};

const char* kindName(MemberKind kind) {
    switch (kind) {
        case MemberKind::Property:
            return "property";
        case MemberKind::PropertyRead:
            return "property-read";
        case MemberKind::PropertyWrite:
            return "property-write";
        case MemberKind::Method:
            return "method";
    }
    return "";
}

template <class T>
py::list referencesTo(const std::vector<T>& infos) {
    py::list list;
    for (const auto& info : infos) list.append(py::cast(&info, py::return_value_policy::reference));
    return list;
}

Value createObject(const std::string& name) {
    const auto prefix = name.substr(0, name.find('.'));
    if (prefix == name || prefix == TypeLibrary::kName) return TypeLibrary::Get().CreateObject(name);
    return platform().classes->CreateObject(name);
}

void addDescription(py::module_& module) {
    py::class_<ParameterInfo>(module, "Parameter")
        .def_readonly("name", &ParameterInfo::name)
        .def_readonly("type", &ParameterInfo::type)
        .def_readonly("byref", &ParameterInfo::byRef)
        .def_readonly("optional", &ParameterInfo::optional)
        .def_property_readonly("default",
                               [](const ParameterInfo& p) { return toPython(p.defaultValue, p.type); });
    py::class_<MemberInfo>(module, "Member")
        .def_readonly("name", &MemberInfo::name)
        .def_property_readonly("kind", [](const MemberInfo& m) { return kindName(m.kind); })
        .def_readonly("type", &MemberInfo::type)
        .def_readonly("help", &MemberInfo::help)
        .def_readonly("listed", &MemberInfo::listed)
        .def_property_readonly("params", [](const MemberInfo& m) { return referencesTo(m.params); })
        .def("invoke", invoke)
        .def("write", write);
    py::class_<EventInfo>(module, "Event")
        .def_readonly("name", &EventInfo::name)
        .def_readonly("id", &EventInfo::id)
        .def_property_readonly("params", [](const EventInfo& e) { return referencesTo(e.params); })
        .def("connect", [](const EventInfo& event, py::handle object, const py::object& handler) {
            return guarded([&] { return py::cpp_function(connectHandler(unwrap(object), event, handler)); });
        });
    py::class_<ClassInfo>(module, "Class")
        .def_readonly("name", &ClassInfo::name)
        .def_readonly("help", &ClassInfo::help)
        .def_readonly("default", &ClassInfo::defaultMember)
        .def_readonly("creatable", &ClassInfo::creatable)
        .def_readonly("published", &ClassInfo::published)
        .def_property_readonly("enumerable", [](const ClassInfo& c) { return c.items != nullptr; })
        .def_property_readonly("members", [](const ClassInfo& c) { return referencesTo(c.members); })
        .def_property_readonly("events", [](const ClassInfo& c) { return referencesTo(c.events); })
        .def("bind", [](const ClassInfo& c, const py::type& type) { bindClass(c, type); })
        .def("items", [](const ClassInfo& c, py::handle object) {
            return guarded([&] { return Walk{c.items(*unwrap(object))}; });
        });
    py::class_<Walk>(module, "Walk")
        .def("__iter__", [](py::object self) { return self; })
        .def("__length_hint__", [](const Walk& walk) { return walk.items.size() - walk.next; })
        .def("__next__", [](Walk& walk) {
            if (walk.next == walk.items.size()) throw py::stop_iteration();
            return toPython(walk.items[walk.next++]);
        });
}

py::list enumerations() {
    py::list list;
    for (const auto& info : TypeLibrary::Get().Enumerations()) {
        py::list values;
        for (const auto& [name, value] : info.values) values.append(py::make_tuple(name, value));
        list.append(py::make_tuple(info.name, info.published, values));
    }
    return list;
}

}  // namespace

}  // namespace quillbox::python

PYBIND11_MODULE(_quillbox, module) {
    using namespace quillbox;
    using namespace quillbox::python;
    addObjectType(module);
    addDescription(module);
    addPorts(module);
    module.attr("library") = py::str(TypeLibrary::kName.data(), TypeLibrary::kName.size());
    module.def("classes", [] { return referencesTo(TypeLibrary::Get().Classes()); });
    module.def("enumerations", enumerations);
    module.def("bind_enumeration", bindEnumeration);
    module.def("use_types",
               [](py::type error, py::type byRef, py::type boolean, py::type result, py::type foreign) {
                   packageTypes() = {error.release(), byRef.release(), boolean.release(), result.release(),
                                     foreign.release()};
               });
    module.def("create", [](const py::object& name) {
        return guarded([&] { return toPython(createObject(toText(toValue(name)))); });
    });
    module.def("alive", &Object::Alive);
    module.def("late_has_method", hasLateMethod);
    module.def("late_get", getLate);
    module.def("late_put", putLate);
    module.def("late_call", callLate);
}
