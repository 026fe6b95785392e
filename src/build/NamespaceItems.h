#pragma once

#include <string>
#include <vector>

#include "build/Filter.h"

namespace quillbox {

class QbProject;

// What a list of items is made from.
struct ItemQuery {
    // None where the document holds no project.
    Ref<QbProject> project;
    // May be none.
    Ref<Object> parent;
    const Filter& filter;
};

// The items of a type such as "cm.quillbox:topic", in the order in which they are written. A type that is not
// known and a parent of another kind give an empty list.
std::vector<Ref<Object>> namespaceItems(const std::string& itemType, const ItemQuery& query);

}  // namespace quillbox
