#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adapters/html/Document.h"

namespace quillbox::html {

// The elements of a document that pass a test, as the document is at each call.
class ElementCollection : public IHTMLElementCollection {
  public:
    using Test = std::function<bool(const Node&)>;

    ElementCollection(Ref<Document> document, Test test)
        : mDocument(std::move(document)), mTest(std::move(test)) {}

    Ref<IHTMLElementCollection> tags(const std::string& name) const override;
    Ref<IHTMLElement> item(const std::string& name) const override;
    std::vector<Ref<IHTMLElement>> Items() const override;
    int length() const override;

  private:
    Ref<Document> mDocument;
    Test mTest;
};

// The `id` or the `name` of the element is this one.
bool isNamed(const Node& element, std::string_view name);

}  // namespace quillbox::html
