#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

// What came of a build.
class BuildResult : public Object {
  public:
    static constexpr std::string_view kClassName = "BuildResult";
    std::string_view ClassName() const override { return kClassName; }
    bool Cancelled = false;
    std::string CompilerLog;
};

}  // namespace quillbox
