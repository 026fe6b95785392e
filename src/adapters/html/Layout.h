#pragma once

#include <cstdint>
#include <vector>

#include "adapters/html/Token.h"
#include "adapters/html/Tree.h"

namespace quillbox::html {

// By tokens: the first and the last of a node and of all below it, its own, and how many.
struct NodePlace {
    static constexpr std::uint32_t kNone = static_cast<std::uint32_t>(-1);

    std::uint32_t open = kNone;
    std::uint32_t close = kNone;
    std::uint32_t first = kNone;
    std::uint32_t last = kNone;
    std::uint32_t count = 0;
    std::uint32_t lastOpened = 0;       // the last that opened something in it, and one
    std::uint32_t firstOfNext = kNone;  // while gathering: of the child to the right
    bool disordered = false;
};

// Tables that keep their memory from one document to the next.
struct LayoutSpace {
    std::vector<NodePlace> places;
    std::vector<std::uint32_t> ownedBefore;
    std::vector<std::uint32_t> doneBefore;
};

// Tells each node of a parsed tree where it stands in the source, and which of them the source holds in
// pieces.
void layOut(Markup& markup, std::vector<Token>& tokens, LayoutSpace& space);

// Makes a fragment fit to stand between other markup: closes what it leaves open, drops stray end tags.
void seal(Markup& fragment);

}  // namespace quillbox::html
