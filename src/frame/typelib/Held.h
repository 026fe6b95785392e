#pragma once

#include "base/Object.h"

namespace quillbox {

// A handle that a caller outside has on an object, on whichever surface. While there is one, the library is
// in use.
class Held {
  public:
    explicit Held(Ref<Object> object);
    ~Held();
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    const Ref<Object>& Get() const { return mObject; }
    static long Count();

  private:
    Ref<Object> mObject;
};

}  // namespace quillbox
