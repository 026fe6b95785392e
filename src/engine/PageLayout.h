#pragma once

#include <string>

#include "engine/PageEncoding.h"
#include "platform/engine/Tags.h"
#include "platform/engine/Templates.h"

namespace quillbox {

// A page as its template describes it, split at its tags.
class PageLayout : public TemplatePage {
  public:
    std::string filter;
    // The file's name; none where the page has no `Output`.
    TagPieces output;
    // Another item type; the page is left out where there are no such items.
    std::string onlyWith;
    // The page is left out where a page of an item or a file of the project has its name.
    bool onlyIfFree = false;
    // Its text goes into the search index of the template.
    bool isSearched = false;
    // 0 for a page of the help itself, else the compile type that it is an input for.
    int compileType = 0;
    PageEncoding encoding = PageEncoding::Utf8;
    // Where it stands in template.xml.
    int line = 0;

    bool IsBound() const { return !NamespaceItemType.empty(); }
};

}  // namespace quillbox
