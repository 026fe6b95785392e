#pragma once

#include <string>

#include "build/TagValues.h"

namespace quillbox {

// The current entry of a booklet, rendered through the page "topic.html" of the booklet's own template; empty
// for an item of another kind.
std::string topicContent(const TagCall& call);

// The same; for a booklet itself the body of its cover page, empty where it has none.
std::string coverPage(const TagCall& call);

}  // namespace quillbox
