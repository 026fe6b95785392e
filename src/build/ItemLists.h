#pragma once

#include <string>

namespace quillbox {

class QbDataProvider;

// What a list of items asks for.
struct ItemListOrder {
    // The beginning of the names of its scraps: "_NAME_header", "_NAME_body", "_NAME_SEPARATOR",
    // "_NAME_footer".
    std::string scrap;
    // The kind of items, with or without its family.
    std::string itemType;
    std::string filter;
};

// The items below the current one, each as the list's scraps show it. A list without items is empty
// altogether.
std::string filteredItemList(QbDataProvider& provider, const ItemListOrder& order);

}  // namespace quillbox
