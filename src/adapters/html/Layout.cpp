#include "adapters/html/Layout.h"

#include <algorithm>
#include <unordered_map>

namespace quillbox::html {

namespace {

using Index = std::uint32_t;
using Place = NodePlace;
constexpr Index kNone = NodePlace::kNone;

bool isHeading(std::string_view name) {
    return name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6';
}

// An end tag of one heading closes any other.
bool closesByName(std::string_view endTag, std::string_view element) {
    return endTag == element || (isHeading(endTag) && isHeading(element));
}

bool isBodyEnd(const Token& token) {
    return token.kind == Token::Kind::End && (token.name == "body" || token.name == "html");
}

Node* commonAncestor(Node* a, Node* b) {
    auto depthA = depthOf(*a);
    auto depthB = depthOf(*b);
    for (; depthA > depthB; --depthA) a = a->parent;
    for (; depthB > depthA; --depthB) b = b->parent;
    for (; a != b; a = a->parent) b = b->parent;
    return a;
}

class Layout {
  public:
    Layout(Markup& markup, std::vector<Token>& tokens, LayoutSpace& space)
        : mMarkup(markup), mTokens(tokens), mSpace(space) {}

    void Run() {
        CloseBody();
        mSpace.places.assign(mMarkup.nodes.size(), {});
        FindLastOpened();
        MatchEndTags();
        Gather();
        if (mIsMended) MarkSplitElements();
        Measure();
        if (mIsMended) MarkVerbatim();
    }

  private:
    Place& PlaceOf(const Node& node) {
        return mSpace.places[static_cast<std::size_t>(&node - mMarkup.nodes.data())];
    }

    // The body ends at the last of its end tags. The parser takes the white space behind it for content and
    // hangs comments in front of it elsewhere.
    void CloseBody() {
        auto* const html = Child(mMarkup.Root(), "html");
        auto* const body = html ? Child(*html, "body") : nullptr;
        if (!body) return;
        const auto trails = [](const Token& token) {
            return token.kind == Token::Kind::Comment || token.blank || isBodyEnd(token);
        };
        const auto tail = std::find_if_not(mTokens.rbegin(), mTokens.rend(), trails).base();
        auto bodyEnd = mTokens.end();
        auto htmlEnd = mTokens.end();
        for (auto at = tail; at != mTokens.end(); ++at) {
            if (isBodyEnd(*at)) (at->name == "body" ? bodyEnd : htmlEnd) = at;
        }
        if (bodyEnd != mTokens.end()) {
            bodyEnd->closes = body;
            if (htmlEnd < bodyEnd) htmlEnd = mTokens.end();
        }
        const auto end = bodyEnd != mTokens.end() ? bodyEnd : htmlEnd;
        for (auto at = tail; at != mTokens.end(); ++at) SettleTail(*at, at < end, *body);
        if (htmlEnd != mTokens.end()) htmlEnd->closes = html;
        if (bodyEnd == mTokens.end()) CloseWithoutTag(*body, end);
    }

    void CloseWithoutTag(Node& body, std::vector<Token>::iterator where) {
        Token close;
        close.kind = Token::Kind::End;
        close.begin = close.end =
            where == mTokens.end() ? static_cast<std::uint32_t>(mMarkup.source.size()) : where->begin;
        close.closes = &body;
        mTokens.insert(where, close);
    }

    static void SettleTail(Token& token, bool inBody, Node& body) {
        if (!token.node) return;
        const bool comment = token.kind == Token::Kind::Comment;
        const auto* parent = token.node->parent;
        // Nodes stand in the markup in document order.
        const bool behindBody =
            token.node > &body && (parent == body.parent || parent == body.parent->parent);
        if (comment && inBody && behindBody) {
            unlink(*token.node);
            append(body, *token.node);
        }
        if (!comment && !inBody) {
            unlink(*token.node);
            token.node = nullptr;
        }
    }

    static Node* Child(Node& parent, std::string_view name) {
        for (auto* at = parent.firstChild; at; at = at->next) {
            if (at->IsElement(name)) return at;
        }
        return nullptr;
    }

    // Nodes that were taken out have no parent.
    bool IsInTree(const Node& node) const { return node.parent || node.kind == Kind::Root; }

    void FindLastOpened() {
        for (Index index = 0; index < mTokens.size(); ++index) {
            if (mTokens[index].node) PlaceOf(*mTokens[index].node).open = index;
        }
        for (auto at = mMarkup.nodes.rbegin(); at != mMarkup.nodes.rend(); ++at) {
            auto& place = PlaceOf(*at);
            if (place.open != kNone) place.lastOpened = std::max(place.lastOpened, place.open + 1);
            if (!at->parent) continue;
            auto& above = PlaceOf(*at->parent).lastOpened;
            above = std::max(above, place.lastOpened);
        }
    }

    // Finds for each end tag the nearest element that ends there.
    void MatchEndTags() {
        auto* current = &mMarkup.Root();
        for (Index index = 0; index < mTokens.size(); ++index) {
            auto& token = mTokens[index];
            if (token.node) {
                current = MayHoldMore(*token.node) ? token.node : token.node->parent;
                continue;
            }
            if (token.kind != Token::Kind::End) continue;
            if (!token.closes && !isBodyEnd(token)) {
                auto* const element = OpenElement(*current, token.name);
                const bool ends =
                    element && PlaceOf(*element).close == kNone && PlaceOf(*element).lastOpened <= index;
                if (ends) token.closes = element;
            }
            if (!token.closes) continue;
            PlaceOf(*token.closes).close = index;
            current = token.closes->parent;
        }
    }

