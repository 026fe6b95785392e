#include "adapters/html/Layout.h"

namespace quillbox::html {

namespace {

std::string_view sourceOf(const Node& node) {
    return std::string_view(node.markup->source).substr(node.begin, node.end - node.begin);
}

std::string_view between(const Node& node, std::uint32_t begin, std::uint32_t end) {
    return std::string_view(node.markup->source).substr(begin, end - begin);
}

void rebuild(Node& node) {
    node.rebuilt = true;
    markChanged(node);
}

bool isClosed(const Node& element) { return element.closeBegin < element.end || isVoid(element.name); }

// The fragment ends before anything closed the element.
bool endsOpen(const Node& element) {
    const auto* at = &element;
    while (at->parent && !at->next && !isClosed(*at)) at = at->parent;
    return !at->parent;
}

bool isComplete(const Node& comment) {
    const auto source = sourceOf(comment);
    return source.starts_with("<!--") ? source.ends_with("-->") || source.ends_with("--!>")
                                      : source.ends_with('>');
}

void sealElement(Node& node) {
    if (node.verbatim) {
        node.verbatim = false;
        rebuild(node);
    }
    if (node.begin < node.openEnd && !between(node, node.begin, node.openEnd).ends_with('>')) rebuild(node);
    if (!isClosed(node) && (isFormatting(node.name) || isRawText(node.name) || endsOpen(node))) rebuild(node);
}

// A text that would run together with what comes behind it, such as "<" in front of "b".
bool runsOn(std::string_view text) {
    if (text.starts_with("<![CDATA[")) return !text.ends_with("]]>");
    const auto start = text.find_last_of("<&");
    return start != std::string_view::npos &&
           text.find_first_of(" \t\r\n\f;", start) == std::string_view::npos;
}

void sealNode(Node& node) {
    if (!isBlank(between(node, node.leadBegin, node.begin))) {
        node.leadBegin = node.begin;
        markChanged(*node.parent);
    }
    if (node.kind == Kind::Element) {
        sealElement(node);
        if (!isBlank(between(node, node.tailBegin, node.closeBegin))) {
            node.tailBegin = node.closeBegin;
            markChanged(node);
        }
    }
    if (node.kind == Kind::Text && !isRawText(node.parent->name) && runsOn(sourceOf(node))) markChanged(node);
    if (node.kind == Kind::Comment && !isComplete(node)) markChanged(node);
}

}  // namespace

void seal(Markup& fragment) {
    auto& root = fragment.Root();
    if (root.verbatim) {
        root.verbatim = false;
        root.rebuilt = true;
    }
    for (auto* at = following(root, root); at; at = following(*at, root)) sealNode(*at);
    if (!isBlank(between(root, root.tailBegin, root.closeBegin))) root.tailBegin = root.closeBegin;
}

}  // namespace quillbox::html
