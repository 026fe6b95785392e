#include "adapters/html/Parser.h"

#include <myhtml/api.h>

#include <algorithm>
#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

#include "adapters/html/CleanText.h"
#include "adapters/html/Layout.h"
#include "adapters/html/Reading.h"
#include "base/AutomationError.h"

namespace quillbox::html {

namespace {

// The library's tree and our tables are made anew behind a source of this size, to give their memory back.
constexpr std::size_t kKeepUpTo = std::size_t{256} << 10;

struct FreeLibrary {
    void operator()(myhtml_t* library) const { myhtml_destroy(library); }
    void operator()(myhtml_tree_t* tree) const { myhtml_tree_destroy(tree); }
};

template <class T>
T* orOutOfMemory(T* pointer) {
    if (!pointer) throw std::bad_alloc();
    return pointer;
}

// Copies the library's tree into nodes of ours.
class Copy {
  public:
    Copy(Reading& reading, myhtml_tree_t& tree, Markup& markup)
        : mReading(reading), mTree(tree), mMarkup(markup) {}

    void From(myhtml_tree_node_t* top) {
        constexpr std::size_t kOurOwn = 3;
        mMarkup.nodes.reserve(mReading.MostNodes() + kOurOwn);
        mMarkup.tags.reserve(mReading.MostNodes());
        auto* parent = &Add(Kind::Root);
        for (auto* at = top; at;) {
            auto& node = Take(*at, *parent);
            if (auto* const child = myhtml_node_child(at)) {
                at = child;
                parent = &node;
                ++mDepth;
            } else {
                at = Beyond(at, parent);
            }
        }
    }

    // The library makes no elements where the source ends within an end tag.
    void AddBody() {
        auto& html = ChildOr(mMarkup.Root(), "html", "html");
        ChildOr(html, "body", "frameset");
    }

  private:
    Node& ChildOr(Node& parent, std::string_view name, std::string_view instead) {
        for (auto* at = parent.firstChild; at; at = at->next) {
            if (at->IsElement(name) || at->IsElement(instead)) return *at;
        }
        auto& node = Add(Kind::Element);
        node.name = name;
        append(parent, node);
        return node;
    }

    // The next node that is not below this one; `parent` becomes ours of it.
    myhtml_tree_node_t* Beyond(myhtml_tree_node_t* node, Node*& parent) {
        for (;;) {
            if (auto* const next = myhtml_node_next(node)) return next;
            if (mDepth == 0) return nullptr;
            --mDepth;
            node = myhtml_node_parent(node);
            parent = parent->parent;
        }
    }

    // Nodes point at each other, so that they must stay where they are.
    Node& Add(Kind kind) {
        if (mMarkup.nodes.size() == mMarkup.nodes.capacity())
            throw AutomationError("The HTML parser made more nodes than it told of");
        auto& node = mMarkup.nodes.emplace_back();
        node.kind = kind;
        node.markup = node.inner = &mMarkup;
        return node;
    }

    Node& Take(myhtml_tree_node_t& source, Node& parent) {
        auto* const token = mReading.TokenOf(source);
        switch (myhtml_node_tag_id(&source)) {
            case MyHTML_TAG__TEXT:
                return TakeText(source, token, parent);
            case MyHTML_TAG__COMMENT:
                return Place(Add(Kind::Comment), token, parent);
            case MyHTML_TAG__DOCTYPE:
                return Place(Add(Kind::Doctype), token, parent);
            default:
                return TakeElement(source, token, parent);
        }
    }

    static Node& Place(Node& node, Token* token, Node& parent) {
        append(parent, node);
        if (token && !token->node) token->node = &node;
        return node;
    }

    Node& TakeText(myhtml_tree_node_t& source, Token* token, Node& parent) {
        auto& node = Add(Kind::Text);
        Place(node, token, parent);
        if (token && token->node == &node) SetText(node, *token);
        const auto* joined = mReading.JoinedTo(source);
        if (!joined) return node;
        auto* last = &node;
        for (const auto index : *joined) {
            auto& itsToken = mReading.Tokens()[index];
            auto& more = Add(Kind::Text);
            insertAfter(*last, more);
            itsToken.node = &more;
            SetText(more, itsToken);
            last = &more;
        }
        return node;
    }

    static void SetText(Node& node, const Token& token) {
        node.textBegin = token.textBegin;
        node.textEnd = token.textEnd;
    }

    Node& TakeElement(myhtml_tree_node_t& source, Token* token, Node& parent) {
        auto& node = Add(Kind::Element);
        node.name = NameOf(source);
        switch (myhtml_node_namespace(&source)) {
            case MyHTML_NAMESPACE_SVG:
                node.space = Space::Svg;
                break;
            case MyHTML_NAMESPACE_MATHML:
                node.space = Space::MathMl;
                break;
            default:
                break;
        }
        append(parent, node);
        const auto depth = mDepth + 1;
        if (depth > kDeepest) throw AutomationError("The HTML nests deeper than 500 elements");
        if (depth > mMarkup.depth) mMarkup.depth = depth;
        if (token && token->node) return Share(node, *token->node);
        node.tag = &mMarkup.tags.emplace_back();
        TakeAttributes(source, *node.tag);
        if (!token) return node;
        token->node = &node;
        node.tag->begin = token->begin;
        node.tag->end = token->end;
        return node;
    }

