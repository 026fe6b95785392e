#include "adapters/messages/TerminalMessages.h"

#include <termios.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string_view>

namespace quillbox {

namespace {

constexpr int kEndOfInput = -1;
constexpr int kInterrupt = 3;  // Ctrl-C
constexpr int kEndKey = 4;     // Ctrl-D

struct Choice {
    MessageButtons buttons;
    const char* prompt;
    std::string_view keys;  // in the order of the answers
    MessageAnswer answers[3];
    MessageAnswer safe;
};

constexpr Choice kChoices[] = {
    {MessageButtons::bsOK, "[O]K", "o", {MessageAnswer::mbOK}, MessageAnswer::mbOK},
    {MessageButtons::bsYesNo,
     "[Y]es [N]o",
     "yn",
     {MessageAnswer::mbYes, MessageAnswer::mbNo},
     MessageAnswer::mbNo},
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

// Texts hold names from projects; no control character in them may command the terminal.
std::string printable(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        const bool isWide = c == 0xC2 && next >= 0x80 && next < 0xA0;
        if (isWide || (c < ' ' && c != '\n' && c != '\t') || c == 0x7F) text.replace(i, isWide ? 2 : 1, " ");
    }
    return text;
}

// Lets the terminal give each key at once, and puts it back.
class KeyInput {
  public:
    KeyInput() {
        mIsTerminal = tcgetattr(STDIN_FILENO, &mBefore) == 0;
        auto raw = mBefore;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
        raw.c_cc[VMIN] = 1;
        raw.c_cc[VTIME] = 0;
        if (mIsTerminal) tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
    }
    ~KeyInput() {
        if (mIsTerminal) tcsetattr(STDIN_FILENO, TCSADRAIN, &mBefore);
    }
    KeyInput(const KeyInput&) = delete;
    KeyInput& operator=(const KeyInput&) = delete;

    static int Next() {
        unsigned char key = 0;
        ssize_t count = 0;
        do {
            count = read(STDIN_FILENO, &key, 1);
        } while (count < 0 && errno == EINTR);
        return count == 1 ? key : kEndOfInput;
    }

  private:
    termios mBefore{};
    bool mIsTerminal = false;
};

// The first key that means something, in small letters.
int pressedKey(std::string_view keys) {
    const KeyInput input;
    for (;;) {
        const int key = KeyInput::Next();
        if (key == kEndOfInput || key == kEndKey || key == kInterrupt) return key;
        const int letter = std::tolower(key);
        if (keys.find(static_cast<char>(letter)) != std::string_view::npos) return letter;
        const bool isEnter = key == '\r' || key == '\n';
        if (isEnter && keys.size() == 1) return keys.front();
    }
}

class TerminalMessages : public MessageBoxes {
  public:
    MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                       MessageIcon) override {
        const auto& choice = choiceOf(buttons);
        std::fflush(stdout);
        const auto shown = printable(title.empty() ? text : title + ": " + text);
        std::fprintf(stderr, "%s\n", shown.c_str());
        if (isatty(STDIN_FILENO) == 0 || isatty(STDERR_FILENO) == 0) return choice.safe;
        std::fprintf(stderr, "%s ", choice.prompt);
        std::fflush(stderr);
        const int key = pressedKey(choice.keys);
        std::fprintf(stderr, "%c\n", std::isalpha(key) ? std::toupper(key) : ' ');
        if (key == kInterrupt) std::raise(SIGINT);
        const auto answer = choice.keys.find(static_cast<char>(key));
        return answer == std::string_view::npos ? choice.safe : choice.answers[answer];
    }
};

}  // namespace

std::shared_ptr<MessageBoxes> makeTerminalMessages() { return std::make_shared<TerminalMessages>(); }

}  // namespace quillbox
