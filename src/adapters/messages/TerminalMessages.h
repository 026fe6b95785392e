#pragma once

#include <memory>

#include "platform/MessageBoxes.h"

namespace quillbox {

// Asks at the terminal. Without one the text goes to standard error, and the safe answer is given: Cancel
// where there is one, else No, else OK.
std::shared_ptr<MessageBoxes> makeTerminalMessages();

}  // namespace quillbox
