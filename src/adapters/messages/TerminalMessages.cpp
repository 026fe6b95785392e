#include "adapters/messages/TerminalMessages.h"

#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <string_view>

namespace quillbox {

namespace {

struct Choice {
    MessageButtons buttons;
    const char* prompt;
    std::string_view keys;  // in the order of the answers
    MessageAnswer answers[3];
    MessageAnswer safe;
};

constexpr Choice kChoices[] = {
    {MessageButtons::bsOK, "[O]K", "o", {MessageAnswer::mbOK}, MessageAnswer::mbOK},
    {MessageButtons::bsYesNo, "[Y]es [N]o", "yn", {MessageAnswer::mbYes, MessageAnswer::mbNo}, MessageAnswer::mbNo},
    {MessageButtons::bsYesNoCancel,
     "[Y]es [N]o [C]ancel",
     "ync",
     {MessageAnswer::mbYes, MessageAnswer::mbNo, MessageAnswer::mbCancel},
     MessageAnswer::mbCancel},
};

const Choice& choiceOf(MessageButtons buttons) {
    for (const auto& choice : kChoices) {
        if (choice.buttons == buttons) return choice;
    }
    return kChoices[0];
}

class TerminalMessages : public MessageBoxes {
  public:
    MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                       MessageIcon) override {
        const auto& choice = choiceOf(buttons);
        std::fprintf(stderr, "%s%s%s\n", title.c_str(), title.empty() ? "" : ": ", text.c_str());
        if (!isatty(STDIN_FILENO) || !isatty(STDERR_FILENO)) return choice.safe;
        for (;;) {
            std::fprintf(stderr, "%s ", choice.prompt);
            std::fflush(stderr);
            char line[256];
            if (!std::fgets(line, sizeof line, stdin)) return choice.safe;
            const auto key = choice.keys.find(static_cast<char>(std::tolower(static_cast<unsigned char>(line[0]))));
            if (key != std::string_view::npos) return choice.answers[key];
            if (line[0] == '\n' && choice.keys == "o") return MessageAnswer::mbOK;
        }
    }
};

}  // namespace

std::shared_ptr<MessageBoxes> makeTerminalMessages() { return std::make_shared<TerminalMessages>(); }

}  // namespace quillbox
