#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

// One entry of the index, as the document engine gets it. Not published to callers.
class Keyword : public Object {
  public:
    static constexpr std::string_view kClassName = "Keyword";
    std::string_view ClassName() const override { return kClassName; }
    std::string Name;
    std::string QualifiedName;
};

}  // namespace quillbox
