#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/FoldedMap.h"
#include "base/Text.h"

namespace quillbox {

// Keeps items in ascending order of their keys; equal keys stay in the order of adding.
template <class T>
class SortedList {
  public:
    void Add(T item, std::string_view key) {
        mOrder.push_back({placeOf(key), mItems.size()});
        mItems.push_back(std::move(item));
    }

    // The items in their order; none are left behind.
    std::vector<T> Take() {
        std::sort(mOrder.begin(), mOrder.end(),
                  [this](const Entry& a, const Entry& b) { return isBefore(a, b); });
        std::vector<T> items;
        items.reserve(mItems.size());
        for (const auto& entry : mOrder) items.push_back(std::move(mItems[entry.number]));
        mOrder.clear();
        mItems.clear();
        return items;
    }

  private:
    // Where a key stands: a stretch of all of them, whose beginning decides most comparisons.
    struct Place {
        std::uint64_t beginning = 0;
        std::size_t start = 0, size = 0;
    };
    struct Entry {
        Place place;
        std::size_t number;
    };

    // It costs more to find than all the rest, and keys come again.
    const Place& placeOf(std::string_view key) {
        if (const auto known = mPlaces.find(key); known != mPlaces.end()) return known->second;
        const auto bytes = sortKey(key);
        Place place{0, mBytes.size(), bytes.size()};
        for (std::size_t at = 0; at < sizeof place.beginning; ++at) {
            const auto byte = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
            place.beginning = place.beginning << 8 | byte;
        }
        mBytes += bytes;
        return mPlaces.emplace(key, place).first->second;
    }

    bool isBefore(const Entry& a, const Entry& b) const {
        if (a.place.beginning != b.place.beginning) return a.place.beginning < b.place.beginning;
        const int order = a.place.start == b.place.start ? 0 : whole(a.place).compare(whole(b.place));
        return order == 0 ? a.number < b.number : order < 0;
    }
    std::string_view whole(const Place& place) const {
        return std::string_view(mBytes).substr(place.start, place.size);
    }

    TextMap<Place> mPlaces;
    std::string mBytes;
    std::vector<Entry> mOrder;
    std::vector<T> mItems;
};

}  // namespace quillbox
