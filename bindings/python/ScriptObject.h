#pragma once

#include <pybind11/pybind11.h>

#include "frame/typelib/LateBound.h"

namespace quillbox::python {

namespace py = pybind11;

// Holds a Python object for C++ that may outlive the interpreter.
class Keeper {
  public:
    explicit Keeper(py::handle object) : mObject(py::reinterpret_borrow<py::object>(object)) {}
    ~Keeper();
    Keeper(const Keeper&) = delete;
    Keeper& operator=(const Keeper&) = delete;
    const py::object& Get() const { return mObject; }

  private:
    py::object mObject;
};

// A Python object inside the library: an item of a plain collection, a plug-in, whatever a script hands over.
// The library reaches its attributes and methods by name.
class ScriptObject : public LateBound {
  public:
    static constexpr std::string_view kClassName = "ScriptObject";
    std::string_view ClassName() const override { return kClassName; }

    // One carrier for one Python object, for as long as the library holds it.
    static Ref<ScriptObject> Carry(py::handle object);
    explicit ScriptObject(py::handle object) : mObject(object) {}
    ~ScriptObject() override;

    const py::object& Carried() const { return mObject.Get(); }

    bool HasMethod(const std::string& name) override;
    Value Get(const std::string& name, Arguments& arguments) override;
    void Put(const std::string& name, Arguments& arguments, const Value& value) override;
    Value Call(const std::string& name, Arguments& arguments) override;

  private:
    Keeper mObject;
};

}  // namespace quillbox::python
