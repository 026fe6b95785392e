// Tables of contents and the tags that follow them.

#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

class ContentsTest : public EngineTest {
  protected:
    void SetUp() override {
        for (const auto* name : {"one", "two", "three", "four"}) mGuide->AddPage(name, name);
    }
    std::string Of(const std::string& page, const std::string& pageText) {
        PutPage(pageText);
        Build();
        return Output(page + ".html");
    }
};

TEST_F(ContentsTest, TheUsualFormIsThatOfHtmlHelp) {
    mGuide->contents = {
        {"One \"&\"", "one.html"}, {"Two", "two.html#x", 2, 11}, {"Book", "", 2}, {"Web", "http://x/?a&b"}};
    EXPECT_EQ(Of("one", "%%tableofcontents%%"),
              "<UL>\n"
              "<LI> <OBJECT type=\"text/sitemap\">\n"
              "\t<param name=\"Name\" value=\"One &quot;&amp;&quot;\">\n"
              "\t<param name=\"Local\" value=\"one.html\">\n"
              "\t</OBJECT>\n"
              "<UL>\n"
              "<LI> <OBJECT type=\"text/sitemap\">\n"
              "\t<param name=\"Name\" value=\"Two\">\n"
              "\t<param name=\"Local\" value=\"two.html#x\">\n"
              "\t<param name=\"ImageNumber\" value=\"11\">\n"
              "\t</OBJECT>\n"
              "<LI> <OBJECT type=\"text/sitemap\">\n"
              "\t<param name=\"Name\" value=\"Book\">\n"
              "\t</OBJECT>\n"
              "</UL>\n"
              "<LI> <OBJECT type=\"text/sitemap\">\n"
              "\t<param name=\"Name\" value=\"Web\">\n"
              "\t<param name=\"Local\" value=\"http://x/?a&amp;b\">\n"
              "\t</OBJECT>\n"
              "</UL>\n");
}

TEST_F(ContentsTest, AScrapGivesANodeAnotherForm) {
    Put("scraps/_NODE.html",
        "%%ReplaceInQuotes:Value=True%%<N u=\"%%nodelink%%\" i=\"%%nodeicon%%\">%%nodelevel%%%%nodecaption%% "
        "%%nodekind%%"
        "%%literal:value=/,condition=nodekind is 'page'%%");
    mGuide->contents = {{"A", "one.html"}, {"B & C", "two.html", 2, 3}, {"D", "", 1}};
    EXPECT_EQ(Of("one", "<<%%tableofcontents:BookPrefix=[,BookSuffix=],NodeScrap=_NODE%%>>%%itemtitle%%"),
              "<<[\n<N u=\"one.html\" i=\"\">1A book\n[\n<N u=\"two.html\" i=\"3\">2B &amp; C page/\n]\n"
              "<N u=\"\" i=\"\">1D page/\n]\n>>one");
}

TEST_F(ContentsTest, ANodeSaysHowItStandsToThePage) {
    Put("scraps/_NODE.html", "%%nodecaption%%:%%nodeplace%%");
    mGuide->contents = {{"Book", "", 1}, {"A", "one.html", 2}, {"B", "two.html", 3}, {"C", "three.html", 1}};
    const std::string text = "%%tableofcontents:BookPrefix=(,BookSuffix=),NodeScrap=_NODE%%";
    EXPECT_EQ(Of("two", text), "(\nBook:above\n(\nA:above\n(\nB:current\n)\n)\nC:\n)\n");
    EXPECT_EQ(Output("three.html"), "(\nBook:\n(\nA:\n(\nB:\n)\n)\nC:current\n)\n");
    EXPECT_EQ(Output("four.html"), "(\nBook:\n(\nA:\n(\nB:\n)\n)\nC:\n)\n");
}

