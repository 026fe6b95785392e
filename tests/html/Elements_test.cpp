#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/Failure.h"
#include "adapters/html/Html.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class HtmlElements : public testing::Test {
  protected:
    Ref<HTMLDocument> documentOf(const std::string& html) { return mFactory->NewDocument(html); }

    Ref<IHTMLElement> firstOf(const Ref<HTMLDocument>& document, const std::string& tag) {
        return document->all()->tags(tag)->Items().at(0);
    }

    static std::vector<std::string> tagsOf(const Ref<IHTMLElementCollection>& collection) {
        std::vector<std::string> names;
        for (const auto& element : collection->Items()) names.push_back(element->tagName());
        return names;
    }

    std::shared_ptr<DOMFactory> mFactory = makeHtmlFactory();
};

TEST_F(HtmlElements, AllHoldsEveryElementInDocumentOrder) {
    const auto document = documentOf("<title>t</title><p>a<b>b</b></p><img>");
    EXPECT_THAT(tagsOf(document->all()), ElementsAre("HTML", "HEAD", "TITLE", "BODY", "P", "B", "IMG"));
    EXPECT_EQ(document->all()->length(), 7);
}

TEST_F(HtmlElements, TagsAreFoundWhateverTheirCase) {
    const auto document = documentOf("<a href=1></a><A href=2></A><abbr></abbr>");
    EXPECT_EQ(document->all()->tags("A")->length(), 2);
    EXPECT_EQ(document->all()->tags("a")->length(), 2);
    EXPECT_EQ(document->all()->tags("a")->tags("abbr")->length(), 0);
    EXPECT_EQ(document->all()->tags("a")->tags("A")->length(), 2);
    EXPECT_EQ(document->all()->tags("a")->tags("abbr")->tags("a")->length(), 0);
    EXPECT_EQ(document->all()->tags("")->length(), 0);
}

TEST_F(HtmlElements, ItemFindsByNameOrId) {
    const auto document = documentOf("<p id=one>a</p><a name=two>b</a><a name=two>c</a>");
    EXPECT_EQ(document->all()->item("one")->tagName(), "P");
    EXPECT_EQ(document->all()->item("two")->innerHTML(), "b");
    EXPECT_EQ(document->all()->item("Two"), nullptr);
    EXPECT_EQ(document->all()->item("three"), nullptr);
}

TEST_F(HtmlElements, AnchorsAreTheNamedOnesAlone) {
    const auto document =
        documentOf("<a name=one></a><a id=two></a><a href=x></a><p id=three></p><p name=four></p>");
    EXPECT_EQ(document->anchors()->length(), 2);
    EXPECT_TRUE(document->anchors()->item("one"));
    EXPECT_TRUE(document->anchors()->item("two"));
    EXPECT_FALSE(document->anchors()->item("three"));
    EXPECT_FALSE(document->anchors()->item("four"));
    EXPECT_FALSE(document->anchors()->item("One"));
    EXPECT_THAT(document->anchors()->names(), ElementsAre("one", "two"));
    EXPECT_THAT(document->all()->names(), ElementsAre("one", "two", "three", "four"));
}

TEST_F(HtmlElements, NamesOfAnchorsAreDecoded) {
    const auto document = documentOf("<a name=\"a&amp;b\"></a>");
    EXPECT_TRUE(document->anchors()->item("a&b"));
}

TEST_F(HtmlElements, BodyIsThereEvenWhereNobodyWroteIt) {
    EXPECT_EQ(documentOf("")->body()->tagName(), "BODY");
    EXPECT_EQ(documentOf("")->body()->innerHTML(), "");
    EXPECT_EQ(documentOf("x<p>y")->body()->innerHTML(), "x<p>y");
    EXPECT_EQ(documentOf("x<p>y")->body()->outerHTML(), "<body>x<p>y</body>");
    EXPECT_EQ(documentOf("<frameset></frameset>")->body()->tagName(), "FRAMESET");
}

TEST_F(HtmlElements, BodyEndsAtTheLastOfItsEndTags) {
    EXPECT_EQ(documentOf("<body>a</body>b</body>\n</html>\n")->body()->innerHTML(), "a</body>b");
    EXPECT_EQ(documentOf("<body>a</body><!-- c --></html></body></html>")->body()->innerHTML(),
              "a</body><!-- c --></html>");
    EXPECT_EQ(documentOf("<html><body><p>a\n</html>\n")->body()->innerHTML(), "<p>a\n");
    EXPECT_EQ(documentOf("<body>a</body>b")->body()->innerHTML(), "a</body>b");
}

TEST_F(HtmlElements, ClassNameIsTheClassAttribute) {
    const auto document = documentOf("<p CLASS=\"Page&amp;Number\">x</p><b>y</b>");
    EXPECT_EQ(firstOf(document, "p")->className(), "Page&Number");
    EXPECT_EQ(firstOf(document, "b")->className(), "");
}

