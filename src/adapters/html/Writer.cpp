#include "adapters/html/Writer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "adapters/html/CleanText.h"

namespace quillbox::html {

namespace {

bool isAsInSource(const Node& node) { return !node.changed && !node.scattered; }

bool closesItself(const Node& node) {
    return node.space != Space::Html && node.tag &&
           std::string_view(node.markup->source).substr(0, node.tag->end).ends_with("/>");
}

}  // namespace

// Where the children stand in the source that they come from.
Writer::Range Writer::ContentOf(const Node& node) {
    if (node.inner != node.markup) return {0, node.inner->source.size()};
    return {node.openEnd, node.closeBegin};
}

std::string Writer::Outer(const Node& element) {
    Writer writer;
    writer.WriteStartTag(element, true);
    writer.mText += Inner(element);
    writer.WriteEndTag(element, true);
    return std::move(writer.mText);
}

std::string Writer::Inner(const Node& node) {
    Writer writer;
    const auto content = ContentOf(node);
    if (isAsInSource(node)) {
        writer.Copy(*node.inner, content.begin, content.end);
    } else if (node.verbatim) {
        writer.WriteVerbatim(node);
    } else {
        writer.WriteChildren(node);
    }
    return std::move(writer.mText);
}

void Writer::WriteNode(const Node& top) {
    const auto* at = &top;
    for (;;) {
        if (Begin(*at)) {
            if (at->firstChild) {
                at = at->firstChild;
                WriteLead(*at);
                continue;
            }
            Finish(*at);
        }
        while (at != &top && !at->next) {
            at = at->parent;
            Finish(*at);
        }
        if (at == &top) return;
        at = at->next;
        WriteLead(*at);
    }
}

// The children and what the parser passed over between them.
void Writer::WriteChildren(const Node& parent) {
    for (const auto* child = parent.firstChild; child; child = child->next) {
        WriteLead(*child);
        WriteNode(*child);
    }
    WriteTail(parent);
}

// Writes all of a node, or its start tag where its children and Finish are to follow.
bool Writer::Begin(const Node& node) {
    if (isAsInSource(node)) {
        Copy(*node.markup, node.begin, node.end);
        return false;
    }
    switch (node.kind) {
        case Kind::Text:
            mText += escapedText(node.Text());
            return false;
        case Kind::Comment: {
            const auto start = mText.size();
            Copy(*node.markup, node.begin, node.end);
            mText += std::string_view(mText).substr(start).starts_with("<!--") ? "-->" : ">";
            return false;
        }
        default:
            break;
    }
    WriteStartTag(node, false);
    if (!node.verbatim) return true;
    WriteVerbatim(node);
    WriteEndTag(node, false);
    return false;
}

void Writer::Finish(const Node& node) {
    WriteTail(node);
    WriteEndTag(node, false);
}

void Writer::WriteStartTag(const Node& node, bool always) {
    if (node.kind != Kind::Element) return;
    if (node.tag && node.tag->touched) {
        const auto source = std::string_view(node.markup->source).substr(node.tag->begin);
        mText += startTagText(*node.tag, node.name, source.substr(0, node.tag->end - node.tag->begin));
    } else if (node.tag && node.tag->begin < node.tag->end) {
        Copy(*node.markup, node.tag->begin, node.tag->end);
        if (!mText.ends_with('>')) mText += '>';  // the text ends within the tag
    } else if (always || node.rebuilt || node.scattered) {
        mText.append("<").append(node.name).append(">");
    }
}

void Writer::WriteEndTag(const Node& node, bool always) {
    if (node.kind != Kind::Element) return;
    if (node.closeBegin < node.end) {
        Copy(*node.markup, node.closeBegin, node.end);
    } else if ((always || node.rebuilt || node.scattered) && !isVoid(node.name) && !closesItself(node)) {
        mText.append("</").append(node.name).append(">");
    }
}

void Writer::WriteLead(const Node& node) {
    WritePassedOver(*node.parent, node.markup->source, {node.leadBegin, node.begin});
}

void Writer::WriteTail(const Node& node) {
    WritePassedOver(node, node.inner->source, {node.tailBegin, ContentOf(node).end});
}

// White space always; stray tags only where the tags around them are the author's too.
void Writer::WritePassedOver(const Node& parent, std::string_view source, Range range) {
    const auto text = source.substr(range.begin, range.end - range.begin);
    if (isBlank(text) || !(parent.rebuilt || parent.scattered)) mText += text;
}

// One piece of source in which the changed places are written anew. Calls itself at most as deep as elements
// nest.
void Writer::WriteVerbatim(const Node& node) {
    struct Patch {
        Range range;
        const Node* node;
        bool tagOnly;
    };
    std::vector<Patch> patches;
    for (const auto* at = following(node, node); at;) {
        if (at->changed && at->scattered) {
            if (at->tag && at->tag->touched) patches.push_back({{at->tag->begin, at->tag->end}, at, true});
            at = following(*at, node);
            continue;
        }
        if (at->changed) patches.push_back({{at->begin, at->end}, at, false});
        at = followingBeyond(*at, node);
    }
    std::stable_sort(patches.begin(), patches.end(),
                     [](const Patch& a, const Patch& b) { return a.range.begin < b.range.begin; });
    const auto content = ContentOf(node);
    auto done = content.begin;
    for (const auto& patch : patches) {
        if (patch.range.begin < done) continue;  // another part of the same tag
        Copy(*node.inner, done, patch.range.begin);
        if (patch.tagOnly) {
            WriteStartTag(*patch.node, false);
        } else {
            WriteNode(*patch.node);
        }
        done = patch.range.end;
    }
    Copy(*node.inner, done, content.end);
}

void Writer::Copy(const Markup& markup, std::size_t begin, std::size_t end) {
    mText.append(markup.source, begin, end - begin);
}

}  // namespace quillbox::html
