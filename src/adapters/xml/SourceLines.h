#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quillbox::xml {

// In which line the elements of a parsed text stand. One entry a line with elements, not a copy of the text.
class SourceLines {
  public:
    void Add(std::size_t offset, int line) {
        if (mEntries.empty() || mEntries.back().line != line) {
            mEntries.push_back({static_cast<std::uint32_t>(offset), line});
        }
    }

    int LineOf(std::size_t offset) const {
        const auto next =
            std::upper_bound(mEntries.begin(), mEntries.end(), offset,
                             [](std::size_t at, const Entry& entry) { return at < entry.offset; });
        return next == mEntries.begin() ? 0 : std::prev(next)->line;
    }

  private:
    struct Entry {
        std::uint32_t offset;
        int line;
    };
    std::vector<Entry> mEntries;
};

}  // namespace quillbox::xml
