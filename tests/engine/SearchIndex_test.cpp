#include "engine/SearchIndex.h"

#include "base/Text.h"
#include "engine/EngineTest.h"
#include "engine/PageText.h"
#include "engine/Words.h"

namespace quillbox {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> wordsOf(const std::string& text) {
    std::vector<std::string> words;
    forEachWord(text, [&](std::string_view word) { words.emplace_back(word); });
    return words;
}

TEST(Words, EndWhereLettersAndDigitsEnd) {
    EXPECT_THAT(wordsOf("Don't stop: 2 files, a-b_c."),
                ElementsAre("Don", "t", "stop", "2", "files", "a", "b", "c"));
    EXPECT_THAT(wordsOf("Größe \u00d6l"), ElementsAre("Größe", "Öl"));
    EXPECT_THAT(wordsOf(""), ElementsAre());
}

TEST(Words, GivePartsOfNamesInMixedCase) {
    EXPECT_THAT(wordsOf("NewTopicList"), ElementsAre("NewTopicList", "TopicList", "List"));
    EXPECT_THAT(wordsOf("QBProject"), ElementsAre("QBProject"));
    EXPECT_THAT(wordsOf("saveAsXML"), ElementsAre("saveAsXML", "AsXML", "XML"));
}

TEST(Words, OfWritingWithoutBlanksArePairs) {
    EXPECT_THAT(wordsOf("東京都"), ElementsAre("東京", "京都", "都"));
    EXPECT_THAT(wordsOf("CSSの例"), ElementsAre("CSS", "の例", "例"));
    EXPECT_THAT(wordsOf("人 と x"), ElementsAre("人", "と", "x"));
    EXPECT_THAT(wordsOf("サーバ"), ElementsAre("サー", "ーバ", "バ"));
    EXPECT_THAT(wordsOf("人"), ElementsAre("人"));
}

TEST(Words, AreFoundInAnySpelling) {
    EXPECT_EQ(searchForm("TOPIC"), "topic");
    EXPECT_EQ(searchForm("Größe"), "grosse");
    EXPECT_EQ(searchForm("ΕΛΛΗΝΙΚΌΣ"), searchForm("ελληνικός"));
    EXPECT_EQ(searchForm("e\u0301"), searchForm("\u00c9"));
    EXPECT_EQ(searchForm("ﬁle"), "file");
    EXPECT_EQ(searchForm("İstanbul"), "istanbul");
    EXPECT_EQ(searchForm("が"), "が");
}

TEST(PageText, IsThatOfMainWithoutItsNavigation) {
    const PageText text(
        "<html><head><title>Page &ndash; Book</title><meta name=\"keywords\" content=\"one, two &amp; "
        "three\">"
        "</head><body><nav>Menu</nav><main id=\"main\"><nav class=\"a\"><nav>x</nav>Trail</nav><h1>The "
        "<b>pa</b>ge"
        "</h1><p>First&nbsp;line<br>second <!-- <p>not this --> l<i>in</i>e<script>if (1 < 2) {}</script></p>"
        "<h2>Part</h2><table><tr><td>one<td title=\"a > "
        "b\">two</table><footer>end</footer></main>after</body>");
    EXPECT_EQ(text.Title(), "The page");
    EXPECT_EQ(text.Opening(200), "First line second line Part one two");
    ASSERT_THAT(text.Runs(), SizeIs(5));
    EXPECT_EQ(text.Runs()[0].text, "one, two & three");
    EXPECT_EQ(text.Runs()[0].place, TextPlace::Keywords);
    EXPECT_EQ(text.Runs()[3].place, TextPlace::Heading);
}

TEST(PageText, WithoutMainIsThatOfTheBody) {
    const PageText text("<title>A &lt; B</title><body class=\"x\"><p>5 < 6 &unknown; &#228;&#xe4;</body>");
    EXPECT_EQ(text.Title(), "A < B");
    EXPECT_EQ(text.Opening(200), "5 < 6 &unknown; ää");
    EXPECT_EQ(PageText("").Opening(10), "");
    EXPECT_EQ(PageText("<main><nav>never ended").Opening(10), "");
    EXPECT_EQ(PageText("<main>text <b").Opening(10), "text");
}

TEST(PageText, OpensWithWholeWords) {
    EXPECT_EQ(PageText("<main>one two three four</main>").Opening(10), "one two\u2026");
    EXPECT_EQ(PageText("<main>ΑΒΓΔΕΖΗΘΙΚΛ</main>").Opening(3), "ΑΒΓ\u2026");
    EXPECT_EQ(PageText("<main>short</main>").Opening(5), "short");
}

TEST(PageText, KnowsTheReferences) {
    EXPECT_EQ(withoutReferences(
                  "&Auml;&szlig;&yuml;&Omega;&sigmaf;&omega;&hellip;&amp;lt; & &; &#0; &#xD800; &#9999999;"),
              "ÄßÿΩςω…&lt; & &; &#0; &#xD800; &#9999999;");
}

// The scripts by their names.
std::map<std::string, std::string> scriptsOf(const SearchIndex& index) {
    std::map<std::string, std::string> scripts;
    for (const auto& script : index.Scripts()) scripts[script.name] = script.text;
    return scripts;
}

TEST(SearchIndexTest, TellsPagesAndWordsWithTheirWeights) {
    SearchIndex index("found");
    index.Add("a.html", "<main><h1>Fish</h1><p>Fish swim. I \"swim\".</p></main>");
    index.Add("b.html", "<main><p>Nothing</p></main>");
    index.Add("c.html", "<main><p>A fish</p></main>");
    const auto scripts = scriptsOf(index);
    EXPECT_EQ(scripts.at("pages-0"),
              "found(\"pages-0\",[\n[\"a.html\",\"Fish\",\"Fish swim. I "
              "\\\"swim\\\".\"],\n[\"b.html\",\"\",\"Nothing\"],"
              "\n[\"c.html\",\"\",\"A fish\"]]);\n");
    EXPECT_EQ(scripts.at("words-0"),
              "found(\"words-0\",[\n[\"fish\",9,22],\n[\"nothing\",12],\n[\"swim\",4]]);\n");
    EXPECT_EQ(scripts.at("index"),
              "found(\"index\",{\"pages\":3,\"firstPages\":[0],\"firstWords\":[\"fish\"]});\n");
}

TEST(SearchIndexTest, IsCutIntoScriptsOfALimitedSize) {
    SearchIndex index("found", 1000);
    for (int page = 0; page < 500; ++page)
        index.Add("page" + std::to_string(page) + ".html",
                  "<main>common word" + std::to_string(page) + "</main>");
    const auto scripts = index.Scripts();
    EXPECT_GT(scripts.size(), 20u);
    int commonPages = 0;
    for (const auto& script : scripts) {
        if (script.name == "index") continue;
        EXPECT_LT(script.text.size(), 1200u) << script.name;
        const auto at = script.text.find("[\"common\",");
        if (at == std::string::npos) continue;
        const auto entry = script.text.substr(at, script.text.find(']', at) - at);
        commonPages += static_cast<int>(std::count(entry.begin(), entry.end(), ','));
    }
    EXPECT_EQ(commonPages, 500);
}

TEST(SearchIndexTest, WordsStandInTheOrderOfScripts) {
    SearchIndex index("found");
    index.Add("a.html", "<main>\U00020000 \uFF76 \uFA0E z \u4E00 ab a1 10</main>");
    const auto words = scriptsOf(index).at("words-0");
    std::vector<std::string> order;
    for (auto at = words.find("[\""); at != std::string::npos; at = words.find("[\"", at + 1))
        order.push_back(words.substr(at + 2, words.find('"', at + 2) - at - 2));
    EXPECT_THAT(order, ElementsAre("10", "a1", "ab", "\u30AB", "\u4E00", "\U00020000", "\uFA0E"));
}

TEST(SearchIndexTest, HoldsNoTextThatCouldLeaveItsScript) {
    SearchIndex index("found");
    index.Add("a</script>.html", "<main><h1>&lt;/script&gt; \\ ' \" \u2028</h1></main>");
    for (const auto& [name, text] : scriptsOf(index)) EXPECT_THAT(text, Not(HasSubstr("</script"))) << name;
    EXPECT_THAT(scriptsOf(index).at("pages-0"), HasSubstr(R"("\u003c/script> \\ \u0027 \" )"));
}

class SearchBuildTest : public EngineTest {};

TEST_F(SearchBuildTest, WritesTheIndexOfThePagesThatAreSearched) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page' Search='True'/><Page File='other.html'/>"
        "<SearchIndex Folder='data/search' Function='site.take'/>");
    Put("page.html", "<title>%%itemtitle%%</title><main>%%body%%</main>");
    Put("other.html", "<main>hidden</main>");
    mGuide->AddPage("intro", "Intro", "visible");
    Build();
    EXPECT_THAT(mCreated, ElementsAre("intro.html", "other.html", "data/search/pages-0.js",
                                      "data/search/words-0.js", "data/search/index.js"));
    EXPECT_THAT(Output("data/search/pages-0.js"),
                StartsWith("site.take(\"pages-0\",[\n[\"intro.html\",\"Intro\","));
    EXPECT_THAT(Output("data/search/words-0.js"), Not(HasSubstr("hidden")));
    EXPECT_THAT(Output("data/search/words-0.js"), HasSubstr("visible"));
    const auto first = Output("data/search/words-0.js");
    Build();
    EXPECT_EQ(Output("data/search/words-0.js"), first);
}

TEST_F(SearchBuildTest, ATemplateWithoutAnIndexWritesNone) {
    PutTemplate("<Page File='page.html' ItemType='test.guide:page' Search='True'/>");
    Put("page.html", "<main>text</main>");
    mGuide->AddPage("intro", "Intro");
    Build();
    EXPECT_THAT(mCreated, ElementsAre("intro.html"));
}

}  // namespace
}  // namespace quillbox
