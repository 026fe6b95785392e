#pragma once

#include <array>
#include <string_view>

namespace quillbox {

// A few characters that are looked for together.
class CharSet {
  public:
    explicit constexpr CharSet(std::string_view characters) {
        for (const char c : characters) mHas[static_cast<unsigned char>(c)] = true;
    }

    constexpr bool Has(char c) const { return mHas[static_cast<unsigned char>(c)]; }
    // The place of the first of them; none where none comes.
    std::size_t Find(std::string_view text, std::size_t from = 0) const {
        for (auto at = from; at < text.size(); ++at) {
            if (Has(text[at])) return at;
        }
        return std::string_view::npos;
    }

  private:
    std::array<bool, 256> mHas{};
};

}  // namespace quillbox
