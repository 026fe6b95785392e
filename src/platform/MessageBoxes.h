#pragma once

#include <string>

namespace quillbox {

enum class MessageButtons { bsOK = 0, bsYesNoCancel = 3, bsYesNo = 4 };
enum class MessageIcon { biNone = 0, biQuestion = 32, biExclamation = 48, biInformation = 64 };
enum class MessageAnswer { mbOK = 1, mbCancel = 2, mbYes = 6, mbNo = 7 };

// Shows a text with buttons, waits, and gives the button that was pressed.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    virtual MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                               MessageIcon icon) = 0;
};

}  // namespace quillbox
