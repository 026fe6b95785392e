#pragma once

#include <string>
#include <vector>

#include "platform/engine/Tags.h"

namespace quillbox {

class QbDataProvider;

// One tag that waits for its value.
struct TagCall {
    QbDataProvider& provider;
    const Element& element;
    // The same, to be handed on.
    const Ref<Element>& handle;
    // The page being written, or none.
    const Ref<FileSystemObject>& file;

    // An attribute that has to be there.
    std::string Needed(std::string_view name) const;
    // Empty for an attribute that is not there. Both by names in lower case.
    std::string Optional(std::string_view name) const { return attributeText(element, name); }
};

// The value of a tag: its condition, what its type gives, and its formats.
std::string tagValue(const TagCall& call);

// The names of the tags that have a row of their own, in lower case.
std::vector<std::string> tagNames();

}  // namespace quillbox