    // The parser made two elements of one start tag.
    static Node& Share(Node& node, Node& first) {
        node.tag = first.tag;
        node.scattered = first.scattered = true;
        return node;
    }

    std::string_view NameOf(myhtml_tree_node_t& source) {
        const auto id = myhtml_node_tag_id(&source);
        std::size_t length = 0;
        const auto* name = myhtml_tag_name_by_id(&mTree, id, &length);
        if (id < MyHTML_TAG_LAST_ENTRY) return {name, length};
        return *mMarkup.names.emplace(name, length).first;
    }

    static void TakeAttributes(myhtml_tree_node_t& source, StartTag& tag) {
        std::unordered_set<std::string> seen;
        for (auto* at = myhtml_node_attribute_first(&source); at; at = myhtml_attribute_next(at)) {
            auto name = NameOf(*at);
            if (IsSecond(name, tag, seen)) continue;
            std::size_t length = 0;
            const auto* value = myhtml_attribute_value(at, &length);
            tag.attributes.push_back({std::move(name), value ? std::string(value, length) : std::string()});
        }
    }

    // The first of two alike holds. A table is made for many alone.
    static bool IsSecond(const std::string& name, const StartTag& tag,
                         std::unordered_set<std::string>& seen) {
        constexpr std::size_t kFew = 16;
        const auto& all = tag.attributes;
        if (all.size() < kFew) {
            return std::any_of(all.begin(), all.end(),
                               [&](const Attribute& one) { return one.name == name; });
        }
        if (seen.empty()) {
            for (const auto& one : all) seen.insert(one.name);
        }
        return !seen.insert(name).second;
    }

    // The library takes a prefix off, as in "xlink:href".
    static std::string NameOf(myhtml_tree_attr_t& attribute) {
        std::size_t length = 0;
        const auto* key = myhtml_attribute_key(&attribute, &length);
        const auto name = key ? std::string(key, length) : std::string();
        switch (myhtml_attribute_namespace(&attribute)) {
            case MyHTML_NAMESPACE_XLINK:
                return "xlink:" + name;
            case MyHTML_NAMESPACE_XML:
                return "xml:" + name;
            case MyHTML_NAMESPACE_XMLNS:
                return name == "xmlns" ? name : "xmlns:" + name;
            default:
                return name;
        }
    }

    Reading& mReading;
    myhtml_tree_t& mTree;
    Markup& mMarkup;
    std::size_t mDepth = 0;  // of the parent
};

std::shared_ptr<Markup> startMarkup(std::string_view html) {
    if (html.size() > kLongest) throw AutomationError("The HTML is longer than 1 GiB");
    auto markup = std::make_shared<Markup>();
    markup->source = cleanText(html);
    if (markup->source.size() > kLongest) throw AutomationError("The HTML is longer than 1 GiB");
    return markup;
}

}  // namespace

struct Parser::Library {
    std::unique_ptr<myhtml_t, FreeLibrary> library{orOutOfMemory(myhtml_create())};
    std::unique_ptr<myhtml_tree_t, FreeLibrary> tree;
    std::vector<Token> tokens;
    LayoutSpace layoutSpace;

    Library() {
        if (myhtml_init(library.get(), MyHTML_OPTIONS_PARSE_MODE_SINGLE, 1, 0) != MyHTML_STATUS_OK) {
            throw AutomationError("The HTML parser could not be started");
        }
    }

    template <class Read>
    std::shared_ptr<Markup> Parse(std::string_view html, bool document, Read&& read) {
        auto markup = startMarkup(html);
        // The tree is put back only after a parse that went well.
        auto used = std::move(tree);
        if (!used) {
            used.reset(orOutOfMemory(myhtml_tree_create()));
            if (myhtml_tree_init(used.get(), library.get()) != MyHTML_STATUS_OK) throw std::bad_alloc();
        }
        Reading reading(*used, *markup, tokens);
        Copy copy(reading, *used, *markup);
        copy.From(read(reading, *used));
        if (document) copy.AddBody();
        layOut(*markup, tokens, layoutSpace);
        if (html.size() <= kKeepUpTo) {
            tree = std::move(used);
        } else {
            tokens = {};
            layoutSpace = {};
        }
        return markup;
    }
};

Parser::Parser() : mLibrary(std::make_unique<Library>()) {}
Parser::~Parser() = default;

std::shared_ptr<Markup> Parser::Document(std::string_view html) {
    return mLibrary->Parse(html, true, [](Reading& reading, myhtml_tree_t& tree) {
        reading.Document();
        return myhtml_node_child(myhtml_tree_get_document(&tree));
    });
}

std::shared_ptr<Markup> Parser::Fragment(std::string_view html, std::string_view name, Space space) {
    return mLibrary->Parse(html, false, [&](Reading& reading, myhtml_tree_t& tree) {
        reading.Fragment(name, space);
        // The library hangs a fragment below an element "html" of its own.
        return myhtml_node_child(myhtml_node_child(myhtml_tree_get_document(&tree)));
    });
}

}  // namespace quillbox::html
