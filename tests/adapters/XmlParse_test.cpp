#include <gmock/gmock.h>

#include <chrono>
#include <fstream>

#include "adapters/Failure.h"
#include "adapters/TemporaryFolder.h"
#include "adapters/xml/PugiXml.h"

namespace quillbox {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Ref<XMLDocument> parsed(const std::string& text) {
    auto document = makePugiXmlParser()->NewDocument();
    document->Parse(text);
    return document;
}

std::string parseFailure(const std::string& text) {
    return failureOf([&] { parsed(text); });
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

struct Damage {
    const char* text;
    const char* failure;
};

class DamagedXml : public testing::TestWithParam<Damage> {};

TEST_P(DamagedXml, IsRefusedWithItsLine) { EXPECT_EQ(parseFailure(GetParam().text), GetParam().failure); }

INSTANTIATE_TEST_SUITE_P(
    Table, DamagedXml,
    testing::Values(
        Damage{"", "line 1: there is no element"}, Damage{"\n \n", "line 1: there is no element"},
        Damage{"<?xml version=\"1.0\"?>", "line 1: there is no element"},
        Damage{"text", "line 1: there is text outside the root element"},
        Damage{"<a/>\ntext", "line 2: there is text outside the root element"},
        Damage{"<a/>\n&amp;", "line 2: there is text outside the root element"},
        Damage{"<a/><![CDATA[x]]>", "line 1: there is text outside the root element"},
        Damage{"<a/>\n<b/>", "line 2: there is a second root element, 'b'"},
        Damage{"<a>\n<b>\n</a>", "line 3: 'a' is closed where 'b' of line 2 is open"},
        Damage{"<a>\n<b>\n</B></a>", "line 3: 'B' is closed where 'b' of line 2 is open"},
        Damage{"<a>\n", "line 2: 'a' of line 1 is not closed"},
        Damage{"<a/></a>", "line 1: 'a' is closed and was not open"},
        Damage{"<a></a", "line 1: the end tag 'a' does not end"},
        Damage{"<a></a b=''>", "line 1: the end tag 'a' does not end"},
        Damage{"<a", "line 1: the tag of 'a' does not end"}, Damage{"<", "line 1: a name is missing"},
        Damage{"<a>< b/></a>", "line 1: a name is missing"}, Damage{"<1/>", "line 1: a name is missing"},
        Damage{"<a><!b></a>", "line 1: a name is missing"},
        Damage{"<a b/>", "line 1: the attribute 'b' of 'a' has no value"},
        Damage{"<a\nb=c/>", "line 2: the attribute 'b' of 'a' has a value without quotes"},
        Damage{"<a b='c\"/>", "line 1: the attribute 'b' of 'a' does not end"},
        Damage{"<a b='<'/>", "line 1: the attribute 'b' of 'a' holds a '<'"},
        Damage{"<a b='1'c='2'/>", "line 1: there is no blank before an attribute of 'a'"},
        Damage{"<a b='1' c='2' b='3'/>", "line 1: the attribute 'b' of 'a' is there twice"},
        Damage{"<a>\n&nbsp;</a>", "line 2: the entity 'nbsp' is not defined"},
        Damage{"<a>&AMP;</a>", "line 1: the entity 'AMP' is not defined"},
        Damage{"<a>a & b</a>", "line 1: there is a '&' that begins no reference"},
        Damage{"<a>\n</a>&", "line 2: there is text outside the root element"},
        Damage{"<a b='&x;'/>", "line 1: the entity 'x' is not defined"},
        Damage{"<a>&#0;</a>", "line 1: '&#0;' is no character"},
        Damage{"<a>&#x1F;</a>", "line 1: '&#x1F;' is no character"},
        Damage{"<a>&#xD800;</a>", "line 1: '&#xD800;' is no character"},
        Damage{"<a>&#xFFFF;</a>", "line 1: '&#xFFFF;' is no character"},
        Damage{"<a>&#x110000;</a>", "line 1: '&#x110000;' is no character"},
        Damage{"<a>&#99999999999;</a>", "line 1: '&#99999999999;' is no character"},
        Damage{"<a>&#X41;</a>", "line 1: '&#X41;' is no character"},
        Damage{"<a>&#;</a>", "line 1: '&#;' is no character"},
        Damage{"<a>&#1a;</a>", "line 1: '&#1a;' is no character"},
        Damage{"<a>\n]]></a>", "line 2: ']]>' stands in text"},
        Damage{"<a><![CDATA[x]]</a>", "line 1: a CDATA section does not end"},
        Damage{"<a><!-- x</a>", "line 1: a comment does not end"},
        Damage{"<a><?p x</a>", "line 1: a processing instruction does not end"},
        Damage{"<?xml version='1.0'", "line 1: a declaration does not end"},
        Damage{"\n<?xml version='1.0'?><a/>", "line 2: there is an XML declaration inside the document"},
        Damage{"<a><?XML x?></a>", "line 1: there is an XML declaration inside the document"},
        Damage{"<a>\x01</a>", "line 1: XML cannot hold the control character U+0001"},
        Damage{"<a>\xFF</a>", "line 1: XML cannot hold the byte 0xFF outside UTF-8"},
        Damage{"<a>\n\xED\xA0\x80</a>", "line 2: XML cannot hold half of a surrogate pair"},
        Damage{"<a>\xEF\xBF\xBE</a>", "line 1: XML cannot hold the character U+FFFE"},
        Damage{"<a>\xC0\x80</a>", "line 1: XML cannot hold the byte 0xC0 outside UTF-8"},
        Damage{"<!DOCTYPE a", "line 1: a document type declaration does not end"},
        Damage{"<!DOCTYPE a [<!-- x ]><a/>", "line 1: a document type declaration does not end"},
        Damage{"<a/><!DOCTYPE a>", "line 1: there is a document type declaration inside the document"},
        Damage{"<!DOCTYPE a [\n<!ENTITY x 'y'>]><a>&x;</a>", "line 2: a DOCTYPE with ENTITY is refused"},
        Damage{"<!DOCTYPE a [<!ENTITY % x 'y'>]><a/>", "line 1: a DOCTYPE with ENTITY is refused"}));

TEST(XmlParse, NulInTheTextIsRefused) {
    EXPECT_EQ(parseFailure(std::string("<a>\0</a>", 8)),
              "line 1: XML cannot hold the control character U+0000");
}

TEST(XmlParse, FewAndManyDuplicateAttributesAreFound) {
    std::string many;
    for (int i = 0; i < 100; ++i) many += " n" + std::to_string(i) + "=''";
    EXPECT_NO_THROW(parsed("<a" + many + "/>"));
    EXPECT_EQ(parseFailure("<a" + many + " n7=''/>"), "line 1: the attribute 'n7' of 'a' is there twice");
}

TEST(XmlParse, EveryBeginningOfAFileIsRefused) {
    const std::string whole =
        "<?xml version=\"1.0\"?>\n<!DOCTYPE a [<!ELEMENT a ANY><!-- '] -->]>\n<!-- c --><?p x?>\n"
        "<a b=\"1 &lt;\" c='2'>text &#65; &amp; <![CDATA[<x>]]>\xC3\xA4<d e=''/><f> </f></a>\n";
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        EXPECT_THAT(parseFailure(whole.substr(0, size)), StartsWith("line ")) << size;
    }
    EXPECT_NO_THROW(parsed(whole));
}

TEST(XmlParse, EveryBrokenByteOfAFileEndsInATreeOrAFailure) {
    const std::string whole = "<?xml version=\"1.0\"?><a b=\"1\">t&lt;<![CDATA[x]]><c d='2'/><!--e--> </a>";
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            auto broken = whole;
            broken[at] = static_cast<char>(byte);
            const auto failure = parseFailure(broken);
            EXPECT_TRUE(failure == "no failure" || failure.starts_with("line ")) << failure;
        }
    }
}

