#include "adapters/messages/TerminalMessages.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace quillbox {
namespace {

using testing::HasSubstr;
using testing::Not;

// Stands in for standard input and standard error while it lives.
class Redirected {
  public:
    Redirected(int input, int error) : mInput(dup(STDIN_FILENO)), mError(dup(STDERR_FILENO)) {
        std::fflush(stderr);
        dup2(input, STDIN_FILENO);
        dup2(error, STDERR_FILENO);
    }
    ~Redirected() {
        std::fflush(stderr);
        dup2(mInput, STDIN_FILENO);
        dup2(mError, STDERR_FILENO);
        close(mInput);
        close(mError);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;

  private:
    int mInput, mError;
};

std::string readAvailable(int file) {
    std::string text;
    std::array<char, 4096> buffer;
    pollfd wait{file, POLLIN, 0};
    while (poll(&wait, 1, 100) > 0) {
        const auto count = read(file, buffer.data(), buffer.size());
        if (count <= 0) break;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

struct Outcome {
    MessageAnswer answer;
    std::string shown;
};

class AtTerminal : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(openpty(&mUser, &mTerminal, nullptr, nullptr, nullptr), 0); }
    void TearDown() override {
        close(mUser);
        close(mTerminal);
    }
    Outcome Ask(const std::string& keys, MessageButtons buttons, const std::string& text = "Text?") {
        termios before{};
        tcgetattr(mTerminal, &before);
        std::thread user([&] {
            usleep(20000);
            EXPECT_EQ(write(mUser, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
        });
        Outcome outcome;
        {
            const Redirected redirected(mTerminal, mTerminal);
            outcome.answer = makeTerminalMessages()->Show(text, "Title", buttons, MessageIcon::biQuestion);
        }
        user.join();
        termios after{};
        tcgetattr(mTerminal, &after);
        EXPECT_EQ(before.c_lflag, after.c_lflag);
        outcome.shown = readAvailable(mUser);
        tcflush(mTerminal, TCIFLUSH);
        return outcome;
    }

    int mUser = -1, mTerminal = -1;
};

TEST_F(AtTerminal, TextAndButtonsAreShownAndAKeyIsRead) {
    const auto outcome = Ask("n", MessageButtons::bsYesNoCancel);
    EXPECT_EQ(outcome.answer, MessageAnswer::mbNo);
    EXPECT_THAT(outcome.shown, HasSubstr("Title: Text?"));
    EXPECT_THAT(outcome.shown, HasSubstr("[Y]es [N]o [C]ancel"));
}

TEST_F(AtTerminal, EveryButtonHasItsKey) {
    EXPECT_EQ(Ask("y", MessageButtons::bsYesNoCancel).answer, MessageAnswer::mbYes);
    EXPECT_EQ(Ask("C", MessageButtons::bsYesNoCancel).answer, MessageAnswer::mbCancel);
    EXPECT_EQ(Ask("Y", MessageButtons::bsYesNo).answer, MessageAnswer::mbYes);
    EXPECT_EQ(Ask("n", MessageButtons::bsYesNo).answer, MessageAnswer::mbNo);
    EXPECT_EQ(Ask("o", MessageButtons::bsOK).answer, MessageAnswer::mbOK);
    EXPECT_EQ(Ask("\n", MessageButtons::bsOK).answer, MessageAnswer::mbOK);
}

TEST_F(AtTerminal, OtherKeysArePassedOver) {
    EXPECT_EQ(Ask("c\nx\x1Bq\xFFy", MessageButtons::bsYesNo).answer, MessageAnswer::mbYes);
}

TEST_F(AtTerminal, TheEndOfInputIsTheSafeAnswer) {
    EXPECT_EQ(Ask("\x04", MessageButtons::bsYesNoCancel).answer, MessageAnswer::mbCancel);
    EXPECT_EQ(Ask("\x04", MessageButtons::bsYesNo).answer, MessageAnswer::mbNo);
}

TEST_F(AtTerminal, TextCannotCommandTheTerminal) {
    const auto outcome = Ask("o", MessageButtons::bsOK, "a\x1B[2J\x07\u009B5m\u00A0\u00E4");
    EXPECT_THAT(outcome.shown, Not(HasSubstr("\x1B")));
    EXPECT_THAT(outcome.shown, Not(HasSubstr("\u009B")));
    EXPECT_THAT(outcome.shown, HasSubstr("a [2J  5m\u00A0\u00E4"));
}

TEST(WithoutTerminal, TextGoesToStandardErrorAndTheSafeAnswerIsGiven) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(pipe2(pipe.data(), O_CLOEXEC), 0);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    {
        const Redirected redirected(nothing, pipe[1]);
        const auto messages = makeTerminalMessages();
        EXPECT_EQ(messages->Show("Text?", "", MessageButtons::bsYesNoCancel, MessageIcon::biQuestion),
                  MessageAnswer::mbCancel);
        EXPECT_EQ(messages->Show("b", "a", MessageButtons::bsYesNo, MessageIcon::biNone),
                  MessageAnswer::mbNo);
        EXPECT_EQ(messages->Show("c", "", MessageButtons::bsOK, MessageIcon::biNone), MessageAnswer::mbOK);
    }
    EXPECT_EQ(readAvailable(pipe[0]), "Text?\na: b\nc\n");
    for (const int file : {pipe[0], pipe[1], nothing}) close(file);
}

}  // namespace
}  // namespace quillbox
