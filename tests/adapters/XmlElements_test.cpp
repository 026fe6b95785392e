#include <gmock/gmock.h>

#include "adapters/Failure.h"
#include "adapters/xml/PugiXml.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

Ref<XMLDocument> parsed(const std::string& text) {
    auto document = makePugiXmlParser()->NewDocument();
    document->Parse(text);
    return document;
}

std::string body(const Ref<XMLDocument>& document) {
    const auto text = document->ToXml();
    return text.substr(text.find('\n') + 1);
}

TEST(XmlElements, ANewDocumentHasARootWithoutAName) {
    const auto document = makePugiXmlParser()->NewDocument();
    EXPECT_EQ(document->RootElement()->Name(), "");
    EXPECT_EQ(document->RootElement()->Text(), "");
    EXPECT_TRUE(document->RootElement()->Children().empty());
    EXPECT_EQ(document->RootElement()->Line(), 0);
    EXPECT_EQ(failureOf([&] { document->ToXml(); }), "The element '' has no name");
}

TEST(XmlElements, TheSameElementIsTheSameObject) {
    const auto document = parsed("<a><b/></a>");
    const auto root = document->RootElement();
    EXPECT_EQ(root, document->RootElement());
    const auto added = root->AddChild("c", "");
    EXPECT_EQ(root->Children().at(1), added);
    EXPECT_EQ(root->Children().at(0), root->Children().at(0));
    EXPECT_EQ(self(added.get()), added);
}

TEST(XmlElements, AnElementKeepsItsDocumentAlive) {
    auto document = parsed("<a><b c='1'>text</b></a>");
    auto child = document->RootElement()->Children().at(0);
    auto attribute = child->Attributes()->Item("c");
    document.reset();
    EXPECT_EQ(child->Text(), "text");
    child.reset();
    EXPECT_EQ(attribute->Value(), "1");
}

TEST(XmlElements, ElementsOutliveASecondParse) {
    const auto document = parsed("<a>old</a>");
    const auto old = document->RootElement();
    document->Parse("<b>new</b>");
    EXPECT_EQ(old->Text(), "old");
    EXPECT_EQ(document->RootElement()->Text(), "new");
}

TEST(XmlElements, NoObjectIsLeftBehind) {
    const long before = Object::Alive();
    {
        const auto document = parsed("<a><b c='1'/></a>");
        const auto items = document->RootElement()->Children().at(0)->Attributes()->Items();
        EXPECT_GT(Object::Alive(), before);
    }
    EXPECT_EQ(Object::Alive(), before);
}

TEST(XmlElements, AttributeLookUpIgnoresCase) {
    const auto root = parsed("<a Help2FileID='1' \u00C4RGER='2' stra\u00DFe='3' x='4'/>")->RootElement();
    EXPECT_EQ(root->Find("help2fileid"), "1");
    EXPECT_EQ(root->Find("HELP2FILEID"), "1");
    EXPECT_EQ(root->Find("\u00E4rger"), "2");
    EXPECT_EQ(root->Find("STRASSE"), "3");
    EXPECT_EQ(root->Find("X"), "4");
    EXPECT_EQ(root->Find("help2fileidx"), std::nullopt);
    EXPECT_EQ(root->Find("help2fil"), std::nullopt);
    EXPECT_EQ(root->Find(""), std::nullopt);
    EXPECT_EQ(root->Attributes()->Item("HELP2fileid")->Name(), "Help2FileID");
}

TEST(XmlElements, AnAbsentAttributeFailsWithItsNameItsElementAndItsLine) {
    const auto document = parsed("<a>\n<topic Key='1'/></a>");
    const auto topic = document->RootElement()->Children().at(0);
    EXPECT_EQ(failureOf([&] { topic->Attributes()->Item("Name"); }),
              "The element 'topic' in line 2 has no attribute 'Name'");
    const auto added = document->RootElement()->AddChild("task", "");
    EXPECT_EQ(failureOf([&] { added->Attributes()->Item("Key"); }),
              "The element 'task' has no attribute 'Key'");
}

TEST(XmlElements, AttributesKeepTheirOrder) {
    const auto document = parsed("<a z='1' y='2'/>");
    const auto root = document->RootElement();
    root->AddAttribute("b", "3");
    root->AddAttribute("Y", "new");
    EXPECT_EQ(root->Attributes()->Count(), 3);
    EXPECT_EQ(root->Attributes()->Items().at(1)->Name(), "y");
    EXPECT_EQ(body(document), "<a z=\"1\" y=\"new\" b=\"3\"/>\n");
}

TEST(XmlElements, SetTextReplacesOnlyTheText) {
    const auto document = parsed("<a>one<b/>two<![CDATA[three]]><c>x</c></a>");
    const auto root = document->RootElement();
    const auto child = root->Children().at(0);
    root->SetText("new");
    EXPECT_EQ(root->Text(), "new");
    EXPECT_EQ(root->Children().size(), 2u);
    EXPECT_EQ(root->Children().at(0), child);
    EXPECT_EQ(body(document), "<a>new<b/><c>x</c></a>\n");
    root->SetText("");
    EXPECT_EQ(body(document), "<a>\n  <b/>\n  <c>x</c>\n</a>\n");
}

