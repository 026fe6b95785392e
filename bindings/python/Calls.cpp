#include "Calls.h"

#include <algorithm>

#include "Errors.h"
#include "Values.h"
#include "Wrapper.h"
#include "frame/typelib/LateBound.h"

namespace quillbox::python {

namespace {

// For a text with what a script gave, which may be no text that can be written as UTF-8.
[[noreturn]] void raiseTypeError(const std::string& text) {
    PyErr_SetObject(PyExc_TypeError, fromUtf8(text).ptr());
    throw py::error_already_set();
}

// The arguments of one call, and where to give those by reference back to.
class Call {
  public:
    Call(const MemberInfo& member, const py::tuple& arguments, const py::dict& keywords) : mMember(member) {
        const auto& params = member.params;
        if (arguments.size() > params.size()) {
            throw py::type_error(member.name + "() takes " + std::to_string(params.size()) +
                                 " arguments but " + std::to_string(arguments.size()) + " were given");
        }
        values.resize(params.size());
        mReferences.resize(params.size());
        for (std::size_t i = 0; i < arguments.size(); ++i) take(i, arguments[i]);
        for (const auto& [name, value] : keywords) take(placeOf(toUtf8(name), arguments.size()), value);
        for (std::size_t i = 0; i < params.size(); ++i) {
            if (!values[i].IsMissing() || params[i].optional) continue;
            throw py::type_error(member.name + "() is missing its argument '" + params[i].name + "'");
        }
    }

    void GiveBack() const {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (mReferences[i]) mReferences[i].attr("value") = toPython(values[i], mMember.params[i].type);
        }
    }

    Arguments values;

  private:
    void take(std::size_t place, const py::handle& argument) {
        if (!py::isinstance(argument, packageTypes().byRef)) {
            values[place] = toValue(argument);
            return;
        }
        values[place] = toValue(argument.attr("value"));
        if (mMember.params[place].byRef) mReferences[place] = py::reinterpret_borrow<py::object>(argument);
    }

    std::size_t placeOf(const std::string& name, std::size_t taken) const {
        const auto& params = mMember.params;
        const auto found =
            std::find_if(params.begin(), params.end(), [&](const auto& p) { return p.name == name; });
        if (found == params.end()) raiseTypeError(mMember.name + "() has no argument '" + name + "'");
        const auto place = static_cast<std::size_t>(found - params.begin());
        if (place < taken)
            throw py::type_error(mMember.name + "() got two values for its argument '" + name + "'");
        return place;
    }

    const MemberInfo& mMember;
    std::vector<py::object> mReferences;
};

LateBound& lateBound(py::handle object) {
    const auto& handle = unwrap(object);
    if (auto* late = handle ? handle->AsLateBound() : nullptr) return *late;
    throw py::type_error("an object of another library is needed");
}

}  // namespace

py::object invoke(const MemberInfo& member, py::handle object, const py::tuple& arguments,
                  const py::dict& keywords) {
    return guarded([&] {
        const Ref<Object> target = unwrap(object);
        Call call(member, arguments, keywords);
        const auto result = readMember(*target, member, call.values);
        call.GiveBack();
        return toPython(result, member.type);
    });
}

void write(const MemberInfo& member, py::handle object, const py::tuple& arguments, const py::object& value) {
    guarded([&] {
        const Ref<Object> target = unwrap(object);
        Call call(member, arguments, {});
        writeMember(*target, member, call.values, toValue(value));
    });
}

bool hasLateMethod(py::handle object, const std::string& name) {
    return guarded([&] { return lateBound(object).HasMethod(name); });
}

py::object getLate(py::handle object, const std::string& name) {
    return guarded([&] {
        Arguments none;
        return toPython(lateBound(object).Get(name, none));
    });
}

void putLate(py::handle object, const std::string& name, const py::object& value) {
    guarded([&] {
        Arguments none;
        lateBound(object).Put(name, none, toValue(value));
    });
}

py::object callLate(py::handle object, const std::string& name, const py::tuple& arguments) {
    return guarded([&] {
        Arguments values;
        const auto isByRef = [](py::handle argument) {
            return py::isinstance(argument, packageTypes().byRef);
        };
        for (const auto argument : arguments)
            values.push_back(isByRef(argument) ? toValue(argument.attr("value")) : toValue(argument));
        const auto result = lateBound(object).Call(name, values);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (isByRef(arguments[i])) arguments[i].attr("value") = toPython(values[i]);
        }
        return toPython(result);
    });
}

}  // namespace quillbox::python
