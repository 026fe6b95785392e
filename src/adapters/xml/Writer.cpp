#include "adapters/xml/Writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "adapters/xml/Rules.h"
#include "base/AutomationError.h"
#include "base/Utf8.h"

namespace quillbox::xml {

namespace {

bool isText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool isBlankText(const char* text) { return text[std::strspn(text, " \t\r\n")] == '\0'; }

using Byte = unsigned char;

// What is written for a byte, ready to be copied in one go.
struct Written {
    char text[7];
    Byte length;
};
using Table = std::array<Written, 256>;

constexpr Table tableWith(bool isAttribute) {
    Table table{};
    for (int c = 0; c < 256; ++c) table[static_cast<Byte>(c)] = {{static_cast<char>(c)}, 1};
    table['&'] = {{'&', 'a', 'm', 'p', ';'}, 5};
    table['<'] = {{'&', 'l', 't', ';'}, 4};
    table['>'] = {{'&', 'g', 't', ';'}, 4};
    table['\r'] = {{'&', '#', '1', '3', ';'}, 5};
    if (isAttribute) {
        table['"'] = {{'&', 'q', 'u', 'o', 't', ';'}, 6};
        table['\t'] = {{'&', '#', '9', ';'}, 4};
        table['\n'] = {{'&', '#', '1', '0', ';'}, 5};
    }
    return table;
}

constexpr Table kInText = tableWith(false);
constexpr Table kInAttribute = tableWith(true);

constexpr std::size_t kBlock = 16;

// Whether a block is written as it stands. A fixed size compiles to wide instructions.
bool isPlainBlock(const char* text) {
    Byte odd = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const auto c = static_cast<Byte>(text[i]);
        odd = static_cast<Byte>(odd | (c < 0x20) | (c == '&') | (c == '<') | (c == '>') | (c == '"'));
    }
    return odd == 0;
}

class Writer {
  public:
    std::string Write(pugi::xml_node root, std::size_t expectedSize) {
        mOut.reserve(expectedSize);
        mOut = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        for (auto node = root; node;) {
            if (begin(node)) {
                node = node.first_child();
                continue;
            }
            while (node != root && !node.next_sibling()) {
                node = node.parent();
                end(node);
            }
            node = node == root ? pugi::xml_node() : node.next_sibling();
        }
        mOut += '\n';
        if (mOut.size() > kMaxSize) throw AutomationError("The document is larger than 1 GiB");
        return std::move(mOut);
    }

  private:
    enum class Content { None, Children, Text };

    // Tells whether the node is an element that is open then.
    bool begin(pugi::xml_node node) {
        if (isText(node)) {
            if (mInline > 0) escape(node.value(), kInText, [&] { return element(node.parent()); });
            return false;
        }
        if (mDepth == kMaxDepth) {
            throw AutomationError(element(node) + " is nested deeper than " + std::to_string(kMaxDepth));
        }
        if (mInline == 0 && mDepth > 0) indent();
        startTag(node);
        const auto content = contentOf(node);
        mOut += content == Content::None ? "/>" : ">";
        if (content == Content::None) return false;
        ++mDepth;
        if (mInline > 0 || content == Content::Text) ++mInline;
        return true;
    }

    void end(pugi::xml_node node) {
        --mDepth;
        if (mInline > 0) {
            --mInline;
        } else {
            indent();
        }
        mOut += "</";
        mOut += node.name();
        mOut += '>';
    }

    // White space between children is not text; white space alone is.
    static Content contentOf(pugi::xml_node parent) {
        bool hasText = false;
        bool hasChildren = false;
        for (auto node = parent.first_child(); node; node = node.next_sibling()) {
            if (isText(node) && !isBlankText(node.value())) return Content::Text;
            (isText(node) ? hasText : hasChildren) |= !isText(node) || node.value()[0] != '\0';
        }
        if (hasChildren) return Content::Children;
        return hasText ? Content::Text : Content::None;
    }

    static std::string element(pugi::xml_node node) {
        return "The element '" + std::string(node.name()) + "'";
    }

    void indent() {
        mOut += '\n';
        mOut.append(2 * mDepth, ' ');
    }

    void startTag(pugi::xml_node node) {
        const auto name = [&] { return element(node) + describeParent(node); };
        requireName(node.name(), name);
        mOut += '<';
        mOut += node.name();
        for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
            const auto place = [&] {
                return "The attribute '" + std::string(attribute.name()) + "' of the element '" +
                       node.name() + "'";
            };
            requireName(attribute.name(), place);
            mOut += ' ';
            mOut += attribute.name();
            mOut += "=\"";
            escape(attribute.value(), kInAttribute, place);
            mOut += '"';
        }
    }

    template <class Place>
    static void requireName(std::string_view name, const Place& place) {
        if (isName(name)) return;
        requireXml(name, place);
        throw AutomationError(place() + (name.empty() ? " has no name" : " has a name that XML cannot hold"));
    }

    static std::string describeParent(pugi::xml_node element) {
        const std::string parent = element.parent().name();
        return parent.empty() ? parent : " in '" + parent + "'";
    }

    template <class Place>
    static void requireXml(std::string_view text, const Place& place) {
        const auto odd = findNonXml(text);
        if (odd != std::string_view::npos) {
            throw AutomationError(place() + " holds " + describeNonXml(text, odd) +
                                  ", which no XML can hold");
        }
    }

    template <class Place>
    void escape(std::string_view text, const Table& table, const Place& place) {
        requireXml(text, place);
        constexpr std::size_t kPiece = 64 * kBlock;
        std::array<char, (kPiece + 1) * sizeof(Written)> buffer;
        while (!text.empty()) {
            const auto piece = text.substr(0, kPiece);
            char* out = buffer.data();
            for (std::size_t i = 0; i < piece.size();) {
                if (piece.size() - i >= kBlock && isPlainBlock(piece.data() + i)) {
                    std::memcpy(out, piece.data() + i, kBlock);
                    out += kBlock;
                    i += kBlock;
                    continue;
                }
                for (const std::size_t end = std::min(piece.size(), i + kBlock); i < end; ++i) {
                    const Written& written = table[static_cast<Byte>(piece[i])];
                    std::memcpy(out, &written, sizeof written);
                    out += written.length;
                }
            }
            mOut.append(buffer.data(), out);
            text.remove_prefix(piece.size());
        }
    }

    std::string mOut;
    std::size_t mDepth = 0;   // elements that are open
    std::size_t mInline = 0;  // of these, the innermost ones in which no line end may be put
};

}  // namespace

std::string write(pugi::xml_node root, std::size_t expectedSize) {
    return Writer().Write(root, expectedSize);
}

}  // namespace quillbox::xml