TEST(XmlParse, AFailureLeavesTheDocumentAsItWas) {
    const auto document = parsed("<a b='1'>text</a>");
    const auto before = document->ToXml();
    const auto root = document->RootElement();
    EXPECT_NE(failureOf([&] { document->Parse("<c><d></c>"); }), "no failure");
    EXPECT_EQ(document->ToXml(), before);
    EXPECT_EQ(document->RootElement(), root);
}

TEST(XmlParse, NestsUpToTheLimit) {
    EXPECT_NO_THROW(parsed(repeated("<a>", 1000) + repeated("</a>", 1000)));
    EXPECT_EQ(parseFailure(repeated("<a>\n", 1001) + repeated("</a>", 1001)),
              "line 1001: elements are nested deeper than 1000");
}

TEST(XmlParse, RefusesDeepNestingAndEntityBombsAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(parseFailure(repeated("<a>", 100000)), HasSubstr("nested deeper"));
    EXPECT_THAT(parseFailure("<!DOCTYPE a [<!ENTITY l0 'lol'>" +
                             [] {
                                 std::string bomb;
                                 for (int i = 1; i < 20; ++i) {
                                     bomb += "<!ENTITY l" + std::to_string(i) + " '" +
                                             repeated("&l" + std::to_string(i - 1) + ";", 10) + "'>";
                                 }
                                 return bomb;
                             }() +
                             "]><a>&l19;</a>"),
                HasSubstr("ENTITY"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(XmlParse, TakesLargeAndManyAttributes) {
    const auto large = repeated("x&amp;", 1000000);
    EXPECT_EQ(parsed("<a b='" + large + "'/>")->RootElement()->Find("b")->size(), 2000000u);
    std::string many;
    for (int i = 0; i < 100000; ++i) many += " n" + std::to_string(i) + "=''";
    EXPECT_EQ(parsed("<a" + many + "/>")->RootElement()->Attributes()->Count(), 100000);
}

TEST(XmlParse, ReadsADocumentTypeWithoutEntities) {
    const auto document = parsed(
        "<!DOCTYPE html PUBLIC \"-//X//<!ENTITY\" 'y>' [\n<!-- ' <!ENTITY ] --><?p ]> ?>\n<!ELEMENT a "
        "(#PCDATA)>]>\n"
        "<a>text</a>");
    EXPECT_EQ(document->RootElement()->Text(), "text");
    EXPECT_EQ(document->RootElement()->Line(), 4);
}

TEST(XmlParse, KeepsLineEndsAndWhiteSpace) {
    const auto root = parsed("<a b='x\r\n\ty'>\r\n one\rtwo \r\n</a>")->RootElement();
    EXPECT_EQ(root->Text(), "\r\n one\rtwo \r\n");
    EXPECT_EQ(root->Find("b"), "x\r\n\ty");
    EXPECT_EQ(parsed("<a> <!-- c --> <?p?> </a>")->RootElement()->Text(), "   ");
    EXPECT_EQ(parsed("<a>\n\t</a>")->RootElement()->Text(), "\n\t");
}

TEST(XmlParse, JoinsTextAndSectionsAndDecodesReferences) {
    const auto root = parsed("<a>1&lt;&#x42;<![CDATA[<&lt;]]>&#67;\n<b/>2</a>")->RootElement();
    EXPECT_EQ(root->Text(), "1<B<&lt;C\n2");
    EXPECT_EQ(parsed("<a b='&quot;&apos;&amp;&gt;&#128512;'/>")->RootElement()->Find("b"), "\"'&>\U0001F600");
}

TEST(XmlParse, WhiteSpaceBetweenChildrenIsNoText) {
    EXPECT_EQ(parsed("<a>\r\n <b/>\n</a>")->RootElement()->Text(), "");
    EXPECT_EQ(parsed("<a> x <b/> </a>")->RootElement()->Text(), " x  ");
}

TEST(XmlParse, PassesOverAByteOrderMark) {
    EXPECT_EQ(parsed("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<a/>")->RootElement()->Line(),
              2);
}

TEST(XmlParse, TellsTheLineOfEachElement) {
    const auto root = parsed("<!--\n-->\n<a\n x='\n'><b/><c\n/>\n\n&#10;<d>\n<e/></d></a>")->RootElement();
    EXPECT_EQ(root->Line(), 3);
    const auto children = root->Children();
    EXPECT_EQ(children.at(0)->Line(), 5);
    EXPECT_EQ(children.at(1)->Line(), 5);
    EXPECT_EQ(children.at(2)->Line(), 8);
    EXPECT_EQ(children.at(2)->Children().at(0)->Line(), 9);
    EXPECT_EQ(root->AddChild("new", "")->Line(), 0);
}

class XmlFile : public testing::Test {
  protected:
    Ref<XMLDocument> Loaded(const std::string& bytes) {
        std::ofstream(mFolder.Path() + "x.xml", std::ios::binary) << bytes;
        auto document = makePugiXmlParser()->NewDocument();
        document->LoadFile(mFolder.Path() + "x.xml");
        return document;
    }
    TemporaryFolder mFolder;
};

TEST_F(XmlFile, IsReadInItsEncoding) {
    using namespace std::string_literals;
    EXPECT_EQ(Loaded("<a>\xC3\xA4</a>")->RootElement()->Text(), "\u00E4");
    EXPECT_EQ(Loaded("<a>\xE4</a>")->RootElement()->Text(), "\u00E4");
    EXPECT_EQ(Loaded("<?xml version='1.0' encoding='windows-1251'?><a>\xE4</a>")->RootElement()->Text(),
              "\u0434");
    EXPECT_EQ(Loaded("\xFF\xFE<\0a\0>\0\xE4\0<\0/\0a\0>\0"s)->RootElement()->Text(), "\u00E4");
}

TEST_F(XmlFile, IsNamedInAFailure) {
    const auto path = mFolder.Path() + "x.xml";
    EXPECT_EQ(failureOf([&] { Loaded("<a>\n</b>"); }),
              path + ": line 2: 'b' is closed where 'a' of line 1 is open");
    const auto document = makePugiXmlParser()->NewDocument();
    EXPECT_EQ(failureOf([&] { document->LoadFile(mFolder.Path() + "none.xml"); }),
              mFolder.Path() + "none.xml: No such file or directory");
    EXPECT_THAT(failureOf([&] { document->LoadFile(mFolder.Path()); }), StartsWith(mFolder.Path() + ": "));
}

TEST_F(XmlFile, IsRefusedAboveOneGibibyte) {
    const auto path = mFolder.Path() + "large.xml";
    std::ofstream(path).close();
    std::filesystem::resize_file(path, (std::uintmax_t{1} << 30) + 1);
    EXPECT_EQ(failureOf([&] { makePugiXmlParser()->NewDocument()->LoadFile(path); }),
              path + ": The file is larger than 1 GiB");
}

}  // namespace
}  // namespace quillbox
