#pragma once

#include <signal.h>

namespace quillbox::cli {

// While one of these is there, a first Ctrl-C (or a polite request to end) is only noted, so that the work
// can stop where nothing is half done. A second one ends the program at once.
class Interrupt {
  public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    // The signal that came, or 0.
    static int Signal();

  private:
    struct sigaction mBefore[2];
};

}  // namespace quillbox::cli
