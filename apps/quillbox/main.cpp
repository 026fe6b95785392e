#include <cstdio>
#include <exception>

#include "Commands.h"
#include "Terminal.h"

int main(int argc, char** argv) {
    using namespace quillbox::cli;
    CLI::App app{"Builds, checks and converts help projects.", "quillbox"};
    app.set_version_flag("--version", "quillbox " QUILLBOX_VERSION);
    app.require_subcommand(1);
    Run run;
    for (const auto add : {addBuild, addConvert, addHeaderIds, addInfo, addLinks, addNew, addTemplates})
        add(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kUnusable;
    }
    try {
        return run();
    } catch (const std::exception& error) {
        clearProgress();
        std::fprintf(stderr, "quillbox: %s\n", error.what());
        return kUnusable;
    }
}
