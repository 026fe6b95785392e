#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace quillbox {

// Keeps items in ascending order of their keys; equal keys stay in the order of adding.
template <class T>
class SortedList {
  public:
    void Add(T item, std::string_view key) { mEntries.emplace_back(sortKey(key), std::move(item)); }

    std::vector<T> Items() const {
        std::vector<const Entry*> order;
        order.reserve(mEntries.size());
        for (const auto& entry : mEntries) order.push_back(&entry);
        std::stable_sort(order.begin(), order.end(),
                         [](const Entry* a, const Entry* b) { return a->first < b->first; });
        std::vector<T> items;
        items.reserve(order.size());
        for (const auto* entry : order) items.push_back(entry->second);
        return items;
    }

  private:
    using Entry = std::pair<std::string, T>;
    std::vector<Entry> mEntries;
};

}  // namespace quillbox
