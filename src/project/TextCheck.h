#pragma once

#include "platform/XML.h"

namespace quillbox {

// An element that keeps nothing: what is written to it is only looked at, and text that XML cannot hold
// fails.
Ref<XMLElement> makeTextCheck();

}  // namespace quillbox
