#pragma once

#include <string>
#include <vector>

#include "adapters/html/Document.h"

namespace quillbox::html {

// The elements of a document that pass a filter, as the document is at each call.
class ElementCollection : public IHTMLElementCollection {
  public:
    ElementCollection(Ref<Document> document, ElementFilter filter)
        : mDocument(std::move(document)), mFilter(std::move(filter)) {}

    Ref<IHTMLElementCollection> tags(const std::string& name) const override;
    Ref<IHTMLElement> item(const std::string& name) const override;
    std::vector<std::string> names() const override;
    std::vector<Ref<IHTMLElement>> Items() const override;
    int length() const override;

  private:
    Ref<Document> mDocument;
    ElementFilter mFilter;
};

}  // namespace quillbox::html
