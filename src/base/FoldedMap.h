#pragma once

#include <tsl/robin_map.h>
#include <tsl/robin_set.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/Text.h"

namespace quillbox {

// Tables without nodes of their own, as builds ask them a dozen times a page: a look-up waits for memory once
// or twice. What they hold moves when they grow. Their order is another in each process, so that no input can
// be made for which they are slow.

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const;
};
template <class T>
using TextMap = tsl::robin_map<std::string, T, TextHash, std::equal_to<>,
                               std::allocator<std::pair<std::string, T>>, true>;
using TextSet = tsl::robin_set<std::string, TextHash, std::equal_to<>, std::allocator<std::string>, true>;

// Keys that ignore case. What is asked for needs no folding.
struct FoldedHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const;
};
struct FoldedEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return a == b || (!beginDifferently(a, b) && sameText(a, b));
    }

  private:
    // Most texts that are not the same can be told by their first letters.
    static bool beginDifferently(std::string_view a, std::string_view b) {
        if (a.empty() || b.empty()) return a.size() != b.size();
        const auto one = static_cast<unsigned char>(a.front()), other = static_cast<unsigned char>(b.front());
        return (one | other) < 0x80 && ((one ^ other) & ~0x20) != 0;
    }
};
template <class T>
using FoldedMap =
    tsl::robin_map<std::string, T, FoldedHash, FoldedEqual, std::allocator<std::pair<std::string, T>>, true>;
using FoldedSet = tsl::robin_set<std::string, FoldedHash, FoldedEqual, std::allocator<std::string>, true>;
// Of texts that stand elsewhere for as long.
using FoldedViews = tsl::robin_set<std::string_view, FoldedHash, FoldedEqual>;

}  // namespace quillbox
