// The general tags that follow the table of contents. Captions and links come ready for HTML.

#include <algorithm>

#include "base/Text.h"
#include "engine/CommonTags.h"
#include "engine/Html.h"

namespace quillbox {

namespace {

using Node = ContentsTree::Node;

std::string link(const TagRequest& request, const Node& node) {
    return hrefOf(request, node.def->LinkTarget, node.leadsToPage && request.document.Building());
}

std::string anchor(const TagRequest& request, const Node& node) {
    const auto caption = htmlText(node.def->Caption);
    if (node.def->LinkTarget.empty()) return caption;
    return "<a href=\"" + link(request, node) + "\">" + caption + "</a>";
}

// The page in work, where it stands in the contents.
struct Place {
    // The build's own.
    const ContentsTree* tree = nullptr;
    // When it is read; none for a page that stands nowhere.
    std::optional<std::size_t> reading;

    const Node* At(std::optional<std::size_t> node) const { return node ? &tree->Nodes()[*node] : nullptr; }
    const Node* Own() const { return Neighbour(0); }
    const Node* Neighbour(int step) const {
        return reading ? At(tree->NodeAt(*reading + static_cast<std::size_t>(step))) : nullptr;
    }
    // The nearest book above that leads to a page.
    const Node* Up() const {
        const auto* node = Own();
        do node = node ? At(node->parent) : nullptr;
        while (node && node->def->LinkTarget.empty());
        return node;
    }
};

Place placeOf(const TagRequest& request) {
    auto* build = request.document.Building();
    if (!build || build->pageName.empty()) return {};
    if (!build->readingPlace) {
        const auto tree = request.document.Contents();
        if (!tree) return {};
        build->readingPlace = tree->ReadingPlace(build->pageName);
    }
    return {build->contents.get(), *build->readingPlace};
}

std::string linkOrNothing(const TagRequest& request, const Node* node) {
    return node ? link(request, *node) : "";
}
std::string captionOrNothing(const Node* node) { return node ? htmlText(node->def->Caption) : ""; }

std::string nextPage(const TagRequest& r) { return linkOrNothing(r, placeOf(r).Neighbour(1)); }
std::string nextPageTitle(const TagRequest& r) { return captionOrNothing(placeOf(r).Neighbour(1)); }
std::string previousPage(const TagRequest& r) { return linkOrNothing(r, placeOf(r).Neighbour(-1)); }
std::string previousPageTitle(const TagRequest& r) { return captionOrNothing(placeOf(r).Neighbour(-1)); }
std::string upPage(const TagRequest& r) { return linkOrNothing(r, placeOf(r).Up()); }
std::string upPageTitle(const TagRequest& r) { return captionOrNothing(placeOf(r).Up()); }

// The books above the page, from the top.
std::string breadcrumb(const TagRequest& request) {
    const auto place = placeOf(request);
    const auto* node = place.Own();
    auto separator = request.Attribute("separator");
    if (separator.empty()) separator = " &gt; ";
    std::string trail;
    for (node = node ? place.At(node->parent) : nullptr; node; node = place.At(node->parent)) {
        trail.insert(0, anchor(request, *node) + (trail.empty() ? "" : separator));
    }
    return trail;
}

// Writes the list that begins with a node; the page's own node is marked.
void writeBranch(const TagRequest& request, const Place& place, const Node* first, int levels,
                 std::string& out) {
    if (levels == 0 || !first) return;
    const auto* own = place.Own();
    out += "<ul>";
    for (const auto* node = first; node; node = place.At(node->nextSibling)) {
        out += node == own ? "<li class=\"current\">" : "<li>";
        out += anchor(request, *node);
        writeBranch(request, place, place.At(node->firstChild), levels - 1, out);
        out += "</li>";
    }
    out += "</ul>";
}

// What lies below the page, as a list, or all that stands in the page's book; one level where the tag names
// no number of them.
std::string branch(const TagRequest& request) {
    static constexpr int kMostLevels = 20;
    const auto place = placeOf(request);
    const auto* node = place.Own();
    if (!node) return {};
    const auto asked = request.Attribute("levels");
    const int levels = asked.empty() ? 1 : std::clamp(integerOf(asked), 0, kMostLevels);
    std::string list;
    if (sameText(request.Attribute("of"), "book")) {
        const auto* book = place.At(node->parent);
        writeBranch(request, place, place.At(book ? book->firstChild : place.tree->First()), levels, list);
    } else {
        writeBranch(request, place, place.At(node->firstChild), levels, list);
    }
    return list;
}

std::string contentsCount(const TagRequest& request) {
    const auto tree = request.document.Contents();
    return std::to_string(tree ? tree->Nodes().size() : 0);
}

// The node that a scrap is being expanded for.
const Node* nodeInWork(const TagRequest& request) {
    const auto& place = request.document.CurrentNode();
    return place.tree ? &place.tree->Nodes()[place.node] : nullptr;
}

std::string nodeCaption(const TagRequest& request) { return captionOrNothing(nodeInWork(request)); }

std::string nodeLink(const TagRequest& request) { return linkOrNothing(request, nodeInWork(request)); }

std::string nodeIcon(const TagRequest& request) {
    const auto* node = nodeInWork(request);
    return node && node->def->HasCustomIcon ? std::to_string(node->def->IconNumber) : "";
}

std::string nodeKind(const TagRequest& request) {
    const auto* node = nodeInWork(request);
    if (!node) return {};
    return node->IsBook() ? "book" : "page";
}

// How the node stands to the page being written.
std::string nodePlace(const TagRequest& request) {
    const auto* node = nodeInWork(request);
    const auto place = placeOf(request);
    const auto* own = place.Own();
    if (!node || !own) return {};
    if (own->def == node->def) return "current";
    for (own = place.At(own->parent); own; own = place.At(own->parent)) {
        if (own->def == node->def) return "above";
    }
    return {};
}

std::string nodeLevel(const TagRequest& request) {
    const auto* node = nodeInWork(request);
    return node ? std::to_string(node->level) : "";
}

}  // namespace

void addContentsTags(TagTable& tags) {
    tags.insert({
        {"nextpage", nextPage},
        {"nextpagetitle", nextPageTitle},
        {"previouspage", previousPage},
        {"previouspagetitle", previousPageTitle},
        {"uppage", upPage},
        {"uppagetitle", upPageTitle},
        {"breadcrumb", breadcrumb},
        {"branch", branch},
        {"contentscount", contentsCount},
        {"nodecaption", nodeCaption},
        {"nodelink", nodeLink},
        {"nodeicon", nodeIcon},
        {"nodekind", nodeKind},
        {"nodelevel", nodeLevel},
        {"nodeplace", nodePlace},
    });
}

}  // namespace quillbox
