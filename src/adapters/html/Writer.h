#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "adapters/html/Tree.h"

namespace quillbox::html {

// Writes nodes as markup: pieces of the source as they stand, wherever nothing was changed.
class Writer {
  public:
    // The element with both its tags, also where the source leaves one out.
    static std::string Outer(const Node& element);
    static std::string Inner(const Node& node);

  private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    static Range ContentOf(const Node& node);
    void WriteNode(const Node& top);
    void WriteChildren(const Node& parent);
    bool Begin(const Node& node);
    void Finish(const Node& node);
    void WriteStartTag(const Node& node, bool always);
    void WriteEndTag(const Node& node, bool always);
    void WriteLead(const Node& node);
    void WriteTail(const Node& node);
    void WritePassedOver(const Node& parent, std::string_view source, Range range);
    void WriteVerbatim(const Node& node);
    void Copy(const Markup& markup, std::size_t begin, std::size_t end);

    std::string mText;
};

// A start tag anew: what was not changed in it stays as it is in the source.
std::string startTagText(const StartTag& tag, std::string_view name, std::string_view source);

}  // namespace quillbox::html
