#include "Interrupt.h"

namespace quillbox::cli {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM};
volatile sig_atomic_t came = 0;

void note(int signal) { came = signal; }

}  // namespace

Interrupt::Interrupt() {
    came = 0;
    struct sigaction action {};
    action.sa_handler = note;
    // The next one has its usual effect again.
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (int i = 0; i < 2; ++i) sigaction(kSignals[i], &action, &mBefore[i]);
}

Interrupt::~Interrupt() {
    for (int i = 0; i < 2; ++i) sigaction(kSignals[i], &mBefore[i], nullptr);
}

int Interrupt::Signal() { return came; }

}  // namespace quillbox::cli
