#include <cstdio>

#include "Commands.h"
#include "frame/Root.h"

namespace quillbox::cli {

void addTemplates(CLI::App& app, Run& run) {
    auto* command = app.add_subcommand("templates", "Lists the page templates installed");
    command->callback([&run] {
        run = [] {
            for (const auto& one : make<Root>()->QuillboxPageTemplates()->Items()) {
                const bool prints = one->Supports().find('p') != std::string::npos;
                std::printf("%s%s\n", one->Name().c_str(), prints ? "\t(print)" : "");
            }
            return static_cast<int>(kDone);
        };
    });
}

}  // namespace quillbox::cli
