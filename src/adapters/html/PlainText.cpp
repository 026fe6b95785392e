#include "adapters/html/PlainText.h"

#include <algorithm>
#include <array>

namespace quillbox::html {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool isHidden(std::string_view name) {
    return name == "script" || name == "style" || name == "template" || name == "head" || name == "noframes";
}

bool keepsSpace(std::string_view name) {
    return name == "pre" || name == "textarea" || name == "listing" || name == "xmp" || name == "plaintext";
}

bool isBlock(std::string_view name) {
    static constexpr std::array<std::string_view, 39> kNames = {
        "address", "article", "aside",   "blockquote", "body",     "caption",  "center", "dd",
        "details", "dir",     "div",     "dl",         "dt",       "fieldset", "footer", "form",
        "h1",      "h2",      "h3",      "h4",         "h5",       "h6",       "header", "hr",
        "legend",  "li",      "listing", "main",       "menu",     "nav",      "ol",     "p",
        "pre",     "section", "summary", "table",      "textarea", "tr",       "ul"};
    return std::binary_search(kNames.begin(), kNames.end(), name);
}

class TextOf {
  public:
    explicit TextOf(const Node& top) : mTop(top) {}

    std::string Run() {
        for (const auto* at = &mTop; at;) {
            const bool hidden = at != &mTop && isHidden(at->name);
            if (!hidden) Enter(*at);
            at = Next(*at, hidden);
        }
        return std::move(mText);
    }

  private:
    void Enter(const Node& node) {
        if (node.kind == Kind::Text) {
            mPreserved > 0 ? AddPreserved(node.Text()) : Add(node.Text());
        } else if (node.kind == Kind::Element && node.name == "br") {
            Break(mBreaks + 1);
        } else if (node.kind == Kind::Element) {
            if (isBlock(node.name)) Break(1);
            if (keepsSpace(node.name)) ++mPreserved;
        }
    }

    void Leave(const Node& node) {
        if (isBlock(node.name)) Break(1);
        if (keepsSpace(node.name)) --mPreserved;
    }

    const Node* Next(const Node& node, bool hidden) {
        if (node.firstChild && !hidden) return node.firstChild;
        const auto* at = &node;
        if (at->kind == Kind::Element && !hidden) Leave(*at);
        while (at != &mTop && !at->next) {
            at = at->parent;
            if (at->kind == Kind::Element) Leave(*at);
        }
        return at == &mTop ? nullptr : at->next;
    }

    void Add(std::string_view text) {
        for (const char c : text) {
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f') {
                mBlank = true;
            } else {
                Flush();
                mText += c;
            }
        }
    }

    void AddPreserved(std::string_view text) {
        for (const char c : text) {
            if (c == '\n') {
                Break(mBreaks + 1);
            } else {
                Flush();
                mText += c;
            }
        }
    }

    // Line ends and blanks count only when more text comes.
    void Break(int atLeast) {
        mBreaks = std::max(mBreaks, atLeast);
        mBlank = false;
    }

    void Flush() {
        if (!mText.empty()) {
            for (; mBreaks > 0; --mBreaks) mText += kLineEnd;
            if (mBlank) mText += ' ';
        }
        mBreaks = 0;
        mBlank = false;
    }

    const Node& mTop;
    std::string mText;
    int mPreserved = 0;
    int mBreaks = 0;
    bool mBlank = false;
};

}  // namespace

std::string plainText(const Node& top) { return TextOf(top).Run(); }

}  // namespace quillbox::html
