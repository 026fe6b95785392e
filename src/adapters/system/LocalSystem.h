#pragma once

#include <memory>

#include "platform/System.h"

namespace quillbox {

// The clock, the user and the random numbers of this machine.
std::shared_ptr<System> makeLocalSystem();

}  // namespace quillbox
