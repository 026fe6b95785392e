#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillbox::html {

struct Markup;

// Elements in each other, and bytes in a text.
constexpr std::size_t kDeepest = 500;
constexpr std::size_t kLongest = std::size_t{1} << 30;

struct Attribute {
    std::string name;
    std::string value;
    bool changed = false;
};

// A start tag of the source; an empty range where the source has none. The elements that the parser makes of
// one tag, when it mends bad nesting, share it: the author wrote one set of attributes.
struct StartTag {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    bool touched = false;
    std::vector<Attribute> attributes;

    const Attribute* Find(std::string_view name) const;
    void Set(const std::string& name, const std::string& value);
};

enum class Kind : std::uint8_t { Root, Element, Text, Comment, Doctype };
enum class Space : std::uint8_t { Html, Svg, MathMl };

// A node and where it stands in the source of its markup:
//   leadBegin .. begin .. openEnd .. (children) .. tailBegin .. closeBegin .. end
// Between leadBegin and begin, and between tailBegin and closeBegin, lies what the parser passed over, such
// as a stray end tag. The tail counts in the source of the children.
struct Node {
    Kind kind = Kind::Element;
    Space space = Space::Html;
    bool scattered = false;  // its source is not one piece, as bad nesting was mended
    bool verbatim = false;   // its children are scattered: they are written as one piece of the source
    bool rebuilt = false;    // both its tags are written, and nothing that the parser passed over
    bool changed = false;    // it or something in it is no longer as in the source

    std::uint32_t leadBegin = 0;
    std::uint32_t begin = 0;
    std::uint32_t openEnd = 0;
    std::uint32_t tailBegin = 0;
    std::uint32_t closeBegin = 0;
    std::uint32_t end = 0;
    std::uint32_t textBegin = 0;  // of a text, in Markup::text
    std::uint32_t textEnd = 0;

    std::string_view name;
    StartTag* tag = nullptr;
    Markup* markup = nullptr;
    Markup* inner = nullptr;  // where the children come from
    Node* parent = nullptr;
    Node* firstChild = nullptr;
    Node* lastChild = nullptr;
    Node* previous = nullptr;
    Node* next = nullptr;

    std::string_view Text() const;
    bool IsElement(std::string_view wanted) const { return kind == Kind::Element && name == wanted; }
};

// What one parse gave: the source and the nodes in it. Text that is put into an element later becomes a
// markup of its own, grafted onto the one that holds the element.
struct Markup : std::enable_shared_from_this<Markup> {
    std::string source;
    std::string text;  // of all text nodes, entities decoded
    std::vector<Node> nodes;
    std::vector<StartTag> tags;             // of the source: never more than are reserved
    std::list<StartTag> addedTags;          // of elements without one that got an attribute later
    std::unordered_set<std::string> names;  // of the elements that HTML does not know
    std::size_t depth = 0;

    Markup* owner = nullptr;
    std::size_t uses = 0;  // as the content of an element, and by each of its top nodes
    std::unordered_map<const Markup*, std::shared_ptr<Markup>> grafts;

    Markup() = default;
    Markup(const Markup&) = delete;
    Markup& operator=(const Markup&) = delete;
    ~Markup();

    // Above the top nodes until they are grafted.
    Node& Root() { return nodes.front(); }
};

// The node after this one and all below it in document order, inside `top`; null at the end.
inline const Node* followingBeyond(const Node& node, const Node& top) {
    const auto* at = &node;
    while (at != &top && !at->next) at = at->parent;
    return at == &top ? nullptr : at->next;
}
// The node after this one.
inline const Node* following(const Node& node, const Node& top) {
    return node.firstChild ? node.firstChild : followingBeyond(node, top);
}
inline Node* following(Node& node, const Node& top) {
    return const_cast<Node*>(following(static_cast<const Node&>(node), top));
}

std::size_t depthOf(const Node& node);

void append(Node& parent, Node& child);
void insertAfter(Node& sibling, Node& node);
void unlink(Node& node);

// Says of a node and of all above it that they are not as in the source.
void markChanged(Node& node);

// Puts the nodes of a parsed fragment in place of all children.
void replaceChildren(Node& element, std::shared_ptr<Markup> fragment);
// Puts the nodes of a parsed fragment in place of an element that has a parent.
void replaceNode(Node& element, std::shared_ptr<Markup> fragment);
void setAttribute(Node& element, const std::string& name, const std::string& value);

// Without regard to case, as names of tags and attributes are compared.
bool sameName(std::string_view a, std::string_view b);
bool isBlank(std::string_view text);
// Elements that never have content or an end tag.
bool isVoid(std::string_view name);
// Elements whose content is text alone, read to their end tag.
bool isRawText(std::string_view name);
// Elements that stay in force behind the block in which they stand until their end tag comes.
bool isFormatting(std::string_view name);

}  // namespace quillbox::html
