#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>

#include "Commands.h"
#include "Interrupt.h"
#include "OpenProject.h"
#include "Terminal.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "build/BuildResult.h"
#include "content/OtherFiles.h"
#include "engine/PageLayout.h"
#include "frame/Platform.h"

namespace quillbox::cli {

namespace {

struct Options {
    std::string project, templateName, output, site, templates;
    bool noCompile = false, keep = false, related = false;
};

void chooseTemplate(QbProject& project, const std::string& name) {
    if (name.empty()) return;
    std::string known;
    for (const auto& one : platform().engine->Templates().PageTemplates()->Items()) {
        if (one->Name() == name) {
            project.SetTemplateName(name);
            return;
        }
        known += (known.empty() ? "" : ", ") + one->Name();
    }
    throw AutomationError("There is no template '" + name + "'; installed are: " + known);
}

// Answers Yes to the question about a folder that the user named, and passes all else on.
class NamedFolder : public MessageBoxes {
  public:
    explicit NamedFolder(std::shared_ptr<MessageBoxes> others) : mOthers(std::move(others)) {}
    MessageAnswer Show(const std::string& text, const std::string& title, MessageButtons buttons,
                       MessageIcon icon) override {
        if (title == "Codemark path does not exist") return MessageAnswer::mbYes;
        return mOthers->Show(text, title, buttons, icon);
    }

  private:
    std::shared_ptr<MessageBoxes> mOthers;
};

// Follows a build: shows how far it is, and stops it when the user asks for that.
class Watch {
  public:
    explicit Watch(Document& document) : mDocument(document) {
        document.Progress.connect([this](const std::string& caption, int done, int total) {
            mDone = done;
            mTotal = total;
            showProgress(caption, done, total);
            if (Interrupt::Signal() != 0) mDocument.Cancel();
        });
    }
    // The exit status of a build that was cancelled.
    int Stopped() const {
        const int signal = Interrupt::Signal();
        if (signal == 0) return kFoundProblems;
        clearProgress();
        std::fprintf(stderr, "quillbox: stopped, with %d of %d pages written\n", mDone, mTotal);
        constexpr int kEndedBySignal = 128;
        return kEndedBySignal + signal;
    }

  private:
    Document& mDocument;
    int mDone = 0, mTotal = 0;
    Interrupt mInterrupt;
};

void copyOtherFiles(const QbProject& project, const std::string& folder) {
    for (const auto& file : project.OtherFiles->Items()) {
        const auto relative = file->RelativeFileName();
        if (relative == file->LocalSpec()) {
            throw AutomationError("The file '" + relative + "' is not below the project's folder");
        }
        const auto target = newFile(folder + relative);
        target->CreateDirectory();
        newFile(file->LocalSpec())->CopyTo(target->FullPath());
    }
}

bool tells(const std::string& line, const char* word) { return line.find(word) != std::string::npos; }

// What the build itself has to tell; compilers have notes too, of no use to a writer.
bool isNote(const std::string& line) {
    return line.starts_with("Left out: ") ||
           (line.starts_with("Note: ") && tells(line, " is not in code page "));
}

// Prints the lines of the log that tell a problem, as "file: message", and gives their number. Notes are told
// too, and where the compiler failed, all that it said.
int printProblems(const QbProject& project, const std::string& log) {
    const bool failed = tells(log, "Error:");
    std::istringstream lines(log);
    int problems = 0;
    for (std::string line; std::getline(lines, line);) {
        if (tells(line, "Warning:") || tells(line, "Error:")) {
            std::fprintf(stderr, "%s: %s\n", project.Filename->FileName().c_str(), line.c_str());
            ++problems;
        } else if (failed || isNote(line)) {
            std::fprintf(stderr, "%s\n", line.c_str());
        }
    }
    return problems;
}

// Empty where there is a help file to be made. A build that does not compile keeps what it writes.
std::string whyNotCompiled(const QbProject& project) {
    const auto pageTemplate = project.Template();
    if (!pageTemplate) return {};
    const auto pages = pageTemplate->Pages()->Items();
    const bool hasInput = std::any_of(pages.begin(), pages.end(), [&](const Value& page) {
        const auto layout = std::dynamic_pointer_cast<PageLayout>(toObject(page));
        return layout && layout->compileType == project.CompileType();
    });
    if (!hasInput)
        return "Nothing is compiled: the template '" + pageTemplate->Name() +
               "' has no input for a compiler of this kind of help";
    // Its compiler runs elsewhere.
    return project.CompileType() == CompileHelp2 ? "Help 2.0 is not compiled here; the input is written" : "";
}

int build(const Options& options) {
    useTemplates(options.templates);
    const auto project = openProject(options.project);
    chooseTemplate(*project, options.templateName);
    if (!options.output.empty()) {
        project->SetOutputFileName(fullPath(options.output));
        platform().messages = std::make_shared<NamedFolder>(platform().messages);
    }
    auto document = platform().engine->NewDocument();
    if (!options.site.empty()) {
        document->OutputRoot = fullPath(options.site) + "/";
        std::filesystem::create_directories(document->OutputRoot);
    }
    Watch watch(*document);
    // One pass: the problems are told, and the user decides.
    project->BuildErrorsOrWarnings.connect(
        [](Ref<Document>&, Ref<BuildResult>&, bool& cancel) { cancel = true; });
    const auto whyNot = options.noCompile ? std::string() : whyNotCompiled(*project);
    const bool compile = !options.noCompile && whyNot.empty();
    const bool toSite = !options.site.empty();
    // A compiler wants to find them.
    if (toSite && compile) copyOtherFiles(*project, document->OutputRoot);
    const bool cleanUp = !options.keep && !toSite;
    const auto result = project->Build(document, "", options.related, compile, cleanUp);
    if (result->Cancelled) return watch.Stopped();
    if (toSite && !compile) copyOtherFiles(*project, document->OutputRoot);
    if (printProblems(*project, result->CompilerLog) > 0) return kFoundProblems;
    if (!whyNot.empty()) std::fprintf(stderr, "%s\n", whyNot.c_str());
    const auto made = compile ? document->OutputFileName : document->OutputPath;
    const auto output = toSite ? document->OutputRoot : made;
    if (!options.noCompile || toSite) std::printf("%s\n", output.c_str());
    return kDone;
}

}  // namespace

void addBuild(CLI::App& app, Run& run) {
    auto options = std::make_shared<Options>();
    auto* command = app.add_subcommand("build", "Builds the help file of a project");
    command->add_option("PROJECT", options->project, "The project file (.qbp)")->required();
    command->add_option("--template", options->templateName, "Page template in place of the project's own");
    command->add_option("--templates", options->templates, "A further folder to look for templates in");
    command->add_option("--output", options->output, "The help file to make, in place of the project's own");
    command->add_option("--site", options->site, "Folder for the pages, with the project's other files");
    command->add_flag("--no-compile", options->noCompile, "Make the pages and leave the compiler out");
    command->add_flag("--keep", options->keep, "Keep the pages after compiling");
    command->add_flag("--related", options->related, "Build the related project too");
    command->callback([options, &run] { run = [options] { return build(*options); }; });
}

}  // namespace quillbox::cli
