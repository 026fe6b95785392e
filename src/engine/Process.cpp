#include "engine/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "base/Text.h"
#include "engine/Disk.h"

extern char** environ;

namespace quillbox {

namespace {

constexpr int kAskEvery = 100;  // milliseconds
constexpr auto kGrace = std::chrono::seconds(2);
constexpr std::size_t kLongestOutput = std::size_t{64} << 20;

class Pipe {
  public:
    Pipe() { mOpen = ::pipe2(mEnds.data(), O_CLOEXEC) == 0; }
    ~Pipe() {
        CloseWriting();
        if (mOpen) ::close(mEnds[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    bool IsOpen() const { return mOpen; }
    int Reading() const { return mEnds[0]; }
    int Writing() const { return mEnds[1]; }
    void CloseWriting() {
        if (mOpen && !mWritingClosed) ::close(mEnds[1]);
        mWritingClosed = true;
    }

  private:
    std::array<int, 2> mEnds{-1, -1};
    bool mOpen = false, mWritingClosed = false;
};

// What a program starts with: its folder, its channels, a process group of its own and no signal held back.
class SpawnSetUp {
  public:
    SpawnSetUp(const std::string& folder, const Pipe& output) {
        posix_spawn_file_actions_init(&mActions);
        posix_spawn_file_actions_addchdir_np(&mActions, folder.c_str());
        posix_spawn_file_actions_addopen(&mActions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&mActions, output.Writing(), 1);
        posix_spawn_file_actions_adddup2(&mActions, output.Writing(), 2);
        posix_spawnattr_init(&mAttributes);
        sigset_t none, usual;
        sigemptyset(&none);
        sigemptyset(&usual);
        sigaddset(&usual, SIGPIPE);
        posix_spawnattr_setsigmask(&mAttributes, &none);
        posix_spawnattr_setsigdefault(&mAttributes, &usual);
        posix_spawnattr_setpgroup(&mAttributes, 0);
        posix_spawnattr_setflags(&mAttributes,
                                 POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSetUp() {
        posix_spawn_file_actions_destroy(&mActions);
        posix_spawnattr_destroy(&mAttributes);
    }
    SpawnSetUp(const SpawnSetUp&) = delete;
    SpawnSetUp& operator=(const SpawnSetUp&) = delete;

    // The error number, or 0.
    int Start(const std::vector<std::string>& command, pid_t& process) const {
        std::vector<char*> arguments;
        for (const auto& one : command) arguments.push_back(const_cast<char*>(one.c_str()));
        arguments.push_back(nullptr);
        return posix_spawnp(&process, arguments[0], &mActions, &mAttributes, arguments.data(), environ);
    }

  private:
    posix_spawn_file_actions_t mActions;
    posix_spawnattr_t mAttributes;
};

// A started program; one that is still at work when this goes is ended.
class Running {
  public:
    explicit Running(pid_t process) : mProcess(process) {}
    ~Running() {
        if (!mEnded) Stop();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    bool HasEnded() {
        if (!mEnded && ::waitpid(mProcess, &mStatus, WNOHANG) == mProcess) mEnded = true;
        return mEnded;
    }
    void Stop() {
        ::kill(-mProcess, SIGTERM);
        const auto end = std::chrono::steady_clock::now() + kGrace;
        while (!HasEnded() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ::kill(-mProcess, SIGKILL);
        while (!mEnded && ::waitpid(mProcess, &mStatus, 0) < 0 && errno == EINTR) continue;
        mEnded = true;
    }
    int Status() const { return mStatus; }

  private:
    pid_t mProcess;
    int mStatus = 0;
    bool mEnded = false;
};

// Takes what is there, for at most the time. False when nothing more will come.
bool take(int from, int milliseconds, std::string& output) {
    pollfd waiting{from, POLLIN, 0};
    if (::poll(&waiting, 1, milliseconds) <= 0) return true;
    std::array<char, 16384> chunk;
    const auto got = ::read(from, chunk.data(), chunk.size());
    if (got < 0) return errno == EINTR;
    if (got > 0 && output.size() < kLongestOutput) output.append(chunk.data(), static_cast<std::size_t>(got));
    return got > 0;
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& command, const std::string& folder,
                         const std::function<bool()>& goOn) {
    ProcessResult result;
    Pipe pipe;
    pid_t process = 0;
    const int error = pipe.IsOpen() ? SpawnSetUp(folder, pipe).Start(command, process) : errno;
    if (error != 0) {
        result.failure = std::strerror(error);
        return result;
    }
    pipe.CloseWriting();
    Running running(process);
    bool open = true;
    while (!running.HasEnded()) {
        if (open) {
            open = take(pipe.Reading(), kAskEvery, result.output);
        } else {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        if (goOn()) continue;
        running.Stop();
        result.stopped = true;
    }
    // Something that it started may hold the channel open: what is there by now is all that counts.
    for (std::size_t before = std::string::npos; open && before != result.output.size();) {
        before = result.output.size();
        open = take(pipe.Reading(), 0, result.output);
    }
    const int status = running.Status();
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    return result;
}

std::string findProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    for (const auto& folder : split(path ? path : "", ":")) {
        auto candidate = disk::asFolder(folder.empty() ? "." : folder) + name;
        if (disk::isFile(candidate) && ::access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    return {};
}

}  // namespace quillbox
