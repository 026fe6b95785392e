#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "adapters/html/Tree.h"

namespace quillbox::html {

// Turns text into markup. Keeps the parser library's tables between two parses, as making them costs more
// than parsing a page.
class Parser {
  public:
    Parser();
    ~Parser();

    std::shared_ptr<Markup> Document(std::string_view html);
    // What the text gives as the content of an element of that name.
    std::shared_ptr<Markup> Fragment(std::string_view html, std::string_view name, Space space);

  private:
    struct Library;
    std::unique_ptr<Library> mLibrary;
};

}  // namespace quillbox::html
