#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/FoldedMap.h"
#include "platform/engine/Contents.h"

namespace quillbox {

// A contents definition with its structure and its reading order worked out. A node is known by its position.
class ContentsTree {
  public:
    struct Node {
        Ref<NodeDef> def;
        std::optional<std::size_t> parent, firstChild, nextSibling;
        int level = 1;
        // Whether the whole link is the name of a page.
        bool leadsToPage = false;

        bool IsBook() const { return firstChild.has_value(); }
    };
    using IsPage = std::function<bool(const std::string& name)>;

    // Nodes that are not included are left out with all below them. `isPage` tells the links that count as
    // pages.
    ContentsTree(const TOCDefinition& definition, const IsPage& isPage);

    const std::vector<Node>& Nodes() const { return mNodes; }
    std::optional<std::size_t> First() const { return mFirst; }

    // Where a page comes when all are read in order, each where it stands first; by the page's name without
    // regard to case.
    std::optional<std::size_t> ReadingPlace(std::string_view page) const;
    // The node of the page at such a place.
    std::optional<std::size_t> NodeAt(std::size_t place) const;

  private:
    void link(std::size_t position, std::vector<std::size_t>& lastChild);
    void addPage(std::size_t position, const IsPage& isPage);

    std::vector<Node> mNodes;
    std::optional<std::size_t> mFirst;
    std::vector<std::size_t> mReading;
    // The place in `mReading`.
    FoldedMap<std::size_t> mByPage;
};

// How a contents tree is written: what stands before and after a list of nodes, and the text of one node,
// before and behind what lies below it.
struct ContentsStyle {
    std::string bookPrefix, bookSuffix;
    using WriteNode = std::function<void(const ContentsTree& tree, std::size_t node, std::string& out)>;
    WriteNode writeNode;
    // None where nothing follows a node.
    WriteNode writeNodeEnd;
    // The trees that stand at a node for the contents of related projects.
    std::function<std::vector<std::shared_ptr<const ContentsTree>>()> related;
};

void writeContents(const ContentsTree& tree, const ContentsStyle& style, std::string& out);

// A node as the contents file of HTML Help has it.
void writeSitemapNode(const ContentsTree& tree, std::size_t node, std::string& out);

}  // namespace quillbox
