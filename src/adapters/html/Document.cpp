#include "adapters/html/Document.h"

#include <algorithm>

#include "adapters/html/CleanText.h"
#include "adapters/html/Element.h"
#include "adapters/html/ElementCollection.h"
#include "adapters/html/Html.h"
#include "adapters/html/Layout.h"
#include "base/AutomationError.h"
#include "base/Text.h"

namespace quillbox {

namespace html {

namespace {

std::string described(const Node& element) { return "The element '" + std::string(element.name) + "'"; }

bool isAnchor(const Node& element) {
    return element.name == "a" && element.tag && (element.tag->Find("name") || element.tag->Find("id"));
}

bool holdsBase(const Node& top) {
    for (const auto* at = &top; at; at = following(*at, top)) {
        if (at->IsElement("base")) return true;
    }
    return false;
}

// Nothing comes behind these, so that what they hold may stay as it was written, open tags and all.
bool endsDocument(const Node& element) { return element.name == "body" || element.name == "html"; }

}  // namespace

Document::Document(std::shared_ptr<Parser> parser, const std::string& html)
    : mParser(std::move(parser)), mMarkup(mParser->Document(html)) {}

bool ElementFilter::Passes(const Node& node) const {
    if (node.kind != Kind::Element || none) return false;
    // Most elements have a name of another length.
    const bool named = !tag || (node.name.size() == tag->size() && sameName(node.name, *tag));
    return named && (!anchors || isAnchor(node));
}

Ref<IHTMLElementCollection> Document::all() { return make<ElementCollection>(self(this), ElementFilter()); }

Ref<IHTMLElementCollection> Document::anchors() {
    return make<ElementCollection>(self(this), ElementFilter{std::nullopt, true});
}

Ref<IHTMLElement> Document::body() {
    auto* const body = Body();
    return body ? ElementOf(*body) : nullptr;
}

Node* Document::Body() const {
    auto* const html = FirstChild(Root(), "html");
    if (!html) return nullptr;
    auto* const body = FirstChild(*html, "body");
    return body ? body : FirstChild(*html, "frameset");
}

std::optional<std::size_t> Document::PlaceInBody(const Node& element) const {
    const auto* const body = Body();
    if (!body || !element.tag || element.tag->begin == element.tag->end) return std::nullopt;
    // Content that was put in is a text of its own.
    const std::size_t start = body->inner == body->markup ? body->openEnd : 0;
    if (element.markup != body->inner || element.tag->begin < start) return std::nullopt;
    return element.tag->begin - start;
}

Ref<IHTMLElement> Document::documentElement() {
    auto* const html = FirstChild(Root(), "html");
    return html ? ElementOf(*html) : nullptr;
}

Node* Document::FirstChild(const Node& parent, std::string_view name) const {
    for (auto* at = parent.firstChild; at; at = at->next) {
        if (at->IsElement(name)) return at;
    }
    return nullptr;
}

Ref<IHTMLElement> Document::ElementOf(Node& node) {
    auto& known = mElements[&node];
    auto element = known.lock();
    if (!element) {
        element = make<Element>(self(this), node);
        known = element;
    }
    return element;
}

std::vector<Node*> Document::Select(const ElementFilter& filter) const {
    std::vector<Node*> selected;
    auto& root = mMarkup->Root();
    for (auto* at = following(root, root); at; at = following(*at, root)) {
        if (filter.Passes(*at)) selected.push_back(at);
    }
    return selected;
}

std::string Document::Resolve(const std::string& address) {
    if (!mBaseKnown) {
        const auto bases = Select({"base"});
        const auto addressed = std::find_if(bases.begin(), bases.end(), [](const Node* base) {
            return base->tag && base->tag->Find("href");
        });
        mBase =
            addressed == bases.end() ? BaseAddress() : BaseAddress((*addressed)->tag->Find("href")->value);
        mBaseKnown = true;
    }
    return mBase.Resolve(address);
}

void Document::SetAttribute(Node& element, const std::string& name, const std::string& value) {
    const auto clean = cleanText(name);
    if (clean.empty() || clean.find_first_of(" \t\r\n\f/>=\"'<") != std::string::npos) {
        throw AutomationError("'" + name + "' is no name of an attribute");
    }
    setAttribute(element, clean, cleanText(value));
    if (element.name == "base") mBaseKnown = false;
}

void Document::SetContent(Node& element, const std::string& html) {
    if (isVoid(element.name)) throw AutomationError(described(element) + " cannot have content");
    auto fragment = ParseFor(element, html);
    if (holdsBase(element) || holdsBase(fragment->Root())) mBaseKnown = false;
    replaceChildren(element, std::move(fragment));
}

void Document::Replace(Node& element, const std::string& html) {
    if (!element.parent) {
        if (html.empty()) return;
        throw AutomationError(described(element) + " is no longer part of a document");
    }
    if (element.parent->kind == Kind::Root) throw AutomationError("The root element cannot be replaced");
    auto fragment = ParseFor(*element.parent, html);
    if (holdsBase(element) || holdsBase(fragment->Root())) mBaseKnown = false;
    replaceNode(element, std::move(fragment));
}

std::shared_ptr<Markup> Document::ParseFor(const Node& parent, const std::string& html) {
    const auto endTag = "</" + std::string(parent.name);
    if (isRawText(parent.name) && lower(html).find(endTag) != std::string::npos) {
        throw AutomationError(described(parent) + " cannot hold its own end tag");
    }
    auto fragment = mParser->Fragment(html, parent.name, parent.space);
    if (depthOf(parent) + fragment->depth > kDeepest) {
        throw AutomationError("The HTML nests deeper than 500 elements");
    }
    if (!endsDocument(parent) && !isRawText(parent.name)) seal(*fragment);
    return fragment;
}

namespace {

class Factory : public DOMFactory {
  public:
    Ref<HTMLDocument> NewDocument(const std::string& html) override { return make<Document>(mParser, html); }

  private:
    std::shared_ptr<Parser> mParser = std::make_shared<Parser>();
};

}  // namespace

}  // namespace html

std::shared_ptr<DOMFactory> makeHtmlFactory() { return std::make_shared<html::Factory>(); }

}  // namespace quillbox
