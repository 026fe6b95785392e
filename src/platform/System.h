#pragma once

#include <string>

#include "base/Date.h"

namespace quillbox {

// What only the operating system knows.
class System {
  public:
    virtual ~System() = default;
    // Local time in whole seconds.
    virtual Date Now() = 0;
    // The name of the logged-in user.
    virtual std::string UserName() = 0;
    // A new GUID in registry form: 38 characters, braces and hyphens included, upper case; empty where the
    // system cannot make one.
    virtual std::string NewGuid() = 0;
};

}  // namespace quillbox
