#pragma once

#include <string>
#include <unordered_map>

#include "engine/EngineDocument.h"
#include "platform/engine/Tags.h"

namespace quillbox {

// What a general tag is answered from.
struct TagRequest {
    EngineDocument& document;
    const IDataProvider& current;
    // None where a property was asked for.
    const Element* element;
    const Ref<FileSystemObject>& file;

    // By its name in lower case; empty for an attribute that is not there.
    std::string Attribute(std::string_view name) const {
        return element ? attributeText(*element, name) : std::string();
    }
};

using TagAnswer = std::string (*)(const TagRequest& request);
using TagTable = std::unordered_map<std::string, TagAnswer>;

// A link as it stands in an `href` of the page in work: to a page of the build whatever signs its name holds,
// or as it was given.
std::string hrefOf(const TagRequest& request, const std::string& link);

// All general tags, by their names in lower case.
const TagTable& commonTags();

// The groups that they come in.
void addBuildTags(TagTable& tags);
void addItemTags(TagTable& tags);
void addContentsTags(TagTable& tags);

}  // namespace quillbox
