#include "engine/CommonTags.h"

namespace quillbox {

std::string TagRequest::Attribute(const std::string& name) const {
    const auto* value = element.Attributes->Find(name);
    return value ? toText(*value) : std::string();
}

const TagTable& commonTags() {
    static const TagTable tags = [] {
        TagTable all;
        addBuildTags(all);
        addItemTags(all);
        addContentsTags(all);
        return all;
    }();
    return tags;
}

}  // namespace quillbox
