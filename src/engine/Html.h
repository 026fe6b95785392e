#pragma once

#include <string>
#include <string_view>

namespace quillbox {

// Text as it stands in HTML, between tags or in a quoted attribute; line ends become blanks.
std::string htmlText(std::string_view text);

// The text of HTML without its tags and comments, as it may stand in a quoted attribute: one blank for any
// white space, and `&...;` as it was.
std::string plainText(std::string_view html);

// Whether a link leads to another place than a file beside the page: a scheme, a host, an absolute path.
bool isRemote(std::string_view link);

// The link without its query and fragment.
std::string_view withoutFragment(std::string_view link);

}  // namespace quillbox
