#include <cstdio>
#include <memory>

#include "Commands.h"
#include "OpenProject.h"

namespace quillbox::cli {

namespace {

int convert(const std::string& path, ProjectTypeEnum type) {
    const auto project = openProject(path);
    if (project->ProjectType() == type) {
        std::printf("%s is of that type already\n", path.c_str());
        return kDone;
    }
    project->SetProjectType(type);
    return project->SaveToDisk() ? kDone : kUnusable;
}

}  // namespace

void addConvert(CLI::App& app, Run& run) {
    struct Options {
        std::string project;
        bool separate = false, single = false;
    };
    auto options = std::make_shared<Options>();
    auto* command = app.add_subcommand("convert", "Changes the type of a project and saves it");
    command->add_option("PROJECT", options->project, "The project file (.qbp)")->required();
    auto* kinds = command->add_option_group("Type", "What the project is to become");
    kinds->add_flag("--separate-files", options->separate, "A file per topic, for version control");
    kinds->add_flag("--single-file", options->single, "One file");
    kinds->require_option(1);
    command->callback([options, &run] {
        run = [options] {
            return convert(options->project,
                           options->separate ? ProjectTypeSeparateFiles : ProjectTypeSingleFile);
        };
    });
}

}  // namespace quillbox::cli