    static bool MayHoldMore(const Node& node) {
        if (node.kind != Kind::Element) return false;
        return (node.firstChild && node.space == Space::Html) || !isVoid(node.name);
    }

    static Node* OpenElement(Node& from, std::string_view name) {
        for (auto* at = &from; at && at->kind == Kind::Element; at = at->parent) {
            if (closesByName(name, at->name)) return at;
            if (at->name == "table" || at->name == "template") return nullptr;
        }
        return nullptr;
    }

    // Adds up the tokens of each node from the leaves, and sees whether they are one run.
    void Gather() {
        auto& ownedBefore = mSpace.ownedBefore;
        ownedBefore.resize(mTokens.size() + 1);
        ownedBefore[0] = 0;
        for (Index index = 0; index < mTokens.size(); ++index) {
            const bool owned = mTokens[index].node || mTokens[index].closes;
            ownedBefore[index + 1] = ownedBefore[index] + (owned ? 1 : 0);
        }
        for (auto at = mMarkup.nodes.rbegin(); at != mMarkup.nodes.rend(); ++at) {
            auto& node = *at;
            mIsMended |= node.scattered;
            if (!IsInTree(node)) continue;
            auto& place = PlaceOf(node);
            Include(place, place.open);
            Include(place, place.close);
            if (place.count == 0) continue;
            const bool oneRun = ownedBefore[place.last + 1] - ownedBefore[place.first] == place.count;
            const bool opens = place.open == kNone || place.open == place.first;
            const bool closes = place.close == kNone || place.close == place.last;
            if (node.kind == Kind::Root) continue;
            node.scattered = node.scattered || !oneRun || !opens || !closes;
            auto& above = PlaceOf(*node.parent);
            if (place.last >= above.firstOfNext) above.disordered = true;
            mIsMended |= node.scattered || above.disordered;
            above.firstOfNext = place.first;
            above.first = std::min(above.first, place.first);
            above.last = above.last == kNone ? place.last : std::max(above.last, place.last);
            above.count += place.count;
        }
    }

    static void Include(Place& place, Index token) {
        if (token == kNone) return;
        place.first = std::min(place.first, token);
        place.last = place.last == kNone ? token : std::max(place.last, token);
        ++place.count;
    }

    // What holds a part of a split element, but not all of it, cannot be written from the source.
    void MarkSplitElements() {
        std::unordered_map<const StartTag*, Node*> ancestors;
        std::vector<Node*> parts;
        for (auto& node : mMarkup.nodes) {
            if (!node.scattered || !node.tag || node.tag->begin == node.tag->end) continue;
            auto& ancestor = ancestors.emplace(node.tag, &node).first->second;
            ancestor = commonAncestor(ancestor, &node);
            parts.push_back(&node);
        }
        for (auto* part : parts) {
            const auto* ancestor = ancestors[part->tag];
            for (auto* at = part; at != ancestor; at = at->parent) at->scattered = true;
        }
    }

    void Measure() {
        std::uint32_t done = 0;
        auto& doneBefore = mSpace.doneBefore;
        doneBefore.clear();
        for (const auto& token : mTokens) {
            doneBefore.push_back(done);
            if (token.node) {
                token.node->leadBegin = done;
                token.node->begin = token.begin;
                token.node->openEnd = token.end;
            } else if (token.closes) {
                token.closes->tailBegin = done;
                token.closes->closeBegin = token.begin;
                token.closes->end = token.end;
            }
            if (token.node || token.closes) done = token.end;
        }
        for (auto& node : mMarkup.nodes) {
            if (node.parent) MeasureImplied(node);
        }
        auto& root = mMarkup.Root();
        root.tailBegin = done;
        root.closeBegin = root.end = static_cast<std::uint32_t>(mMarkup.source.size());
    }

    void MeasureImplied(Node& node) {
        const auto& place = PlaceOf(node);
        if (place.count == 0) {
            const auto where = node.previous ? node.previous->end : node.parent->openEnd;
            node.leadBegin = node.begin = node.openEnd = node.tailBegin = node.closeBegin = node.end = where;
            return;
        }
        if (place.open == kNone) node.leadBegin = node.begin = node.openEnd = mSpace.doneBefore[place.first];
        if (place.close == kNone) node.tailBegin = node.closeBegin = node.end = mTokens[place.last].end;
    }

    void MarkVerbatim() {
        for (auto& node : mMarkup.nodes) {
            if (!node.scattered && PlaceOf(node).disordered) node.verbatim = true;
            if (node.scattered && !node.parent->scattered) node.parent->verbatim = true;
        }
    }

    Markup& mMarkup;
    std::vector<Token>& mTokens;
    LayoutSpace& mSpace;
    bool mIsMended = false;  // something is scattered or out of order
};

}  // namespace

void layOut(Markup& markup, std::vector<Token>& tokens, LayoutSpace& space) {
    Layout(markup, tokens, space).Run();
}

}  // namespace quillbox::html
