#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

// Creates objects of other libraries by the class name under which they were registered on this machine.
class ClassRegistry {
  public:
    virtual ~ClassRegistry() = default;
    // Fails where no such class is registered or its library does not load.
    virtual Ref<Object> CreateObject(const std::string& className) = 0;
};

}  // namespace quillbox
