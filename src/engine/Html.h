#pragma once

#include <string>
#include <string_view>

namespace quillbox {

// Text as it stands in HTML, between tags or in a quoted attribute; line ends become blanks.
std::string htmlText(std::string_view text);
std::string htmlText(std::string&& text);

// The text of HTML without its tags and comments, as it may stand in a quoted attribute: one blank for any
// white space, and `&...;` as it was.
std::string plainText(std::string_view html);

// Text as it stands in a quoted string of a script, in a file of its own or inside a page.
std::string scriptText(std::string_view text);

// Text as the id of an element and the fragment of a link: letters, digits and "_" stay, a blank becomes "-",
// any other ASCII character "." and its code. Two texts never give one name.
std::string anchorName(std::string_view text);

// Whether a link leads to another place than a file beside the page: a scheme, a host, an absolute path.
bool isRemote(std::string_view link);

// Where a tag of a page ends, looked for from inside the tag on; quotes may hold ">". None where nothing ends
// it.
std::size_t endOfTag(std::string_view html, std::size_t from);

// The name of a file as a link tells it: with "%23" and the like for what means something else in a link.
std::string nameAsLink(std::string_view name);

// The link with "%20" and the like as they mean.
std::string decodedLink(std::string_view link);

// The link without its query and fragment.
std::string_view withoutFragment(std::string_view link);

}  // namespace quillbox