TEST_F(ContentsTest, ABranchIsWhatLiesBelowOrTheWholeBook) {
    mGuide->contents = {{"Book", "", 1}, {"A", "one.html", 2}, {"B", "two.html", 3}, {"C", "three.html", 2}};
    const std::string text = "%%branch%%|%%branch:of=book%%|%%branch:of=book,levels=2%%";
    const std::string a = "<a href=\"one.html\">A</a>", b = "<a href=\"two.html\">B</a>",
                      c = "<a href=\"three.html\">C</a>";
    EXPECT_EQ(Of("one", text), "<ul><li>" + b + "</li></ul>|<ul><li class=\"current\">" + a + "</li><li>" +
                                   c + "</li></ul>|<ul><li class=\"current\">" + a + "<ul><li>" + b +
                                   "</li></ul></li><li>" + c + "</li></ul>");
    EXPECT_EQ(Output("two.html"),
              "|<ul><li class=\"current\">" + b + "</li></ul>|<ul><li class=\"current\">" + b + "</li></ul>");
    EXPECT_EQ(Output("four.html"), "||");
}

TEST_F(ContentsTest, AFooterStandsBehindWhatLiesBelowANode) {
    Put("scraps/_NODE.html", "%%ReplaceInQuotes:Value=True%%<n t=\"%%nodecaption%%\">");
    Put("scraps/_NODE_footer.html", "</n %%nodecaption%%>");
    mGuide->contents = {{"A", "one.html"}, {"B", "", 2}, {"C", "", 3}, {"D", "", 2}, {"E", ""}};
    EXPECT_EQ(Of("one", "%%tableofcontents:NodeScrap=_NODE%%"),
              "<n t=\"A\">\n<n t=\"B\">\n<n t=\"C\">\n</n C>\n</n B>\n<n t=\"D\">\n</n D>\n</n A>\n"
              "<n t=\"E\">\n</n E>\n");
}

TEST_F(ContentsTest, ANodeForRelatedContentsHasNoFooter) {
    Put("scraps/_NODE.html", "<%%nodecaption%%>");
    Put("scraps/_NODE_footer.html", "</%%nodecaption%%>");
    mGuide->contents = {{"A", "one.html"}, {"related here", "", 1, -1, 3}};
    EXPECT_EQ(Of("one", "%%tableofcontents:NodeScrap=_NODE%%"), "<A>\n</A>\n");
}

TEST_F(ContentsTest, AnEmptyContentsWritesNothing) { EXPECT_EQ(Of("one", "<%%tableofcontents%%>"), "<>"); }

TEST_F(ContentsTest, NodesThatAreLeftOutTakeTheirBranchWithThem) {
    mGuide->contents = {{"A", "one.html"}};
    PutPage("%%tableofcontents:BookPrefix=[,BookSuffix=],NodeScrap=_N%%");
    Put("scraps/_N.html", "%%nodecaption%%");
    Prepare(*mDocument);
    auto definition = make<TOCDefinition>();
    const auto add = [&](const std::string& caption, const Ref<NodeDef>& parent, bool included) {
        auto node = make<NodeDef>();
        node->Caption = caption;
        node->Parent.Set(parent);
        node->Included = included;
        definition->Nodes->Add(node, node->Key);
        return node;
    };
    const auto out = add("out", nullptr, false);
    const auto below = add("below", out, true);
    add("deeper", below, true);
    const auto kept = add("kept", nullptr, true);
    add("child", kept, true);
    mDocument->TOCDefs->Add(Value(definition), "Other");
    mDocument->TOCBookPrefix = "[";
    mDocument->TOCBookSuffix = "]";
    mDocument->TOCNodeScrap = "_N";
    writeFile(mTemplates + "Other/template.xml", "<PageTemplate Name='Other'/>");
    mDocument->PageTemplates->Add(mEngine->Templates().PageTemplates()->Item("Other"), "Other");
    mGuide->contents = {{"related here", "", 1, -1, 3}, {"A", "one.html"}};
    mDocument->Build();
    EXPECT_EQ(Output("one.html"), "[\n[\nkept\n[\nchild\n]\n]\nA\n]\n");
}

