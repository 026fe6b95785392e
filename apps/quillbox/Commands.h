#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

namespace quillbox::cli {

// The exit status of a command.
enum Status { kDone = 0, kFoundProblems = 1, kUnusable = 2 };

// Each adds one command to the program; `run` is set to its work once it is the one that was asked for.
using Run = std::function<int()>;
void addBuild(CLI::App& app, Run& run);
void addInfo(CLI::App& app, Run& run);
void addConvert(CLI::App& app, Run& run);
void addHeaderIds(CLI::App& app, Run& run);
void addLinks(CLI::App& app, Run& run);
void addNew(CLI::App& app, Run& run);
void addTemplates(CLI::App& app, Run& run);

// Has templates looked for in a further folder; none for an empty name.
void useTemplates(const std::string& folder);

}  // namespace quillbox::cli
