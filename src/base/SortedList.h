#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace quillbox {

// Keeps items in ascending order of their keys; equal keys stay in the order of adding.
template <class T>
class SortedList {
  public:
    void Add(T item, std::string_view key) {
        // Where a key stands costs more to find than all the rest, and keys come again.
        const auto [place, isNew] = mPlaces.try_emplace(std::string(key));
        if (isNew) place->second = sortKey(key);
        mOrder.push_back({beginning(place->second), &place->second, mItems.size()});
        mItems.push_back(std::move(item));
    }

    // The items in their order; none are left behind.
    std::vector<T> Take() {
        std::sort(mOrder.begin(), mOrder.end());
        std::vector<T> items;
        items.reserve(mItems.size());
        for (const auto& place : mOrder) items.push_back(std::move(mItems[place.number]));
        mOrder.clear();
        mItems.clear();
        return items;
    }

  private:
    // The beginning of the place decides most comparisons, and stands where it is compared.
    struct Place {
        std::uint64_t beginning;
        const std::string* whole;
        std::size_t number;

        bool operator<(const Place& other) const {
            if (beginning != other.beginning) return beginning < other.beginning;
            const int order = whole == other.whole ? 0 : whole->compare(*other.whole);
            return order == 0 ? number < other.number : order < 0;
        }
    };
    static std::uint64_t beginning(const std::string& place) {
        std::uint64_t first = 0;
        for (std::size_t at = 0; at < sizeof first; ++at)
            first = first << 8 | (at < place.size() ? static_cast<unsigned char>(place[at]) : 0);
        return first;
    }

    std::unordered_map<std::string, std::string> mPlaces;
    std::vector<Place> mOrder;
    std::vector<T> mItems;
};

}  // namespace quillbox