TEST_F(HtmlElements, AttributesAreReadWhateverTheirCase) {
    const auto link =
        firstOf(documentOf("<a HREF='x' title='&lt;&eacute;&#x20AC;' empty flag=''>y</a>"), "a");
    EXPECT_EQ(link->getAttribute("TITLE"), "<\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(link->getAttribute("empty"), "");
    EXPECT_EQ(link->getAttribute("flag"), "");
}

TEST_F(HtmlElements, AnAbsentAttributeFails) {
    const auto link = firstOf(documentOf("<a name=x>y</a>"), "a");
    EXPECT_EQ(failureOf([&] { link->getAttribute("href"); }), "The element 'a' has no attribute 'href'");
}

TEST_F(HtmlElements, TheFirstOfTwoLikeNamedAttributesHolds) {
    EXPECT_EQ(firstOf(documentOf("<p title=1 TITLE=2>"), "p")->getAttribute("title"), "1");
    std::string many = "<p title=1";
    for (int i = 0; i < 100; ++i) many += " a" + std::to_string(i);
    EXPECT_EQ(firstOf(documentOf(many + " title=2>"), "p")->getAttribute("title"), "1");
}

TEST_F(HtmlElements, InnerAndOuterTextsAreTheAuthorsOwn) {
    const auto document = documentOf("<div  CLASS=a >x &amp; <B>y</B></div >");
    const auto div = firstOf(document, "div");
    EXPECT_EQ(div->innerHTML(), "x &amp; <B>y</B>");
    EXPECT_EQ(div->outerHTML(), "<div  CLASS=a >x &amp; <B>y</B></div >");
    EXPECT_EQ(firstOf(documentOf("<img src=x>"), "img")->innerHTML(), "");
}

TEST_F(HtmlElements, AnElementOnItsOwnHasBothItsTags) {
    const auto document = documentOf("<ul><li>a<li>b</ul><p><a href=x>1<p>2</a>");
    EXPECT_EQ(firstOf(document, "li")->outerHTML(), "<li>a</li>");
    EXPECT_EQ(firstOf(document, "head")->outerHTML(), "<head></head>");
    const auto links = document->all()->tags("a")->Items();
    EXPECT_EQ(links.at(0)->outerHTML(), "<a href=x>1</a>");
    EXPECT_EQ(links.at(1)->outerHTML(), "<a href=x>2</a>");
    EXPECT_EQ(document->all()->tags("p")->Items().at(1)->innerHTML(), "<a href=x>2</a>");
}

TEST_F(HtmlElements, OuterTextIsWhatAReaderSees) {
    const auto textOf = [&](const std::string& html) { return documentOf(html)->body()->outerText(); };
    EXPECT_EQ(textOf("  a \n <b> b</b>c&amp;d "), "a bc&d");
    EXPECT_EQ(textOf("<p>one</p>\n<p>two<br>three</p>"), "one\r\ntwo\r\nthree");
    EXPECT_EQ(textOf("a<script>x</script><style>y</style><!-- z -->b"), "ab");
    EXPECT_EQ(textOf("<pre>\n a\n\n  b</pre>c"), " a\r\n\r\n  b\r\nc");
    EXPECT_EQ(textOf("x<pre>\n\ny</pre>"), "x\r\n\r\ny");
    EXPECT_EQ(textOf("a&nbsp; b"), "a\xC2\xA0 b");
    EXPECT_EQ(textOf("one</i>two<table>three<tr><td>four</table>"), "onetwothree\r\nfour");
    EXPECT_EQ(textOf(""), "");
}

TEST_F(HtmlElements, DocumentElementIsTheWholeText) {
    const std::string html = "<!DOCTYPE html>\n<!-- c --><html><body>x</body></html>\n";
    const auto root = documentOf(html)->documentElement();
    EXPECT_EQ(root->tagName(), "HTML");
    EXPECT_EQ(root->outerHTML(), html);
    EXPECT_EQ(root->innerHTML(), "<body>x</body>");
}

TEST_F(HtmlElements, APlaceIsCountedInTheContentOfTheBody) {
    const auto placeOf = [&](const Ref<HTMLDocument>& document) {
        return firstOf(document, "a")->placeInBody();
    };
    EXPECT_EQ(placeOf(documentOf("<html><body>x <A href=y>z</a></body></html>")), 2u);
    EXPECT_EQ(placeOf(documentOf("x <a>z</a>")), 2u);
    EXPECT_EQ(placeOf(documentOf("<!doctype html><title>t</title><body class=k>\r\n<a>z</a>")), 2u);
    const auto document = documentOf("<base href='/p/'><body>old");
    document->body()->setInnerHTML("new <a>z</a>");
    EXPECT_EQ(placeOf(document), 4u);
    const auto link = firstOf(document, "a");
    document->body()->setInnerHTML("newer");
    EXPECT_EQ(link->placeInBody(), std::nullopt);
    EXPECT_EQ(document->body()->placeInBody(), std::nullopt);
    EXPECT_EQ(firstOf(documentOf("<p>x"), "head")->placeInBody(), std::nullopt);
}

TEST_F(HtmlElements, OneNodeIsOneObject) {
    const auto document = documentOf("<a name=x>y</a>");
    const auto link = firstOf(document, "a");
    EXPECT_EQ(link, document->anchors()->item("x"));
    EXPECT_EQ(link, firstOf(document, "A"));
    EXPECT_EQ(document->body(), document->body());
    EXPECT_NE(document->body(), link);
}

TEST_F(HtmlElements, AnElementKeepsItsDocumentAlive) {
    const auto before = Object::Alive();
    {
        auto link = firstOf(documentOf("<base href=\"http://a/b/\"><a href=c>x</a>"), "a");
        auto all = documentOf("<p>x</p>")->all();
        mFactory.reset();
        EXPECT_EQ(link->getAttribute("href"), "http://a/b/c");
        link->setInnerHTML("<i>y</i>");
        EXPECT_EQ(link->outerHTML(), "<a href=c><i>y</i></a>");
        EXPECT_EQ(all->length(), 4);
    }
    EXPECT_EQ(Object::Alive(), before);
}

}  // namespace
}  // namespace quillbox
