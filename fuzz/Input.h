#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace quillbox {

inline void require(bool holds) {
    if (!holds) std::abort();
}

// The input as so many texts, cut at the bytes that no text has; those behind the last cut are empty.
inline std::vector<std::string> texts(const std::uint8_t* data, std::size_t size, std::size_t count) {
    std::vector<std::string> result(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0xFF && result.size() < count) {
            result.emplace_back();
        } else {
            result.back() += static_cast<char>(data[i]);
        }
    }
    result.resize(count);
    return result;
}

}  // namespace quillbox
