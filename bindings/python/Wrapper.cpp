#include "Wrapper.h"

#include <structmember.h>

#include <new>
#include <unordered_map>

#include "Errors.h"
#include "Events.h"
#include "frame/typelib/Held.h"
#include "frame/typelib/LateBound.h"

namespace quillbox::python {

namespace {

struct Wrapper {
    PyObject ob_base;
    PyObject* weakReferences;
    Held held;
};

// Lives as long as the process: wrappers may go after everything else.
struct Registry {
    std::unordered_map<const Object*, PyObject*> wrappers;
    std::unordered_map<const ClassInfo*, PyTypeObject*> types;
    std::unordered_map<const PyTypeObject*, const ClassInfo*> classes;
    PyTypeObject* base = nullptr;
};
Registry& registry() {
    static auto* one = new Registry;
    return *one;
}

Wrapper* wrapperOf(PyObject* self) { return reinterpret_cast<Wrapper*>(self); }
const Ref<Object>& objectOf(PyObject* self) { return wrapperOf(self)->held.Get(); }

PyObject* newWrapper(const Ref<Object>& object, PyTypeObject* type) {
    PyObject* self = type->tp_alloc(type, 0);
    if (!self) throw py::error_already_set();
    new (&wrapperOf(self)->held) Held(object);
    registry().wrappers.emplace(object.get(), self);
    return self;
}

PyTypeObject* typeOf(const Ref<Object>& object) {
    const auto* info = TypeLibrary::Get().FindClass(object->ClassName());
    const auto found = registry().types.find(info);
    if (found != registry().types.end()) return found->second;
    if (packageTypes().foreign && object->AsLateBound()) {
        return reinterpret_cast<PyTypeObject*>(packageTypes().foreign.ptr());
    }
    return registry().base;
}

// The library class that a Python class, or one derived from it, stands for.
const ClassInfo* classOf(PyTypeObject* type) {
    for (; type; type = type->tp_base) {
        const auto found = registry().classes.find(type);
        if (found != registry().classes.end()) return found->second;
    }
    return nullptr;
}

// Sets the Python error of whatever a slot of the type raised.
template <class Step>
PyObject* slot(Step&& step) {
    try {
        return guarded(step);
    } catch (py::error_already_set& error) {
        error.restore();
    } catch (const py::builtin_exception& error) {
        error.set_error();
    }
    return nullptr;
}

PyObject* create(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    return slot([&]() -> PyObject* {
        const auto* info = classOf(type);
        if (!info || !info->creatable)
            throw py::type_error(std::string("cannot create '") + type->tp_name + "' objects");
        const bool derived = !registry().classes.contains(type);
        if (!derived && (PyTuple_GET_SIZE(arguments) > 0 || (keywords && PyDict_GET_SIZE(keywords) > 0))) {
            throw py::type_error(info->name + "() takes no arguments");
        }
        return newWrapper(info->create(), type);
    });
}

void destroy(PyObject* self) {
    PyObject_GC_UnTrack(self);
    auto* wrapper = wrapperOf(self);
    if (wrapper->weakReferences) PyObject_ClearWeakRefs(self);
    auto& wrappers = registry().wrappers;
    const auto found = wrappers.find(objectOf(self).get());
    if (found != wrappers.end() && found->second == self) wrappers.erase(found);
    {
        const py::error_scope pending;
        wrapper->held.~Held();
    }
    PyTypeObject* type = Py_TYPE(self);
    type->tp_free(self);
    Py_DECREF(type);
}

// Where the wrapper alone holds the object, what is connected to its events is held by the wrapper, and the
// collector may free a handler that refers back to it.
bool isSoleHolder(PyObject* self) { return objectOf(self).use_count() == 1; }

int traverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(Py_TYPE(self));
    return isSoleHolder(self) ? visitHandlers(objectOf(self).get(), visit, arg) : 0;
}

int clear(PyObject* self) {
    if (isSoleHolder(self)) disconnectAll(objectOf(self).get());
    return 0;
}

Py_hash_t hash(PyObject* self) {
    return static_cast<Py_hash_t>(std::hash<const Object*>()(objectOf(self).get()) >> 4);
}

PyObject* compare(PyObject* self, PyObject* other, int operation) {
    if (!isWrapper(other) || (operation != Py_EQ && operation != Py_NE)) Py_RETURN_NOTIMPLEMENTED;
    const bool same = objectOf(self) == objectOf(other);
    return PyBool_FromLong(same == (operation == Py_EQ));
}

PyObject* represent(PyObject* self) {
    const std::string name(objectOf(self)->ClassName());
    return PyUnicode_FromFormat("<Quillbox.%s at %p>", name.c_str(), objectOf(self).get());
}

}  // namespace

void addObjectType(py::module_& module) {
    static PyMemberDef members[] = {
        {"__weaklistoffset__", T_PYSSIZET, offsetof(Wrapper, weakReferences), READONLY, nullptr},
        {nullptr, 0, 0, 0, nullptr}};
    static char doc[] = "An object of the library.";
    PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(create)},
                           {Py_tp_dealloc, reinterpret_cast<void*>(destroy)},
                           {Py_tp_traverse, reinterpret_cast<void*>(traverse)},
                           {Py_tp_clear, reinterpret_cast<void*>(clear)},
                           {Py_tp_hash, reinterpret_cast<void*>(hash)},
                           {Py_tp_richcompare, reinterpret_cast<void*>(compare)},
                           {Py_tp_repr, reinterpret_cast<void*>(represent)},
                           {Py_tp_members, members},
                           {Py_tp_doc, doc},
                           {0, nullptr}};
    PyType_Spec spec = {"quillbox._quillbox.Object", sizeof(Wrapper), 0,
                        Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE | Py_TPFLAGS_HAVE_GC, slots};
    PyObject* type = PyType_FromSpec(&spec);
    if (!type) throw py::error_already_set();
    registry().base = reinterpret_cast<PyTypeObject*>(type);
    module.add_object("Object", type);
}

void bindClass(const ClassInfo& info, const py::type& type) {
    auto* bound = reinterpret_cast<PyTypeObject*>(py::object(type).release().ptr());
    registry().types[&info] = bound;
    registry().classes[bound] = &info;
}

py::object wrap(const Ref<Object>& object) {
    if (!object) return py::none();
    const auto found = registry().wrappers.find(object.get());
    if (found != registry().wrappers.end()) return py::reinterpret_borrow<py::object>(found->second);
    return py::reinterpret_steal<py::object>(newWrapper(object, typeOf(object)));
}

bool isWrapper(py::handle object) { return PyObject_TypeCheck(object.ptr(), registry().base); }

const Ref<Object>& unwrap(py::handle object) {
    if (!isWrapper(object)) throw py::type_error("an object of the library is needed");
    return objectOf(object.ptr());
}

}  // namespace quillbox::python
