#pragma once

#include <string>

#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// An object that no description of this library covers: one of another library, or one of a script that was
// handed to the library. Its members are found by name when they are used; each fails for a name that is not
// there.
class LateBound : public Object {
  public:
    LateBound* AsLateBound() final { return this; }
    virtual bool HasMethod(const std::string& name) = 0;
    // By-reference arguments come back in place, where the object says which they are.
    virtual Value Get(const std::string& name, Arguments& arguments) = 0;
    virtual void Put(const std::string& name, Arguments& arguments, const Value& value) = 0;
    virtual Value Call(const std::string& name, Arguments& arguments) = 0;
};

}  // namespace quillbox
