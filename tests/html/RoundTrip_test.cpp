#include <gtest/gtest.h>

#include "HostileBodies.h"
#include "adapters/html/Html.h"

namespace quillbox {
namespace {

class HtmlRoundTrip : public testing::Test {
  protected:
    Ref<HTMLDocument> documentOf(const std::string& html) { return mFactory->NewDocument(html); }
    std::string whole(const Ref<HTMLDocument>& document) { return document->documentElement()->outerHTML(); }

    std::shared_ptr<DOMFactory> mFactory = makeHtmlFactory();
};

TEST_F(HtmlRoundTrip, DocumentsComeBackToTheByte) {
    for (const std::string html : {
             "<html><body></body></html>",
             "<!DOCTYPE html>\r\n<html>\r\n<head><title>T &amp; "
             "t</title></head>\r\n<body>x</body>\r\n</html>\r\n",
             "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\">\n<HTML><BODY "
             "BGCOLOR=white>x</BODY></HTML>",
             "<!-- first --><?xml version='1.0'?><html><!-- second --><body>x</body><!-- third "
             "--></html><!-- last -->",
             "<html><head></head> <body> x </body> </html> ",
             "<html><frameset cols='1,2'><frame src=a><frame src=b></frameset></html>",
             "<title>t</title><p>x",
             "\xEF\xBB\xBF<!DOCTYPE html><p>x",
         }) {
        EXPECT_EQ(whole(documentOf(html)), html);
    }
}

TEST_F(HtmlRoundTrip, AtLeastAHundredHostileBodiesAreTried) { EXPECT_GE(hostileBodies().size(), 100u); }

TEST_F(HtmlRoundTrip, HostileBodiesComeBackToTheByte) {
    for (const auto& body : hostileBodies()) {
        SCOPED_TRACE(body);
        EXPECT_EQ(whole(documentOf(body)), body);
        const auto wrapped = "<html><body>" + body + "</body></html>";
        EXPECT_EQ(whole(documentOf(wrapped)), wrapped);
    }
}

// What one leaves open meets what the next one holds.
TEST_F(HtmlRoundTrip, HostileBodiesBehindEachOtherComeBackToTheByte) {
    for (const auto& first : hostileBodies()) {
        for (const auto& second : hostileBodies()) {
            const auto body = first + second;
            ASSERT_EQ(whole(documentOf(body)), body);
        }
    }
}

TEST_F(HtmlRoundTrip, ContentOfTheBodyComesBackAsItWasPut) {
    const auto document = documentOf("<html><head><base href=\"/p/\"/></head><body>old</body></html>");
    for (const auto& body : hostileBodies()) {
        SCOPED_TRACE(body);
        document->body()->setInnerHTML(body);
        EXPECT_EQ(document->body()->innerHTML(), body);
        EXPECT_EQ(whole(document), "<html><head><base href=\"/p/\"/></head><body>" + body + "</body></html>");
    }
}

// What a topic's body is wrapped into, and what is taken from there into the topic.
TEST_F(HtmlRoundTrip, HostileBodiesComeBackOutOfTheirWrapping) {
    for (const auto& body : hostileBodies()) {
        SCOPED_TRACE(body);
        const auto document = documentOf("<html><body>" + body + "</body></html>");
        EXPECT_EQ(document->body()->innerHTML(), body);
        document->body()->setAttribute("class", "x");
        EXPECT_EQ(document->body()->innerHTML(), body);
    }
}

TEST_F(HtmlRoundTrip, ATouchedLinkLeavesEveryOtherByteOfAHostileBody) {
    const std::string link = "<A class='k'  HREF=old.html>link</A>";
    for (const auto& body : hostileBodies()) {
        SCOPED_TRACE(body);
        const auto document = documentOf("<html><body><div>" + link + "</div>" + body + "</body></html>");
        const auto links = document->all()->tags("a")->Items();
        ASSERT_FALSE(links.empty());
        links.front()->setAttribute("href", "new.html");
        EXPECT_EQ(whole(document), "<html><body><div><A class='k'  HREF=\"new.html\">link</A></div>" + body +
                                       "</body></html>");
    }
}

TEST_F(HtmlRoundTrip, LinksInBadlyNestedPlacesAreChangedWhereTheyStand) {
    const std::string before = "<p><b>x<p>y</b><table><a href=1>f</a><tr><td>c</b></table><form><p></form>";
    const auto document = documentOf(before);
    document->all()->tags("a")->Items().at(0)->setAttribute("href", "2");
    EXPECT_EQ(whole(document),
              "<p><b>x<p>y</b><table><a href=\"2\">f</a><tr><td>c</b></table><form><p></form>");
}

TEST_F(HtmlRoundTrip, PartsOfALinkThatTheParserSplitShareItsOneTag) {
    const auto document = documentOf("<p><a href=1>x<p>y</a>z");
    const auto parts = document->all()->tags("a")->Items();
    ASSERT_EQ(parts.size(), 2u);
    parts[1]->setAttribute("href", "2");
    EXPECT_EQ(parts[0]->getAttribute("href"), "about:blank2");
    EXPECT_EQ(whole(document), "<p><a href=\"2\">x<p>y</a>z");
}

TEST_F(HtmlRoundTrip, BytesThatAreNoTextAreReplaced) {
    using namespace std::string_literals;
    const auto document = documentOf("a\xFF"s + "b\0c\xED\xA0\x80"s);
    EXPECT_EQ(document->body()->innerHTML(),
              "a\xEF\xBF\xBD"s
              "b\xEF\xBF\xBD"
              "c\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace quillbox
