#include "engine/Compiler.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <vector>

#include "base/AutomationError.h"
#include "base/Encoding.h"
#include "base/Text.h"
#include "engine/Disk.h"
#include "engine/OneIdAPage.h"
#include "engine/OutputFolder.h"
#include "engine/Process.h"

namespace quillbox {

namespace {

namespace fs = std::filesystem;

std::string fileNameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string programName(const std::string& compiler) {
    auto name = lower(fileNameOf(disk::withSlashes(compiler)));
    if (name.ends_with(".exe")) name.resize(name.size() - 4);
    return name;
}

bool isChmcmd(const CompileJob& job) { return programName(job.compiler) == "chmcmd"; }

// The inputs list all files themselves, so the compiler need not read every page to find them.
std::vector<std::string> commandOf(const CompileJob& job, const std::string& inputFile) {
    std::vector<std::string> command{job.compiler};
    if (isChmcmd(job)) command.push_back("--no-html-scan");
    command.push_back(inputFile);
    return command;
}

// The input as the compiler can take it: the file itself, or a copy that goes when the compiler is done.
class CompilerInput {
  public:
    explicit CompilerInput(const CompileJob& job) : mName(job.inputFile) {
        const auto file = fs::path(job.folder) / job.inputFile;
        if (!isChmcmd(job) || !disk::isFile(file)) return;
        auto reduced = withOneIdAPage(disk::read(file));
        if (reduced.notes.empty()) return;
        mNotes = std::move(reduced.notes);
        mName = file.parent_path() / ("chmcmd " + file.filename().string());
        disk::writeIfChanged(mName, reduced.project);
        mCopied = true;
    }
    ~CompilerInput() {
        std::error_code ignored;
        if (mCopied) fs::remove(mName, ignored);
    }
    CompilerInput(const CompilerInput&) = delete;
    CompilerInput& operator=(const CompilerInput&) = delete;

    const std::string& Name() const { return mName; }
    const std::string& Notes() const { return mNotes; }

  private:
    std::string mName, mNotes;
    bool mCopied = false;
};

void moveFile(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (!error) return;
    // On another disk: beside the place first, so that nobody meets half a file.
    const auto beside = to + ".new";
    fs::copy_file(from, beside, fs::copy_options::overwrite_existing, error);
    if (!error) fs::rename(beside, to, error);
    std::error_code ignored;
    fs::remove(beside, ignored);
    if (error) throw AutomationError(to + ": cannot put the compiled file in its place: " + error.message());
    fs::remove(from, ignored);
}

// A file that is out of the way until it is clear whether it is still wanted.
class SetAside {
  public:
    explicit SetAside(const std::string& file) : mFile(file), mAside(file + ".before") {
        if (!disk::isFile(mFile)) return;
        moveFile(mFile, mAside);
        mMoved = true;
    }
    ~SetAside() {
        if (mMoved) ignoringFailures([&] { moveFile(mAside, mFile); });
    }
    SetAside(const SetAside&) = delete;
    SetAside& operator=(const SetAside&) = delete;

    void Drop() {
        std::error_code ignored;
        if (mMoved) fs::remove(mAside, ignored);
        mMoved = false;
    }

  private:
    std::string mFile, mAside;
    bool mMoved = false;
};

bool isMade(const std::string& file) {
    std::error_code error;
    return disk::isFile(file) && fs::file_size(file, error) > 0 && !error;
}

std::string howItEnded(const ProcessResult& result, const std::string& compiler) {
    const auto name = fileNameOf(compiler);
    if (!result.failure.empty()) return name + " could not be started: " + result.failure;
    if (result.stopped) return name + " was stopped";
    if (result.signal != 0) return name + " died: " + ::strsignal(result.signal);
    return name + " ended without a compiled file, with status " + std::to_string(result.exitCode);
}

std::string readable(std::string output) {
    try {
        return decodeText(output);
    } catch (const AutomationError&) {
        std::erase_if(output, [](unsigned char c) { return c >= 0x80; });
        return output;
    }
}

}  // namespace

std::string compiledFileName(const Document& document) {
    const auto name = fileNameOf(disk::withSlashes(document.OutputFileName));
    if (!name.empty()) return name;
    return document.Title + (leadingNumber(document.CompileType) == 2 ? ".HxS" : ".chm");
}

std::string findCompiler(const std::string& given, int compileType) {
    if (!given.empty()) return given;
    if (compileType != 1) throw AutomationError("No compiler was given for Help 2.0");
    for (const auto* name : {"hhc", "chmcmd"}) {
        if (auto found = findProgram(name); !found.empty()) return found;
    }
    throw AutomationError(
        "There is no compiler for HTML Help: none was given, and neither hhc nor chmcmd is on the path");
}

void checkTarget(const CompileJob& job) {
    checkedOutputName(job.compiledName);
    const auto folder = job.target.substr(0, job.target.rfind('/') + 1);
    if (disk::isFolder(job.target))
        throw AutomationError(job.target + ": a folder stands where the compiled file goes");
    if (folder.empty()) return;
    if (!disk::isFolder(folder))
        throw AutomationError(job.target + ": the folder of the compiled file is not there");
    if (::access(folder.c_str(), W_OK) != 0) {
        throw AutomationError(job.target + ": the folder of the compiled file cannot be written to");
    }
}

std::string compile(const CompileJob& job) {
    const auto made = job.folder + job.compiledName;
    const auto target = job.target.empty() ? made : job.target;
    std::error_code error;
    const bool inPlace = made == target || fs::equivalent(made, target, error);
    SetAside before(made);
    const CompilerInput input(job);
    const auto result = runProcess(commandOf(job, input.Name()), job.folder, job.goOn);
    auto log = input.Notes() + readable(result.output);
    if (isMade(made) && result.signal == 0 && !result.stopped) {
        if (inPlace) {
            before.Drop();
        } else {
            moveFile(made, target);
        }
        return log;
    }
    fs::remove(made, error);
    if (!log.empty() && !log.ends_with('\n')) log += "\n";
    return log + "Error: " + howItEnded(result, job.compiler) + "\n";
}

}  // namespace quillbox
