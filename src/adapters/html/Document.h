#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "adapters/html/Parser.h"
#include "adapters/html/Tree.h"
#include "adapters/html/Url.h"
#include "platform/HTML.h"

namespace quillbox::html {

class Element;

// Which elements of a document somebody asks for.
struct ElementFilter {
    std::optional<std::string> tag;  // in any case
    bool anchors = false;            // those alone that a link may lead to
    bool none = false;

    bool Passes(const Node& node) const;
};

// Owns the markup; hands out one object for each node as long as somebody holds it.
class Document : public HTMLDocument {
  public:
    Document(std::shared_ptr<Parser> parser, const std::string& html);

    Ref<IHTMLElementCollection> all() override;
    Ref<IHTMLElement> body() override;
    Ref<IHTMLElementCollection> anchors() override;
    Ref<IHTMLElement> documentElement() override;

    Ref<IHTMLElement> ElementOf(Node& node);
    void Forget(const Node& node) { mElements.erase(&node); }

    const Node& Root() const { return mMarkup->Root(); }
    std::optional<std::size_t> PlaceInBody(const Node& element) const;
    // The elements that pass, in document order.
    std::vector<Node*> Select(const ElementFilter& filter) const;

    std::string Resolve(const std::string& address);
    void SetAttribute(Node& element, const std::string& name, const std::string& value);
    void SetContent(Node& element, const std::string& html);
    void Replace(Node& element, const std::string& html);

  private:
    std::shared_ptr<Markup> ParseFor(const Node& parent, const std::string& html);
    Node* FirstChild(const Node& parent, std::string_view name) const;
    Node* Body() const;

    std::shared_ptr<Parser> mParser;
    std::shared_ptr<Markup> mMarkup;
    std::unordered_map<const Node*, std::weak_ptr<Element>> mElements;
    BaseAddress mBase;
    bool mBaseKnown = false;
};

}  // namespace quillbox::html
