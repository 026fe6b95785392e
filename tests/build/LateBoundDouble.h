#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/AutomationError.h"
#include "frame/typelib/LateBound.h"

namespace quillbox {

// An object of another library: its members are what the test puts in, and calls are recorded.
class LateBoundDouble : public LateBound {
  public:
    explicit LateBoundDouble(std::string className) : mClassName(std::move(className)) {}
    std::string_view ClassName() const override { return mClassName; }

    std::map<std::string, Value> values;
    std::map<std::string, std::function<Value(Arguments&)>> methods;
    std::vector<std::string> calls;

    bool HasMethod(const std::string& name) override { return methods.contains(name); }
    Value Get(const std::string& name, Arguments&) override { return known(name); }
    void Put(const std::string& name, Arguments&, const Value& value) override { known(name) = value; }
    Value Call(const std::string& name, Arguments& arguments) override {
        calls.push_back(name);
        const auto found = methods.find(name);
        if (found == methods.end()) throw AutomationError("There is no method '" + name + "'");
        return found->second(arguments);
    }

  private:
    Value& known(const std::string& name) {
        const auto found = values.find(name);
        if (found == values.end()) throw AutomationError("There is no member '" + name + "'");
        return found->second;
    }

    std::string mClassName;
};

}  // namespace quillbox
