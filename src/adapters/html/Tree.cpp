#include "adapters/html/Tree.h"

#include <algorithm>
#include <array>

namespace quillbox::html {

namespace {

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& sorted, std::string_view name) {
    return std::binary_search(sorted.begin(), sorted.end(), name);
}

char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Makes the element's list of children count from here on, where so far a piece of source stood for it.
void openForEditing(Node& element) {
    auto* at = &element;
    while (at->scattered && at->parent) at = at->parent;
    if (at->verbatim) {
        at->verbatim = false;
        at->rebuilt = true;
    }
    markChanged(element);
}

void release(Markup& markup) {
    if (--markup.uses == 0 && markup.owner) markup.owner->grafts.erase(&markup);
}

bool isTopOfGraft(const Node& node) { return node.parent && node.parent->markup != node.markup; }

void detach(Node& node) {
    const bool top = isTopOfGraft(node);
    unlink(node);
    if (top) release(*node.markup);
}

void link(Node& parent, Node* before, Node& node, Node* after) {
    node.parent = &parent;
    node.previous = before;
    node.next = after;
    (before ? before->next : parent.firstChild) = &node;
    (after ? after->previous : parent.lastChild) = &node;
}

// Takes the top nodes of a fragment over, behind `before`.
void graft(Node& parent, Node* before, Node* after, const std::shared_ptr<Markup>& fragment) {
    for (auto* node = fragment->Root().firstChild; node;) {
        auto* const next = node->next;
        link(parent, before, *node, after);
        ++fragment->uses;
        before = node;
        node = next;
    }
    fragment->Root().firstChild = fragment->Root().lastChild = nullptr;
    if (fragment->uses == 0) return;
    fragment->owner = parent.markup;
    parent.markup->grafts.emplace(fragment.get(), fragment);
}

}  // namespace

const Attribute* StartTag::Find(std::string_view name) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const Attribute& one) { return sameName(one.name, name); });
    return found == attributes.end() ? nullptr : &*found;
}

void StartTag::Set(const std::string& name, const std::string& value) {
    touched = true;
    if (const auto* found = Find(name)) {
        auto& attribute = const_cast<Attribute&>(*found);
        attribute.value = value;
        attribute.changed = true;
    } else {
        attributes.push_back({name, value, true});
    }
}

std::string_view Node::Text() const {
    return std::string_view(markup->text).substr(textBegin, textEnd - textBegin);
}

Markup::~Markup() {
    // A graft that a caller still holds an element of lives on by itself.
    for (auto& [key, fragment] : grafts) {
        fragment->owner = nullptr;
        if (fragment.use_count() == 1) continue;
        for (auto& node : fragment->nodes) {
            if (isTopOfGraft(node)) node.parent = node.previous = node.next = nullptr;
        }
    }
}

std::size_t depthOf(const Node& node) {
    std::size_t depth = 0;
    for (const auto* at = &node; at && at->kind == Kind::Element; at = at->parent) ++depth;
    return depth;
}

void append(Node& parent, Node& child) { link(parent, parent.lastChild, child, nullptr); }

void insertAfter(Node& sibling, Node& node) { link(*sibling.parent, &sibling, node, sibling.next); }

void unlink(Node& node) {
    auto& parent = *node.parent;
    (node.previous ? node.previous->next : parent.firstChild) = node.next;
    (node.next ? node.next->previous : parent.lastChild) = node.previous;
    node.parent = node.previous = node.next = nullptr;
}

void markChanged(Node& node) {
    for (auto* at = &node; at && !at->changed; at = at->parent) at->changed = true;
}

void replaceChildren(Node& element, std::shared_ptr<Markup> fragment) {
    if (element.scattered) openForEditing(element);
    while (element.firstChild) detach(*element.firstChild);
    if (element.inner != element.markup) release(*element.inner);
    element.inner = fragment.get();
    element.verbatim = fragment->Root().verbatim;
    element.rebuilt = element.rebuilt || fragment->Root().rebuilt || element.begin == element.openEnd;
    element.tailBegin = fragment->Root().tailBegin;
    ++fragment->uses;
    graft(element, nullptr, nullptr, fragment);
    markChanged(element);
}

void replaceNode(Node& element, std::shared_ptr<Markup> fragment) {
    auto& parent = *element.parent;
    openForEditing(parent);
    graft(parent, &element, element.next, fragment);
    detach(element);
}

void setAttribute(Node& element, const std::string& name, const std::string& value) {
    if (!element.tag) element.tag = &element.markup->addedTags.emplace_back();
    if (element.tag->begin == element.tag->end && !element.rebuilt) {
        if (element.scattered) openForEditing(element);
        element.rebuilt = true;
    }
    element.tag->Set(name, value);
    markChanged(element);
}

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n\f") == std::string_view::npos; }

bool isVoid(std::string_view name) {
    static constexpr std::array<std::string_view, 18> kNames = {
        "area", "base",  "basefont", "bgsound", "br",   "col",   "embed",  "frame", "hr",
        "img",  "input", "keygen",   "link",    "meta", "param", "source", "track", "wbr"};
    return contains(kNames, name);
}

bool isRawText(std::string_view name) {
    static constexpr std::array<std::string_view, 9> kNames = {
        "iframe", "noembed", "noframes", "plaintext", "script", "style", "textarea", "title", "xmp"};
    return contains(kNames, name);
}

bool isFormatting(std::string_view name) {
    static constexpr std::array<std::string_view, 14> kNames = {
        "a", "b", "big", "code", "em", "font", "i", "nobr", "s", "small", "strike", "strong", "tt", "u"};
    return contains(kNames, name);
}

}  // namespace quillbox::html
