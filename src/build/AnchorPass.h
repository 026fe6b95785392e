#pragma once

#include <string>
#include <string_view>

namespace quillbox {

// Turns anchors such as "%See this:Namespace~Class%" into links to pages of the related project. Two "%"
// signs with anything else between them stay, and so does "/%".
std::string resolveAnchors(std::string_view text);

}  // namespace quillbox
