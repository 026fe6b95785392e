#include <cstdio>
#include <filesystem>
#include <memory>

#include "Commands.h"
#include "OpenProject.h"
#include "base/AutomationError.h"
#include "frame/Platform.h"

namespace quillbox::cli {

namespace {

// One that cannot be read is listed with the reason.
int list() {
    int status = kDone;
    for (const auto& one : platform().engine->Templates().PageTemplates()->Items()) {
        try {
            const bool prints = one->Supports().find('p') != std::string::npos;
            std::printf("%s%s\n", one->Name().c_str(), prints ? "\t(print)" : "");
        } catch (const AutomationError& error) {
            std::printf("%s\t(broken)\n", one->Name().c_str());
            std::fprintf(stderr, "%s\n", error.Description().c_str());
            status = kFoundProblems;
        }
    }
    return status;
}

}  // namespace

void useTemplates(const std::string& folder) {
    if (folder.empty()) return;
    const auto full = fullPath(folder);
    if (!std::filesystem::is_directory(full))
        throw AutomationError("There is no folder of templates '" + folder + "'");
    platform().engine->Templates().AddFolder(full);
}

void addTemplates(CLI::App& app, Run& run) {
    auto* command = app.add_subcommand("templates", "Lists the page templates");
    auto folder = std::make_shared<std::string>();
    command->add_option("--templates", *folder, "A further folder to look for templates in");
    command->callback([folder, &run] {
        run = [folder] {
            useTemplates(*folder);
            return list();
        };
    });
}

}  // namespace quillbox::cli