TEST(XmlElements, AreWrittenALineEach) {
    const auto document = makePugiXmlParser()->NewDocument();
    const auto root = document->RootElement();
    root->SetName("QbProject");
    root->AddAttribute("Title", "T");
    const auto topic = root->AddChild("Topic", "");
    topic->AddChild("Section", "some\ntext");
    topic->AddChild("Blank", "  ");
    root->AddChild("file", "");
    EXPECT_EQ(document->ToXml(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<QbProject Title=\"T\">\n"
              "  <Topic>\n"
              "    <Section>some\ntext</Section>\n"
              "    <Blank>  </Blank>\n"
              "  </Topic>\n"
              "  <file/>\n"
              "</QbProject>\n");
}

TEST(XmlElements, TextBesideChildrenIsWrittenWithoutIndentation) {
    const auto document = makePugiXmlParser()->NewDocument();
    const auto root = document->RootElement();
    root->SetName("a");
    const auto mixed = root->AddChild("b", " text ");
    mixed->AddChild("c", "")->AddChild("d", "");
    root->AddChild("e", "");
    EXPECT_EQ(body(document), "<a>\n  <b> text <c><d/></c></b>\n  <e/>\n</a>\n");
    EXPECT_EQ(parsed(document->ToXml())->RootElement()->Children().at(0)->Text(), " text ");
}

TEST(XmlElements, MixedTextKeepsItsPlace) {
    const std::string mixed = "<a>one <b>bold</b> <i/> two</a>\n";
    EXPECT_EQ(body(parsed(mixed)), mixed);
}

TEST(XmlElements, EscapesWhatMustBeEscaped) {
    const auto document = makePugiXmlParser()->NewDocument();
    const auto root = document->RootElement();
    root->SetName("a");
    root->AddAttribute("b", "<&>\"'\t\r\n");
    root->SetText("<&>\"'\t\r\n]]>");
    EXPECT_EQ(body(document),
              "<a b=\"&lt;&amp;&gt;&quot;'&#9;&#13;&#10;\">&lt;&amp;&gt;\"'\t&#13;\n]]&gt;</a>\n");
}

TEST(XmlElements, TextThatXmlCannotHoldFailsNamingTheElement) {
    const auto document = makePugiXmlParser()->NewDocument();
    const auto root = document->RootElement();
    root->SetName("Topic");
    const auto writeFailure = [&] { return failureOf([&] { document->ToXml(); }); };
    root->SetText("a\x0B");
    EXPECT_EQ(writeFailure(),
              "The element 'Topic' holds the control character U+000B, which no XML can hold");
    root->SetText("some longer text, and then half of one: \xED\xA0\xBD");
    EXPECT_EQ(writeFailure(), "The element 'Topic' holds half of a surrogate pair, which no XML can hold");
    root->SetText("");
    root->AddAttribute("Title", "\xEF\xBF\xBF");
    EXPECT_EQ(
        writeFailure(),
        "The attribute 'Title' of the element 'Topic' holds the character U+FFFF, which no XML can hold");
    root->AddAttribute("Title", "\xE4");
    EXPECT_EQ(writeFailure(),
              "The attribute 'Title' of the element 'Topic' holds the byte 0xE4 outside UTF-8, which no XML "
              "can hold");
    root->AddAttribute("Title", "");
    EXPECT_EQ(writeFailure(), "no failure");
}

TEST(XmlElements, NulIsRefusedAtOnce) {
    const auto root = parsed("<a b='1'>text</a>")->RootElement();
    const std::string nul("x\0y", 3);
    EXPECT_THAT(failureOf([&] { root->SetText(nul); }),
                HasSubstr("'a' would hold the control character U+0000"));
    EXPECT_THAT(failureOf([&] { root->AddAttribute("b", nul); }), HasSubstr("attribute 'b'"));
    EXPECT_THAT(failureOf([&] { root->AddChild("c", nul); }), HasSubstr("'c'"));
    EXPECT_EQ(root->Text(), "text");
    EXPECT_EQ(root->Find("b"), "1");
    EXPECT_TRUE(root->Children().empty());
}

TEST(XmlElements, ANameThatXmlCannotHoldFails) {
    const auto document = makePugiXmlParser()->NewDocument();
    const auto root = document->RootElement();
    root->SetName("a");
    const auto child = root->AddChild("", "");
    EXPECT_EQ(failureOf([&] { document->ToXml(); }), "The element '' in 'a' has no name");
    child->SetName("b c");
    EXPECT_EQ(failureOf([&] { document->ToXml(); }),
              "The element 'b c' in 'a' has a name that XML cannot hold");
    child->SetName("b");
    child->AddAttribute("1", "");
    EXPECT_EQ(failureOf([&] { document->ToXml(); }),
              "The attribute '1' of the element 'b' has a name that XML cannot hold");
}

TEST(XmlElements, WhatNestsTooDeepToBeReadIsNotWritten) {
    const auto document = makePugiXmlParser()->NewDocument();
    auto element = document->RootElement();
    element->SetName("a");
    for (int depth = 2; depth <= 1000; ++depth) element = element->AddChild("a", "");
    EXPECT_NO_THROW(parsed(document->ToXml()));
    for (int depth = 1001; depth <= 100000; ++depth) element = element->AddChild("deep", "");
    EXPECT_EQ(failureOf([&] { document->ToXml(); }), "The element 'deep' is nested deeper than 1000");
}

}  // namespace
}  // namespace quillbox
