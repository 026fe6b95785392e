#pragma once

#include <cstdint>
#include <string_view>

namespace quillbox::html {

struct Node;

// A piece of source as the tokenizer cut it. Together with the finished tree the tokens, in the order of the
// source, tell where each node stands.
struct Token {
    enum class Kind : std::uint8_t { Start, End, Text, Comment, Doctype };
    Kind kind = Kind::Text;
    bool blank = false;  // text of nothing but white space
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t textBegin = 0;  // of a text, in Markup::text
    std::uint32_t textEnd = 0;
    std::string_view name;  // of an end tag
    Node* node = nullptr;   // what the parser made of it; none for an end tag and what it passed over
    Node* closes = nullptr;
};

}  // namespace quillbox::html
