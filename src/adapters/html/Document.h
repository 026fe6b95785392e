#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "adapters/html/Parser.h"
#include "adapters/html/Tree.h"
#include "adapters/html/Url.h"
#include "platform/HTML.h"

namespace quillbox::html {

class Element;

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
    // The elements that pass, in document order.
    std::vector<Node*> Select(const std::function<bool(const Node&)>& passes) const;

    std::string Resolve(const std::string& address);
    void SetAttribute(Node& element, const std::string& name, const std::string& value);
    void SetContent(Node& element, const std::string& html);
    void Replace(Node& element, const std::string& html);

  private:
    std::shared_ptr<Markup> ParseFor(const Node& parent, const std::string& html);
    Node* FirstChild(const Node& parent, std::string_view name) const;

    std::shared_ptr<Parser> mParser;
    std::shared_ptr<Markup> mMarkup;
    std::unordered_map<const Node*, std::weak_ptr<Element>> mElements;
    BaseAddress mBase;
    bool mBaseKnown = false;
};

}  // namespace quillbox::html
