#include "base/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace quillbox {

namespace {

using Byte = unsigned char;

// A block of a fixed size compiles to wide instructions.
constexpr std::size_t kBlock = 64;

struct AnyUtf8 {
    static Byte isOdd(Byte c) { return c & 0x80; }
    static bool accepts(std::uint32_t) { return true; }
};

struct XmlOnly {
    static Byte isOdd(Byte c) {
        return static_cast<Byte>((c & 0x80) | ((c < 0x20) & (c != '\t') & (c != '\n') & (c != '\r')));
    }
    static bool accepts(std::uint32_t scalar) { return scalar != 0xFFFE && scalar != 0xFFFF; }
};

template <class Rule>
bool isPlainBlock(const char* text) {
    Byte odd = 0;
    for (std::size_t i = 0; i < kBlock; ++i)
        odd = static_cast<Byte>(odd | Rule::isOdd(static_cast<Byte>(text[i])));
    return odd == 0;
}

struct Character {
    std::size_t length;  // 0 for bytes that are no character
    std::uint32_t scalar;
};

bool isTail(char c) { return (static_cast<Byte>(c) & 0xC0) == 0x80; }

Character characterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<Byte>(text[at + i]));
    };
    const auto tail = [&](std::size_t i) { return byte(i) & 0x3F; };
    const std::size_t left = text.size() - at;
    const std::uint32_t lead = byte(0);
    if (lead >= 0xC2 && lead <= 0xDF) {
        if (left < 2 || !isTail(text[at + 1])) return {0, 0};
        return {2, (lead & 0x1F) << 6 | tail(1)};
    }
    if ((lead & 0xF0) == 0xE0) {
        if (left < 3 || !isTail(text[at + 1]) || !isTail(text[at + 2])) return {0, 0};
        const std::uint32_t scalar = (lead & 0x0F) << 12 | tail(1) << 6 | tail(2);
        if (scalar < 0x800 || (scalar >= 0xD800 && scalar <= 0xDFFF)) return {0, 0};
        return {3, scalar};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (left < 4 || !isTail(text[at + 1]) || !isTail(text[at + 2]) || !isTail(text[at + 3]))
            return {0, 0};
        const std::uint32_t scalar = (lead & 0x07) << 18 | tail(1) << 12 | tail(2) << 6 | tail(3);
        if (scalar < 0x10000 || scalar > 0x10FFFF) return {0, 0};
        return {4, scalar};
    }
    return {0, 0};
}

template <class Rule>
std::size_t findRefused(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        while (text.size() - at >= kBlock && isPlainBlock<Rule>(text.data() + at)) at += kBlock;
        // One block, or the rest, character by character.
        const std::size_t end = std::min(text.size(), at + kBlock);
        while (at < end) {
            const auto byte = static_cast<Byte>(text[at]);
            if (byte < 0x80) {
                if (Rule::isOdd(byte)) return at;
                ++at;
                continue;
            }
            const auto character = characterAt(text, at);
            if (character.length == 0 || !Rule::accepts(character.scalar)) return at;
            at += character.length;
        }
    }
    return std::string_view::npos;
}

}  // namespace

std::size_t findInvalidUtf8(std::string_view text) { return findRefused<AnyUtf8>(text); }

std::size_t findNonXml(std::string_view text) { return findRefused<XmlOnly>(text); }

}  // namespace quillbox
