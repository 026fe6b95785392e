// What becomes of an author's text: what the tree keeps, and what it cannot. The architecture page says the
// same in words.

#include <gtest/gtest.h>

#include "adapters/Failure.h"
#include "adapters/html/Html.h"

namespace quillbox {
namespace {

struct Edit {
    std::string before;
    std::string after;
};

class AuthorsText : public testing::Test {
  protected:
    // A document in which one link is changed, so that everything around it was written anew or kept.
    std::string changed(const std::string& html) {
        const auto document = mFactory->NewDocument(html + "<a id=mark href=1>m</a>");
        document->all()->item("mark")->setAttribute("href", "2");
        auto text = document->documentElement()->outerHTML();
        const std::string mark = "<a id=mark href=\"2\">m</a>";
        EXPECT_TRUE(text.ends_with(mark)) << text;
        return text.substr(0, text.size() - mark.size());
    }
    void expectKept(const std::string& html) { EXPECT_EQ(changed(html), html); }

    // The text of a document after its first element `b` got other content.
    std::string withNewContent(const std::string& html, const std::string& content) {
        const auto document = mFactory->NewDocument(html);
        document->all()->tags("b")->Items().at(0)->setInnerHTML(content);
        return document->documentElement()->outerHTML();
    }

    std::shared_ptr<DOMFactory> mFactory = makeHtmlFactory();
};

TEST_F(AuthorsText, KeepsTheOrderOfAttributes) { expectKept("<p title=a class=b id=c lang=d>x</p>"); }

TEST_F(AuthorsText, KeepsTheCaseOfTagsAndAttributes) {
    expectKept("<DIV Class=x><sPan onClick=y>z</SPAN></div>");
}

TEST_F(AuthorsText, KeepsQuotesAndBlanksInTags) {
    expectKept("<p  class = 'a'\n\tid=b title=\"c\"   >x</p ><br/><br /><hr\n>");
}

TEST_F(AuthorsText, KeepsAttributesWithoutValuesAndSecondOnesOfOneName) {
    expectKept("<input disabled checked=\"\" readonly=><p class=1 CLASS=2>x</p>");
}

TEST_F(AuthorsText, KeepsEntitiesAsTheyWereWritten) {
    expectKept(
        "<p title=\"&eacute;&#233;\xC3\xA9 &amp; & &lt;\">&nbsp;&#160;\xC2\xA0 &copy &unknown; a & b "
        "&amp;amp;</p>");
}

TEST_F(AuthorsText, KeepsWhiteSpaceAndLineEnds) {
    expectKept("  \r\n<p>\r\n  a \t b\n\n</p>\r<pre>\n\n x\n</pre>\f ");
}

TEST_F(AuthorsText, KeepsDoctypeCommentsAndInstructions) {
    expectKept(
        "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.01//EN'>\n<!-- a -- b --><?php echo '<p>' ?><html><!--[if "
        "IE]>x<![endif]-->");
}

TEST_F(AuthorsText, KeepsAByteOrderMark) { expectKept("\xEF\xBB\xBF<p>x</p>"); }

TEST_F(AuthorsText, KeepsScriptsAndStyles) {
    expectKept("<script>if (a < b && c) '<p>'</script><style>p > a { content: \"</p>\" }</style>");
}

TEST_F(AuthorsText, KeepsElementsOfOfficePrograms) {
    expectKept("<o:p></o:p><![if !supportLists]>x<![endif]><p class=MsoNormal style='mso-x:y'>z</p>");
}

TEST_F(AuthorsText, KeepsMarkupThatIsBroken) {
    expectKept("<p>one<p>two<b><i>x</b></i></div></p><li>y");
    expectKept("<table>text<tr><td>cell</table>");
    expectKept("<td>no table</td></tr><form><form></form>");
    expectKept("a < b <> </> <3 & 4 > 2 <!> </ x>");
}

TEST_F(AuthorsText, KeepsTheEndTagsThatAreNotThere) { expectKept("<ul><li>a<li>b</ul><dl><dt>c<dd>d</dl>"); }

TEST_F(AuthorsText, AChangedAttributeIsWrittenInDoubleQuotesAndAllElseOfTheTagKept) {
    const auto document = mFactory->NewDocument("<A Title='&eacute;' HREF = 'x'  Target=_top>y</A>");
    document->all()->tags("a")->Items().at(0)->setAttribute("href", "a&b\"c<d");
    EXPECT_EQ(document->documentElement()->outerHTML(),
              "<A Title='&eacute;' HREF=\"a&amp;b&quot;c<d\"  Target=_top>y</A>");
}

TEST_F(AuthorsText, ALinkSplitByBadNestingIsOneTagStill) {
    const auto document = mFactory->NewDocument("<a href=1>x<p>y</a>z");
    ASSERT_EQ(document->all()->tags("a")->length(), 2);
    document->all()->tags("a")->Items().at(1)->setAttribute("href", "2");
    EXPECT_EQ(document->documentElement()->outerHTML(), "<a href=\"2\">x<p>y</a>z");
}

TEST_F(AuthorsText, CannotKeepBytesThatAreNoText) {
    using namespace std::string_literals;
    EXPECT_EQ(changed("a\xFF"s + "b\0c\xED\xA0\x80"s),
              "a\xEF\xBF\xBD"s
              "b\xEF\xBF\xBD"
              "c\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST_F(AuthorsText, DoesNotObeyTheEncodingThatAMetaTagNames) {
    const auto document = mFactory->NewDocument("<meta charset=windows-1252>\xC3\xA9");
    EXPECT_EQ(document->body()->outerText(), "\xC3\xA9");
}

TEST_F(AuthorsText, KeepsASetOfFramesInABody) {
    const auto document =
        mFactory->NewDocument("<html><body><frameset><frame src=x></frameset></body></html>");
    EXPECT_EQ(document->body()->innerHTML(), "<frameset><frame src=x></frameset>");
}

TEST_F(AuthorsText, CannotKeepBadNestingAroundAReplacedElement) {
    const auto document = mFactory->NewDocument("<p>keep</i></p><div><b>1<p>2</b><u>3</u></p></div>");
    document->all()->tags("u")->Items().at(0)->setOuterHTML("4");
    EXPECT_EQ(document->documentElement()->outerHTML(), "<p>keep</i></p><div><b>1</b><p><b>2</b>4</p></div>");
}

TEST_F(AuthorsText, WritesTheEndTagThatAReplacedPieceLeftOut) {
    const auto document = mFactory->NewDocument("<table><tr><td>1<td>2</table>");
    document->all()->tags("td")->Items().at(0)->setOuterHTML("<th>0");
    EXPECT_EQ(document->documentElement()->outerHTML(), "<table><tr><th>0</th><td>2</table>");
}

TEST_F(AuthorsText, ClosesWhatContentPutIntoAnElementLeavesOpen) {
    for (const auto& [put, kept] : std::vector<Edit>{{"<i>x", "<i>x</i>"},
                                                     {"x</div>y", "xy"},
                                                     {"x<!-- c", "x<!-- c-->"},
                                                     {"x<a href=\"y", "x"},
                                                     {"a &amp; b &eacute;", "a &amp; b &eacute;"},
                                                     {"<I CLASS=k>x</I>", "<I CLASS=k>x</I>"}}) {
        EXPECT_EQ(withNewContent("<p><b>old</b> after", put), "<p><b>" + kept + "</b> after");
    }
}

TEST_F(AuthorsText, RefusesWhatItWouldHaveToCut) {
    std::string deep;
    for (int i = 0; i < 600; ++i) deep += "<div>";
    EXPECT_EQ(failureOf([&] { mFactory->NewDocument(deep); }), "The HTML nests deeper than 500 elements");
}

}  // namespace
}  // namespace quillbox
