#include <gmock/gmock.h>

#include "build/BuildTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

// A booklet that is being built with a print template.
class BookletTest : public ProviderTest {
  protected:
    BookletTest() {
        engine->AddTemplate("Print", "p");
        document->PageTemplates->Add(engine->templates->Item("Print"), "Print");
        document->TemplateName = "Print";
        manifest = addManifest("Book");
        manifest->BookletProperties->SetTemplateName("Print");
        document->scraps = {{"_HYPERLINK_TO_CODEMARK_CONTENT", "[code %%linkurl%%]"},
                            {"_HYPERLINK_TO_TOPIC_IN_BOOKLET", "[in %%linkcaption%% %%linkentrynumber%%]"},
                            {"_HYPERLINK_TO_TOPIC_NOT_IN_BOOKLET", "[out %%linkcaption%%]"},
                            {"_HYPERLINK_TO_URL_NO_CAPTION", "[url %%linkurl%%]"},
                            {"_HYPERLINK_TO_URL_WITH_CAPTION", "[url %%linkurl%%: %%linkcaption%%]"}};
    }
    // The body of a topic that is an entry of the booklet, as it is printed.
    std::string printed(const std::string& body) {
        const auto topic = addTopic("Chapter");
        topic->SetTopicSectionData("BodyText", body);
        makeCurrent(addEntry(manifest, topic, ""), manifest);
        manifest->AssignEntryNumbers();
        return expanded("%%topicsection:name=BodyText%%");
    }

    Ref<Manifest> manifest;
};

TEST_F(BookletTest, LinksBecomeTheScrapsOfTheirKind) {
    const auto inside = addTopic("Inside");
    addTopic("Outside");
    addEntry(manifest, inside, "");
    manifest->BookletProperties->SetEntryNumbering(enTopicTitles);
    EXPECT_EQ(printed("<p>a <a href=\"Inside.html\">b</a> c</p>"), "<p>a [in b 1] c</p>");
    EXPECT_EQ(printed("<a href=\"Outside.html#part\"><b>b</b></a>"), "[out <b>b</b>]");
    EXPECT_EQ(printed("<a href=\"Ns~Class.html\">b</a>"), "[code Ns~Class.html]");
    EXPECT_EQ(printed("<a href=\"mailto:me@example.org\">me@example.org</a>"), "[url mailto:me@example.org]");
    EXPECT_EQ(printed("<a href=\"mailto:me@example.org\">mail me</a>"),
              "[url mailto:me@example.org: mail me]");
}

TEST_F(BookletTest, LinksInsideAPageStay) {
    EXPECT_EQ(printed("<a href=\"#top\">up</a><a name=\"x\">here</a>"),
              "<a href=\"#top\">up</a><a name=\"x\">here</a>");
}

TEST_F(BookletTest, TheBookletsOwnScrapsWin) {
    addTopic("Outside");
    auto& properties = *manifest->BookletProperties;
    properties.SetLinkPreProcessTopicNotInBooklet("<i>%%linkcaption%%</i>");
    properties.SetLinkPreProcessURLWithCaption("{None}");
    EXPECT_EQ(printed("<a href=\"Outside.html\">b</a>"), "<i>b</i>");
    EXPECT_EQ(printed("<a href=\"mailto:x@y\">b</a>"), "<a href=\"mailto:x@y\">b</a>");
}

TEST_F(BookletTest, HeadingsAreNumberedBelowTheirEntry) {
    const auto* body = "<h3>One</h3><h3></h3><p>x</p><h3>Two</h3>";
    EXPECT_EQ(printed(body), body);
    manifest->BookletProperties->SetEntryNumbering(enTopicTitlesAndHTMLHeadings);
    EXPECT_EQ(printed(body), "<h3>2.1&nbsp; One</h3><h3></h3><p>x</p><h3>2.2&nbsp; Two</h3>");
}

TEST_F(BookletTest, ATemplateForHelpLeavesLinksAlone) {
    document->TemplateName = "Help";
    addTopic("Outside");
    EXPECT_EQ(printed("<a href=\"Outside.html\">b</a>"), "<a href=\"Outside.html\">b</a>");
}

TEST_F(BookletTest, AnEntryIsRenderedThroughThePageOfTheBookletsTemplate) {
    document->pages["/templates/Print/topic.html"] = "<h2>%%itemtitle%%</h2>%%topicsection:name=BodyText%%";
    const auto entry = addEntry(manifest, addTopic("Chapter", "text/%"), "");
    makeCurrent(entry);
    // What the page gives is the last word: no formats, no escapes.
    EXPECT_EQ(expanded("%%topiccontent:ValueFormat=x%%"), "<h2>Chapter title</h2>text%");
    EXPECT_EQ(expanded("%%coverpage%%"), "<h2>Chapter title</h2>text%");
    manifest->BookletProperties->SetTemplateName("Gone");
    EXPECT_THAT(failureOf([&] { expanded("%%topiccontent%%"); }), HasSubstr("The booklet has no template"));
}

TEST_F(BookletTest, ACoverPageIsTheBodyOfItsTopic) {
    document->pages["/templates/Print/topic.html"] = "a page for topics";
    makeCurrent(manifest);
    EXPECT_EQ(expanded("%%coverpage%%"), "");
    manifest->BookletProperties->SetCoverpageTopicID(addTopic("Cover", "<h1>Book</h1>")->Key);
    EXPECT_EQ(expanded("%%coverpage:ValueFormat=x%%"), "<h1>Book</h1>");
    EXPECT_EQ(expanded("%%topiccontent%%"), "");
}

TEST_F(BookletTest, ACoverPageNeedsThePageForTopicsTooWithOrWithoutATopic) {
    makeCurrent(manifest);
    EXPECT_THAT(failureOf([&] { expanded("%%coverpage%%"); }), HasSubstr("topic.html"));
    manifest->BookletProperties->SetTemplateName("Gone");
    EXPECT_THAT(failureOf([&] { expanded("%%coverpage%%"); }), HasSubstr("The booklet has no template"));
}

TEST_F(BookletTest, OtherItemsHaveNoContentOfABooklet) {
    makeCurrent(addTopic("Intro"), manifest);
    EXPECT_EQ(expanded("%%topiccontent%%%%coverpage%%"), "");
}

TEST_F(BookletTest, ThousandsOfLinksAreFoundInTables) {
    document->pages["/templates/Print/topic.html"] = "%%topicsection:name=BodyText%%";
    document->scraps["_E_body"] = "%%topiccontent%%%%manifestentrypagebreakbefore%%";
    constexpr int kEntries = 2000;
    for (int number = 0; number < kEntries; ++number) {
        const auto name = "T" + std::to_string(number);
        addEntry(manifest,
                 addTopic(name, "<a href=\"T" + std::to_string(kEntries - number - 1) + ".html\">x</a>"), "");
    }
    makeCurrent(manifest);
    const auto text = expanded("%%filtereditemlist:scrap=E,namespace=manifestentry%%");
    EXPECT_EQ(text.find("[out"), std::string::npos);
    EXPECT_THAT(text, HasSubstr("[in x ]"));
}

TEST_F(BookletTest, PrintingIsNotThereYet) {
    Ref<Document> none;
    EXPECT_EQ(failureOf([&] { project->BuildBooklets(none); }), "Booklets cannot be printed yet");
    EXPECT_FALSE(manifest->BuildIncludeFlag);
}

}  // namespace
}  // namespace quillbox
