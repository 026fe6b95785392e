#include "headerids/HeaderIds.h"

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "Commands.h"

namespace quillbox::cli {

namespace {

int headerIds(const std::string& path, bool json) {
    const auto ids = make<quillbox::HeaderIds>();
    ids->Load(path);
    auto list = nlohmann::ordered_json::array();
    for (const auto& id : ids->Items()) {
        if (json) {
            list.push_back({{"name", id->Name}, {"value", id->Value}, {"comment", id->Comment}});
        } else {
            std::printf("%s\t%d\t%s\n", id->Name.c_str(), id->Value, id->Comment.c_str());
        }
    }
    if (json)
        std::printf("%s\n",
                    list.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace).c_str());
    return kDone;
}

}  // namespace

void addHeaderIds(CLI::App& app, Run& run) {
    struct Options {
        std::string file;
        bool json = false;
    };
    auto options = std::make_shared<Options>();
    auto* command =
        app.add_subcommand("headerids", "Lists the identifiers of a C header: name, value, comment");
    command->add_option("FILE", options->file, "The header file")->required();
    command->add_flag("--json", options->json, "For programs");
    command->callback(
        [options, &run] { run = [options] { return headerIds(options->file, options->json); }; });
}

}  // namespace quillbox::cli
