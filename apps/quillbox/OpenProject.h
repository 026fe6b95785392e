#pragma once

#include <string>

#include "project/QbProject.h"

namespace quillbox::cli {

// The full path of a file that a user named.
std::string fullPath(const std::string& path);

// A project loaded from a file; fails where there is no such file, or where it is no project.
Ref<QbProject> openProject(const std::string& path);

}  // namespace quillbox::cli
