#pragma once

#include <string>

#include "base/FoldedMap.h"
#include "engine/EngineDocument.h"
#include "platform/engine/Tags.h"

namespace quillbox {

// What a general tag is answered from.
struct TagRequest {
    EngineDocument& document;
    const IDataProvider& current;
    // Who knows the values of other tags; may be none.
    IDataProvider* asker;
    // None where a property was asked for.
    const Element* element;
    // Its attribute "name"; empty where it has none.
    const std::string& name;
    const Ref<FileSystemObject>& file;

    // By its name in lower case; empty for an attribute that is not there.
    std::string Attribute(std::string_view name) const {
        return element ? attributeText(*element, name) : std::string();
    }
};

using TagAnswer = std::string (*)(const TagRequest& request);
using TagTable = FoldedMap<TagAnswer>;

// The way from the page in work up to the output folder: empty, or "../" for each folder it lies in.
std::string rootPathOf(const TagRequest& request);
// A link as it stands in an `href` of the page in work: to a page of the build whatever signs its name holds,
// or as it was given.
std::string hrefOf(const TagRequest& request, const std::string& link, bool isPage);

// All general tags by their names.
const TagTable& commonTags();

// The groups that they come in.
void addBuildTags(TagTable& tags);
void addItemTags(TagTable& tags);
void addContentsTags(TagTable& tags);

}  // namespace quillbox
