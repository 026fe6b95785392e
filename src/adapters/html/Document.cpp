#include "adapters/html/Document.h"

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

Ref<IHTMLElementCollection> Document::all() {
    return make<ElementCollection>(self(this), [](const Node&) { return true; });
}

Ref<IHTMLElementCollection> Document::anchors() { return make<ElementCollection>(self(this), isAnchor); }

Ref<IHTMLElement> Document::body() {
    auto* const html = FirstChild(Root(), "html");
    if (!html) return nullptr;
    auto* const body = FirstChild(*html, "body");
    auto* const either = body ? body : FirstChild(*html, "frameset");
    return either ? ElementOf(*either) : nullptr;
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

std::vector<Node*> Document::Select(const std::function<bool(const Node&)>& passes) const {
    std::vector<Node*> selected;
    auto& root = mMarkup->Root();
    for (auto* at = following(root, root); at; at = following(*at, root)) {
        if (at->kind == Kind::Element && passes(*at)) selected.push_back(at);
    }
    return selected;
}

std::string Document::Resolve(const std::string& address) {
    if (!mBaseKnown) {
        const auto bases = Select([](const Node& element) {
            return element.name == "base" && element.tag && element.tag->Find("href");
        });
        mBase = bases.empty() ? BaseAddress() : BaseAddress(bases.front()->tag->Find("href")->value);
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
