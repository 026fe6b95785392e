#include "engine/ContentsTree.h"

#include <unordered_set>

#include "base/Text.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

constexpr int kRelatedContents = 3;

void writeLine(const std::string& line, std::string& out) {
    if (!line.empty()) out += line + "\n";
}

bool isRelated(const ContentsTree& tree, std::size_t node) {
    return tree.Nodes()[node].def->Kind == kRelatedContents;
}

void endNode(const ContentsTree& tree, const ContentsStyle& style, std::size_t node, std::string& out) {
    if (style.writeNodeEnd && !isRelated(tree, node)) style.writeNodeEnd(tree, node, out);
}

// Related contents hold no related contents of their own.
void writeRelated(const ContentsStyle& style, std::string& out) {
    auto inner = style;
    inner.related = [] { return std::vector<std::shared_ptr<const ContentsTree>>(); };
    for (const auto& tree : style.related()) writeContents(*tree, inner, out);
}

}  // namespace

// A parent that does not stand earlier in the list is none, so that no list makes a ring.
ContentsTree::ContentsTree(const TOCDefinition& definition, const IsPage& isPage) {
    std::unordered_map<const NodeDef*, std::size_t> known;
    std::unordered_set<const NodeDef*> leftOut;
    std::vector<std::size_t> lastChild;
    for (const auto& def : definition.Nodes->Items()) {
        const auto parent = def->Parent.Get();
        if (!def->Included || leftOut.contains(parent.get())) {
            leftOut.insert(def.get());
            continue;
        }
        Node node{def, {}, {}, {}, 1};
        if (const auto found = known.find(parent.get()); found != known.end()) {
            node.parent = found->second;
            node.level = mNodes[found->second].level + 1;
        }
        known.emplace(def.get(), mNodes.size());
        mNodes.push_back(std::move(node));
        link(mNodes.size() - 1, lastChild);
        addPage(mNodes.size() - 1, isPage);
    }
}

// `lastChild` has at 0 the last node at the top and at n + 1 the last below node n.
void ContentsTree::link(std::size_t position, std::vector<std::size_t>& lastChild) {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    lastChild.resize(mNodes.size() + 1, kNone);
    const auto parent = mNodes[position].parent;
    const std::size_t slot = parent ? *parent + 1 : 0;
    if (lastChild[slot] != kNone) {
        mNodes[lastChild[slot]].nextSibling = position;
    } else {
        (parent ? mNodes[*parent].firstChild : mFirst) = position;
    }
    lastChild[slot] = position;
}

void ContentsTree::addPage(std::size_t position, const IsPage& isPage) {
    auto& node = mNodes[position];
    const auto& link = node.def->LinkTarget;
    node.leadsToPage = !link.empty() && isPage(link);
    const std::string plain(withoutFragment(link));
    // The name of a page may hold what begins a fragment in other links.
    const bool isPlain = !plain.empty() && (plain.size() == link.size() ? node.leadsToPage : isPage(plain));
    const auto& page = isPlain ? plain : link;
    if (!(isPlain || node.leadsToPage) || isRemote(page)) return;
    if (mByPage.emplace(page, mReading.size()).second) mReading.push_back(position);
}

std::optional<std::size_t> ContentsTree::ReadingPlace(std::string_view page) const {
    const auto found = mByPage.find(page);
    return found == mByPage.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> ContentsTree::NodeAt(std::size_t place) const {
    return place < mReading.size() ? std::optional(mReading[place]) : std::nullopt;
}

// Goes down without recursion: a list of contents may be as deep as it likes.
void writeContents(const ContentsTree& tree, const ContentsStyle& style, std::string& out) {
    const auto& nodes = tree.Nodes();
    if (nodes.empty()) return;
    writeLine(style.bookPrefix, out);
    for (auto at = tree.First(); at;) {
        const auto& node = nodes[*at];
        if (isRelated(tree, *at)) {
            writeRelated(style, out);
        } else {
            style.writeNode(tree, *at, out);
        }
        if (node.IsBook()) {
            writeLine(style.bookPrefix, out);
            at = node.firstChild;
            continue;
        }
        endNode(tree, style, *at, out);
        while (at && !nodes[*at].nextSibling) {
            writeLine(style.bookSuffix, out);
            at = nodes[*at].parent;
            if (at) endNode(tree, style, *at, out);
        }
        if (at) at = nodes[*at].nextSibling;
    }
}

void writeSitemapNode(const ContentsTree& tree, std::size_t node, std::string& out) {
    const auto& def = *tree.Nodes()[node].def;
    const auto put = [&](const char* name, const std::string& value) {
        out.append("\t<param name=\"").append(name).append("\" value=\"").append(value).append("\">\n");
    };
    out += "<LI> <OBJECT type=\"text/sitemap\">\n";
    put("Name", htmlText(def.Caption));
    if (!def.LinkTarget.empty()) put("Local", htmlText(def.LinkTarget));
    if (def.HasCustomIcon) put("ImageNumber", std::to_string(def.IconNumber));
    out += "\t</OBJECT>\n";
}

}  // namespace quillbox
