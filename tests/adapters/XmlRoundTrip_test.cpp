#include <gtest/gtest.h>

#include <random>

#include "adapters/xml/PugiXml.h"

namespace quillbox {
namespace {

bool isXmlScalar(std::uint32_t c) {
    if (c < 0x20) return c == 9 || c == 10 || c == 13;
    return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

void append(std::string& text, std::uint32_t c) {
    const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) return add(c);
    if (c < 0x800) return add(0xC0 | c >> 6), add(0x80 | (c & 63));
    if (c < 0x10000) return add(0xE0 | c >> 12), add(0x80 | (c >> 6 & 63)), add(0x80 | (c & 63));
    add(0xF0 | c >> 18), add(0x80 | (c >> 12 & 63)), add(0x80 | (c >> 6 & 63)), add(0x80 | (c & 63));
}

void expectRoundTrip(const std::string& text) {
    const auto parser = makePugiXmlParser();
    const auto document = parser->NewDocument();
    const auto root = document->RootElement();
    root->SetName("a");
    root->AddAttribute("b", text);
    root->AddChild("leaf", text);
    const auto read = parser->NewDocument();
    read->Parse(document->ToXml());
    EXPECT_EQ(read->RootElement()->Find("b"), text);
    EXPECT_EQ(read->RootElement()->Children().at(0)->Text(), text);
    EXPECT_EQ(read->ToXml(), document->ToXml());
}

TEST(XmlRoundTrip, EveryUnicodeScalarComesBack) {
    for (std::uint32_t from = 0; from <= 0x10FFFF; from += 0x1000) {
        std::string text;
        for (auto c = from; c < from + 0x1000; ++c) {
            if (isXmlScalar(c)) append(text, c);
        }
        expectRoundTrip(text);
    }
}

TEST(XmlRoundTrip, AwkwardTextsComeBack) {
    for (const std::string text :
         {"", " ", "  a  ", "\n", "\r", "\r\n", "\t", "]]>", "]]", "&", "&amp;", "&#13;", "<![CDATA[x]]>",
          "<!-- -->", "<p>HTML \"quoted\" &nbsp; 'text'</p>\r\n", "a\n\n\nb", "\u00A0", "\uFEFF",
          "\u0085\u2028"}) {
        expectRoundTrip(text);
    }
}

TEST(XmlRoundTrip, RandomTextsComeBack) {
    std::mt19937 random(20261121);
    const std::string common = "<>&'\"\r\n\t ]ab;#x";
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (auto length = random() % 200; length > 0; --length) {
            const std::uint32_t c = random() % (random() % 2 ? 0x300 : 0x110000);
            if (random() % 2) {
                text += common[random() % common.size()];
            } else if (isXmlScalar(c)) {
                append(text, c);
            }
        }
        expectRoundTrip(text);
    }
}

// Builds a tree by chance; the text beside children is never white space alone, which does not come back.
void grow(const Ref<XMLElement>& element, std::mt19937& random, int depth) {
    for (auto count = random() % 4; count > 0; --count) {
        element->AddAttribute("n" + std::to_string(random() % 6), std::to_string(random()) + "\n<");
    }
    if (random() % 3 == 0) element->SetText("t " + std::to_string(random()) + "\r\n ");
    for (auto count = depth > 0 ? random() % 5 : 0; count > 0; --count) {
        grow(element->AddChild("e" + std::to_string(random() % 3), ""), random, depth - 1);
    }
}

void expectSame(const Ref<XMLElement>& a, const Ref<XMLElement>& b) {
    ASSERT_EQ(a->Name(), b->Name());
    ASSERT_EQ(a->Text(), b->Text());
    const auto attributes = a->Attributes()->Items();
    ASSERT_EQ(static_cast<int>(attributes.size()), b->Attributes()->Count());
    for (const auto& one : attributes) ASSERT_EQ(b->Find(one->Name()), one->Value());
    const auto children = a->Children();
    const auto others = b->Children();
    ASSERT_EQ(children.size(), others.size());
    for (std::size_t i = 0; i < children.size(); ++i) expectSame(children[i], others[i]);
}

TEST(XmlRoundTrip, RandomTreesComeBack) {
    std::mt19937 random(7);
    const auto parser = makePugiXmlParser();
    for (int round = 0; round < 200; ++round) {
        const auto document = parser->NewDocument();
        document->RootElement()->SetName("root");
        grow(document->RootElement(), random, 5);
        const auto read = parser->NewDocument();
        read->Parse(document->ToXml());
        expectSame(document->RootElement(), read->RootElement());
        EXPECT_EQ(read->ToXml(), document->ToXml());
    }
}

}  // namespace
}  // namespace quillbox
