#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillbox {

struct ProcessResult {
    // Why it could not be started; empty where it was.
    std::string failure;
    int exitCode = 0;
    // The signal that ended it, or 0.
    int signal = 0;
    bool stopped = false;
    // What it wrote, on both channels, as it came.
    std::string output;
};

// Runs a program in a folder, with nothing to read, and waits. `goOn` is asked several times a second; False,
// or a failure, ends the program and what it started.
ProcessResult runProcess(const std::vector<std::string>& command, const std::string& folder,
                         const std::function<bool()>& goOn);

// The full name of a program on the path; empty where there is none.
std::string findProgram(const std::string& name);

}  // namespace quillbox
