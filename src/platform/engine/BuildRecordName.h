#pragma once

#include <string_view>

namespace quillbox {

// The file in the output folder where the document engine notes what it wrote, so that a later build removes
// what it does not write any more. Whoever removes the pages of a build removes it too.
inline constexpr std::string_view kBuildRecordName = ".quillbox-build";

}  // namespace quillbox
