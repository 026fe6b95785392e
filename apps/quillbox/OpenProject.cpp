#include "OpenProject.h"

#include <filesystem>

#include "base/AutomationError.h"

namespace quillbox::cli {

std::string fullPath(const std::string& path) {
    return std::filesystem::absolute(path).lexically_normal().string();
}

Ref<QbProject> openProject(const std::string& path) {
    const auto full = fullPath(path);
    if (!std::filesystem::is_regular_file(full))
        throw AutomationError("There is no project file '" + path + "'");
    auto project = make<QbProject>();
    // The files beside the project are found from here.
    project->Filename->SetPath(full);
    project->LoadFromFile(full);
    return project;
}

}  // namespace quillbox::cli
