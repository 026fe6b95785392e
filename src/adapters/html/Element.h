#pragma once

#include <memory>
#include <string>

#include "adapters/html/Document.h"

namespace quillbox::html {

// One element for callers. It keeps its document alive, and stays usable when it was taken out of it.
class Element : public IHTMLElement {
  public:
    Element(Ref<Document> document, Node& node);
    ~Element() override;

    std::string tagName() const override;
    std::string className() const override;
    std::string getAttribute(const std::string& name) const override;
    std::optional<std::string> findAttribute(const std::string& name) const override;
    void setAttribute(const std::string& name, const std::string& value) override;

    std::string innerHTML() const override;
    void setInnerHTML(const std::string& html) override;
    std::string outerHTML() const override;
    void setOuterHTML(const std::string& html) override;
    std::string outerText() const override;
    std::optional<std::size_t> placeInBody() const override;

  private:
    Ref<Document> mDocument;
    std::shared_ptr<Markup> mMarkup;
    Node& mNode;
};

}  // namespace quillbox::html
