#include "adapters/html/Element.h"

#include "adapters/html/PlainText.h"
#include "adapters/html/Writer.h"
#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox::html {

namespace {

std::shared_ptr<Markup> owner(const Node& node) { return node.markup->shared_from_this(); }

// The root element stands for the document, with its document type and what lies around the element.
const Node& written(const Node& node) {
    return node.parent && node.parent->kind == Kind::Root ? *node.parent : node;
}

}  // namespace

Element::Element(Ref<Document> document, Node& node)
    : mDocument(std::move(document)), mMarkup(owner(node)), mNode(node) {}

Element::~Element() { mDocument->Forget(mNode); }

std::string Element::tagName() const {
    return mNode.space == Space::Html ? upper(mNode.name) : std::string(mNode.name);
}

std::string Element::className() const {
    const auto* attribute = mNode.tag ? mNode.tag->Find("class") : nullptr;
    return attribute ? attribute->value : std::string();
}

std::string Element::getAttribute(const std::string& name) const {
    if (auto value = findAttribute(name)) return *std::move(value);
    throw AutomationError("The element '" + std::string(mNode.name) + "' has no attribute '" + name + "'");
}

std::optional<std::string> Element::findAttribute(const std::string& name) const {
    const auto* attribute = mNode.tag ? mNode.tag->Find(name) : nullptr;
    if (!attribute) return std::nullopt;
    const bool address = sameName(name, "href") || sameName(name, "src");
    return address ? mDocument->Resolve(attribute->value) : attribute->value;
}

void Element::setAttribute(const std::string& name, const std::string& value) {
    mDocument->SetAttribute(mNode, name, value);
}

std::string Element::innerHTML() const { return Writer::Inner(mNode); }

void Element::setInnerHTML(const std::string& html) { mDocument->SetContent(mNode, html); }

std::string Element::outerHTML() const {
    const auto& node = written(mNode);
    return node.kind == Kind::Root ? Writer::Inner(node) : Writer::Outer(node);
}

void Element::setOuterHTML(const std::string& html) { mDocument->Replace(mNode, html); }

std::string Element::outerText() const { return plainText(mNode); }

std::optional<std::size_t> Element::placeInBody() const { return mDocument->PlaceInBody(mNode); }

}  // namespace quillbox::html
