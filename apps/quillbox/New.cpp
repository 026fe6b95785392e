#include <cstdio>
#include <memory>

#include "Commands.h"
#include "OpenProject.h"
#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Module.h"
#include "frame/Platform.h"

namespace quillbox::cli {

namespace {

constexpr const char* kPlainType = "EmptyProject";

// The file of a project type, by its file name or by its label; fails with those that are there.
std::string projectType(const std::string& name) {
    const auto folder = platform().files->NewFileSystemObject();
    folder->SetDirectory(ConfigPath() + "ProjectTypes");
    std::string known;
    for (const auto& file : folder->ListFiles("*.qbp")) {
        const auto document = platform().xml->NewDocument();
        document->LoadFile(file->FullPath());
        const auto label = document->RootElement()->Find("Name").value_or("");
        if (sameText(file->BaseName(), name) || sameText(label, name)) return file->FullPath();
        known += (known.empty() ? "" : ", ") + label;
    }
    throw AutomationError("There is no project type '" + name + "'; installed are: " + known);
}

int create(const std::string& path, const std::string& type) {
    const auto file = newFile(fullPath(path));
    if (file->Extension().empty()) file->SetExtension("qbp");
    if (file->Exists()) throw AutomationError("'" + file->FullPath() + "' exists already");
    const auto project = make<QbProject>();
    project->LoadFromFile(projectType(type));
    project->Filename->SetPath(file->FullPath());
    project->Filename->CreateDirectory();
    project->SetTitle(project->Filename->BaseName());
    project->SetOutputFileName(project->Filename->Directory() + project->Filename->BaseName() + ".chm");
    if (!project->SaveToDisk()) return kUnusable;
    project->CopySupportFiles();
    std::printf("%s\n", file->FullPath().c_str());
    return kDone;
}

}  // namespace

void addNew(CLI::App& app, Run& run) {
    struct Options {
        std::string file, type = kPlainType;
    };
    auto options = std::make_shared<Options>();
    auto* command = app.add_subcommand("new", "Makes a project from a project type");
    command->add_option("FILE", options->file, "The project file to make")->required();
    command->add_option("--type", options->type, "Name of the project type")->capture_default_str();
    command->callback([options, &run] { run = [options] { return create(options->file, options->type); }; });
}

}  // namespace quillbox::cli
