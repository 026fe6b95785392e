#pragma once

#include <utility>
#include <vector>

#include "base/AutomationError.h"
#include "base/Object.h"

namespace quillbox {

// Levels of a tree that can be walked and saved.
inline constexpr int kDeepestTree = 900;

// Counts the levels of a tree that is gone down by recursion; a level too deep fails.
class TreeNesting {
  public:
    TreeNesting() {
        if (mDepth >= kDeepestTree) throw AutomationError("The tree is nested too deep");
        ++mDepth;
    }
    ~TreeNesting() { --mDepth; }
    TreeNesting(const TreeNesting&) = delete;
    TreeNesting& operator=(const TreeNesting&) = delete;

  private:
    inline static thread_local int mDepth = 0;
};

// Visits the items of a tree, parents before their children, until a visit gives True. `children` gives the
// items below one. Works without recursion; a tree that is too deep, or that holds itself, fails.
template <class Item, class Children, class Visit>
void walkTree(std::vector<Ref<Item>> roots, Children&& children, Visit&& visit) {
    struct Level {
        std::vector<Ref<Item>> items;
        std::size_t next = 0;
    };
    std::vector<Level> levels;
    levels.push_back({std::move(roots)});
    while (!levels.empty()) {
        if (levels.back().next == levels.back().items.size()) {
            levels.pop_back();
            continue;
        }
        if (levels.size() > kDeepestTree) throw AutomationError("The tree is nested too deep");
        const auto item = levels.back().items[levels.back().next++];
        if (visit(item)) return;
        levels.push_back({children(*item)});
    }
}

// Lets a tree go without recursion. `takeChildren` takes the items below one away from it, unless someone
// else holds them.
template <class Item, class TakeChildren>
void dismantleTree(std::vector<Ref<Item>> doomed, TakeChildren&& takeChildren) {
    while (!doomed.empty()) {
        const auto item = std::move(doomed.back());
        doomed.pop_back();
        if (item.use_count() > 1) continue;
        for (auto& child : takeChildren(*item)) doomed.push_back(std::move(child));
    }
}

}  // namespace quillbox