TEST_F(ContentsTest, AVeryDeepTreeIsWritten) {
    for (int level = 1; level <= 20000; ++level) mGuide->contents.push_back({"n", "", level});
    mGuide->contents.push_back({"last", "one.html"});
    Put("scraps/_N.html", "%%nodecaption%%");
    const auto text = Of("one", "%%tableofcontents:BookPrefix=[,BookSuffix=],NodeScrap=_N%%");
    EXPECT_THAT(text, testing::EndsWith("]\nlast\n]\n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '['), 20000);
    EXPECT_EQ(std::count(text.begin(), text.end(), ']'), 20000);
}

TEST_F(ContentsTest, NeighboursFollowTheOrderOfReading) {
    mGuide->contents = {
        {"First", "one.html"},         {"again", "one.html#part", 2}, {"A book", "", 1},
        {"Gone", "gone.html", 2},      {"Web", "https://x.org/", 2},  {"Second", "two.html", 2},
        {"Third & last", "THREE.html"}};
    const std::string text =
        "%%previouspage%%|%%previouspagetitle%%|%%nextpage%%|%%nextpagetitle%%|%%uppage%%|%%uppagetitle%%|%%"
        "breadcrumb%%";
    EXPECT_EQ(Of("one", text), "||two.html|Second|||");
    EXPECT_EQ(Of("two", text), "one.html|First|THREE.html|Third &amp; last|||A book");
    EXPECT_EQ(Of("three", text), "two.html|Second|||||");
    EXPECT_EQ(Of("four", text), "||||||");
}

TEST_F(ContentsTest, ABranchListsWhatLiesBelow) {
    mGuide->contents = {
        {"One", "one.html"}, {"Two", "two.html", 2}, {"Three", "three.html", 3}, {"Four", "four.html", 2}};
    EXPECT_EQ(Of("one", "%%branch%%"),
              "<ul><li><a href=\"two.html\">Two</a></li><li><a href=\"four.html\">Four</a></li></ul>");
    EXPECT_EQ(Of("one", "%%branch:levels=5%%"),
              "<ul><li><a href=\"two.html\">Two</a><ul><li><a href=\"three.html\">Three</a></li></ul></li>"
              "<li><a href=\"four.html\">Four</a></li></ul>");
    EXPECT_EQ(Of("three", "[%%branch%%] %%breadcrumb:separator= / %%"),
              "[] <a href=\"one.html\">One</a> / <a href=\"two.html\">Two</a>");
    EXPECT_EQ(Of("one", "%%contentscount%%"), "4");
}

TEST_F(ContentsTest, LinksFromAFolderLeadBackToTheRoot) {
    mGuide->AddPage("sub/five", "five");
    mGuide->contents = {{"One", "one.html"}, {"Five", "sub/five.html", 2}, {"Two", "two.html", 1}};
    EXPECT_EQ(Of("sub/five", "%%previouspage%% %%nextpage%% %%breadcrumb%%"),
              "../one.html ../two.html <a href=\"../one.html\">One</a>");
}

TEST_F(ContentsTest, AskingForContentsLeavesTheSettingsOfTheNextTableAlone) {
    mGuide->contents = {{"One", "one.html"}};
    Put("scraps/_N.html", "%%nodecaption%%");
    PutTemplate("<Page File='page.html' ItemType='test.guide:page'/>");
    Put("page.html", "%%nextpage%%%%tableofcontents:BookPrefix=[,BookSuffix=],NodeScrap=_N%%");
    Build();
    EXPECT_EQ(Output("one.html"), "[\nOne\n]\n");
}

TEST_F(ContentsTest, ATableNeedsAFileAndATemplate) {
    Prepare(*mDocument);
    EXPECT_EQ(failureOf([&] { mDocument->StreamTOC(nullptr, nullptr); }),
              "A table of contents needs a file and a template");
}

}  // namespace
}  // namespace quillbox
