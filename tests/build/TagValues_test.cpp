#include <gmock/gmock.h>

#include "build/BuildTest.h"

namespace quillbox {
namespace {

class TagValuesTest : public ProviderTest {
  protected:
    void setVariable(const std::string& name, const std::string& value) const {
        const auto variable = make<VariableValue>();
        variable->Name = name;
        variable->Value = value;
        document->VariableValues->Add(variable, name);
    }
    Ref<BookletLinkInfo> link(const std::string& caption, const Ref<Topic>& topic = nullptr) const {
        const auto info = make<BookletLinkInfo>();
        info->LinkCaption = caption;
        info->LinkURL = "http://example.org";
        info->LinkTopic = topic;
        return info;
    }
    // The value of a tag of a page that is being written to that file.
    std::string inFile(const std::string& name, const std::string& type) const {
        const auto element = make<Element>();
        element->Attributes->Add(type, "type");
        return data->ProvideData(element, newFile(name));
    }
};

TEST_F(TagValuesTest, LiteralsAreExpandedAndBroken) {
    EXPECT_EQ(expanded("%%literal:value=a<crlf>b%%"), "a<br>b");
    EXPECT_EQ(failureOf([&] { expanded("%%literal%%"); }),
              "the text, line 1, %%literal%%: The tag 'literal' needs the attribute 'value'");
}

TEST_F(TagValuesTest, AnEscapedPercentSignSurvivesInABody) {
    makeCurrent(addTopic("Intro", "%%literal:value=50/%%% and 60/% more"));
    EXPECT_EQ(expanded("%%topicsection:name=BodyText%%"), "50% and 60% more");
}

TEST_F(TagValuesTest, AFalseConditionLeavesNothingNotEvenTheEmptyFormat) {
    EXPECT_EQ(expanded("%%literal:value=x,condition=true%%"), "x");
    EXPECT_EQ(expanded("%%literal:value=x,condition=false,EmptyFormat=none%%"), "");
    EXPECT_EQ(expanded("%%literal:value=,condition=true,EmptyFormat=none%%"), "none");
}

TEST_F(TagValuesTest, AnInvalidConditionIsToldInThePage) {
    EXPECT_EQ(expanded("%%literal:value=x,condition=nonsense,ValueFormat=y%%"), "!INVALID CONDITION TYPE!");
}

TEST_F(TagValuesTest, TheCommonProviderEscapesTheValuesOfAllTags) {
    document->common->data["text"] = "<escaped>";
    makeCurrent(addTopic("Intro"));
    EXPECT_EQ(expanded("%%literal:value=x,escape=html%%"), "<escaped>");
    EXPECT_EQ(expanded("%%itemqualifiedname:escape=html%%"), "<escaped>");
    document->scraps["_BOX"] = "[%%literal%%]";
    EXPECT_EQ(expanded("%%literal:value=x,escape=html,ValueFormat=@_BOX%%"), "[<escaped>]");
    // Nothing stays nothing, and what nobody knows stays as it is written.
    EXPECT_EQ(expanded("%%literal:value=,escape=html%%"), "");
    EXPECT_EQ(expanded("%%nonsense:escape=html%%"), "%%nonsense:escape=html%%");
}

TEST_F(TagValuesTest, FormatsGoAroundValuesAndInPlaceOfNothing) {
    document->scraps["_BOLD"] = "<b>%%literal%%</b>";
    document->scraps["_NONE"] = "<i>%%literal%%</i>";
    EXPECT_EQ(expanded("%%literal:value=x,ValueFormat=@_BOLD,EmptyFormat=@_NONE%%"), "<b>x</b>");
    EXPECT_EQ(expanded("%%literal:value=,ValueFormat=@_BOLD,EmptyFormat=@_NONE%%"), "<i>%%literal%%</i>");
    EXPECT_EQ(expanded("%%literal:value=x,ValueFormat=plain%%"), "plain");
    EXPECT_EQ(expanded("%%literal:value=,ValueFormat=plain%%"), "");
}

TEST_F(TagValuesTest, ScriptsGetTheirQuotesEscaped) {
    EXPECT_EQ(expanded("%%literal:value=it's,ForScript=TRUE%%"), "it\\'s");
    EXPECT_EQ(expanded("%%literal:value=it's,ForScript=no%%"), "it's");
}

TEST_F(TagValuesTest, ACommentInACodeMemberIsEmptyWhateverItsFormats) {
    EXPECT_EQ(expanded("%%taggedcomment:EmptyFormat=x%%"), "");
}

TEST_F(TagValuesTest, AScrapIsExpanded) {
    document->scraps["_X"] = "[%%literal:value=1%%]<crlf>";
    EXPECT_EQ(expanded("%%scrap:name=_X%%"), "[1]<br>");
    EXPECT_EQ(expanded("%%scrap:name=_GONE%%"), "!MISSING SCRAP '_GONE'!");
}

TEST_F(TagValuesTest, ASectionIsThatOfTheTopicOrOfTheEntrysTopic) {
    const auto topic = addTopic("Intro", "body");
    EXPECT_EQ(expanded("%%topicsection:name=BodyText%%"), "");
    makeCurrent(project);
    EXPECT_EQ(expanded("%%topicsection:name=BodyText%%"), "");
    makeCurrent(addEntry(addManifest("Book"), topic, ""));
    EXPECT_EQ(expanded("%%topicsection:name=BodyText%%"), "body");
    makeCurrent(addEntry(addManifest("Bare"), nullptr, "Part"));
    EXPECT_EQ(expanded("%%topicsection:name=BodyText%%"), "");
}

TEST_F(TagValuesTest, AVariableIsExpandedInQuotesToo) {
    setVariable("Company", "<a title=\"%%literal:value=x%%\">%%literal:value=y%%</a>");
    EXPECT_EQ(expanded("%%variable:name=company%%"), "<a title=\"x\">y</a>");
}

TEST_F(TagValuesTest, AVariableThatFailsIsEmpty) {
    setVariable("Broken", "before %%literal%%");
    for (const auto* tag : {"%%variable:name=Gone%%", "%%variable:name=Broken%%", "%%variable%%"}) {
        EXPECT_EQ(expanded(tag), "") << tag;
    }
}

TEST_F(TagValuesTest, AVariableThatContainsItselfEnds) {
    setVariable("a", "x%%variable:name=b%%%%variable:name=b%%");
    setVariable("b", "y%%variable:name=a%%");
    EXPECT_EQ(expanded("%%variable:name=a%%"), "xyy");
    EXPECT_EQ(expanded("%%variable:name=a%%"), "xyy");
}

TEST_F(TagValuesTest, TheFileNameIsThatOfThePageWithoutFolderAndExtension) {
    EXPECT_EQ(inFile("/work/manual/pages/Intro.html", "filename"), "Intro");
    EXPECT_EQ(expanded("%%filename%%"), "");
}

TEST_F(TagValuesTest, StyleSheetsAreThoseOfTheTopic) {
    for (const auto* name : {"css/a.css", "logo.png", "css/b.css"}) addFile(std::string(kFolder) + name);
    const auto topic = addTopic("Intro");
    makeCurrent(topic);
    const std::string a = R"(<link rel="stylesheet" type="text/css" href="css/a.css">)";
    const std::string b = R"(<link rel="stylesheet" type="text/css" href="css/b.css">)";
    EXPECT_EQ(expanded("%%stylesheets%%"), a + "\r\n" + b);
    topic->SetAllStylesheets(false);
    EXPECT_EQ(expanded("%%stylesheets%%"), "");
    topic->AddStyleSheet("css\\b.css");
    EXPECT_EQ(expanded("%%stylesheets%%"), b);
    makeCurrent(project);
    EXPECT_EQ(expanded("%%stylesheets%%"), a + "\r\n" + b);
}

TEST_F(TagValuesTest, StyleSheetsFollowTheFilesOfTheProject) {
    makeCurrent(addTopic("Intro"));
    EXPECT_EQ(expanded("%%stylesheets%%"), "");
    const auto file = addFile("/work/manual/a.css");
    EXPECT_THAT(expanded("%%stylesheets%%"), testing::HasSubstr("\"a.css\""));
    file->Filename()->SetPath("/work/manual/sub/z.css");
    EXPECT_THAT(expanded("%%stylesheets%%"), testing::HasSubstr("\"sub/z.css\""));
    project->Filename->SetPath("/work/manual/sub/Manual.qbp");
    EXPECT_THAT(expanded("%%stylesheets%%"), testing::HasSubstr("\"z.css\""));
    project->OtherFiles->Remove(1);
    EXPECT_EQ(expanded("%%stylesheets%%"), "");
}

TEST_F(TagValuesTest, StyleSheetsNeedAnItem) {
    addFile("/work/manual/a.css");
    EXPECT_EQ(expanded("%%stylesheets%%"), "");
}

TEST_F(TagValuesTest, ACounterStartsOnceWithItsInitialValue) {
    for (const auto* number : {"5", "6", "7"}) {
        EXPECT_EQ(expanded("%%incrementingvalue:Name=x,InitialValue=5%%"), number);
    }
    EXPECT_EQ(expanded("%%incrementingvalue:Name=X,InitialValue=50%%"), "8");
    EXPECT_EQ(expanded("%%incrementingvalue:Name=y%%"), "1");
}

TEST_F(TagValuesTest, ACounterWithoutANameIsEmpty) {
    EXPECT_EQ(expanded("%%incrementingvalue:InitialValue=5%%"), "");
    EXPECT_EQ(expanded("%%incrementingvalue%%"), "");
}

TEST_F(TagValuesTest, ACounterThatHasRunFullFails) {
    EXPECT_EQ(expanded("%%incrementingvalue:Name=x,InitialValue=2147483647%%"), "2147483647");
    EXPECT_THAT(failureOf([&] { expanded("%%incrementingvalue:Name=x%%"); }),
                testing::HasSubstr("'x' has run full"));
}

TEST_F(TagValuesTest, LinkTagsSpeakOfBookletLinksAlone) {
    makeCurrent(addTopic("Intro"));
    for (const auto* tag : {"%%linkurl%%", "%%linkcaption%%", "%%linkentrynumber%%"})
        EXPECT_EQ(expanded(tag), "") << tag;
    EXPECT_EQ(expanded("%%linkurl:EmptyFormat=none%%"), "none");
    makeCurrent(link("see"));
    EXPECT_EQ(expanded("%%linkurl%%"), "http://example.org");
    EXPECT_EQ(expanded("%%linkcaption:OnlyIfNotTopicTitle=True%%"), "see");
}

TEST_F(TagValuesTest, ALinkCaptionMayHideBehindTheTopicsTitle) {
    const auto topic = addTopic("Intro");
    makeCurrent(link("INTRO TITLE", topic));
    EXPECT_EQ(expanded("%%linkcaption%%"), "INTRO TITLE");
    EXPECT_EQ(expanded("%%linkcaption:OnlyIfNotTopicTitle=true%%"), "");
    makeCurrent(link("other", topic));
    EXPECT_EQ(expanded("%%linkcaption:OnlyIfNotTopicTitle=True%%"), "other");
}

TEST_F(TagValuesTest, ALinkEntryNumberIsThatOfTheTopicsFirstEntry) {
    const auto manifest = addManifest("Book");
    const auto topic = addTopic("Intro");
    const auto stranger = addTopic("Stranger");
    const auto part = addEntry(manifest, nullptr, "Part");
    addEntry(manifest, topic, "", part);
    manifest->AssignEntryNumbers();
    makeCurrent(link("see", topic), manifest);
    EXPECT_EQ(expanded("%%linkentrynumber%%"), "");
    manifest->BookletProperties->SetEntryNumbering(enTopicTitles);
    EXPECT_EQ(expanded("%%linkentrynumber%%"), "1.1");
    EXPECT_EQ(expanded("%%linkentrynumber:Suffix=.%%"), "1.1.");
    makeCurrent(link("see", stranger), manifest);
    EXPECT_EQ(expanded("%%linkentrynumber:Suffix=.%%"), "");
    makeCurrent(link("see"), manifest);
    EXPECT_EQ(expanded("%%linkentrynumber%%"), "");
}

TEST_F(TagValuesTest, ABookletTitleGivesWayToARawCoverPage) {
    EXPECT_EQ(expanded("[%%booklettitle%%]"), "[]");
    const auto manifest = addManifest("Book");
    auto& properties = *manifest->BookletProperties;
    properties.SetTitle("The Book");
    makeCurrent(manifest);
    EXPECT_EQ(expanded("%%booklettitle%%"), "The Book");
    properties.SetRawCoverPage(true);
    EXPECT_EQ(expanded("%%booklettitle%%"), "The Book");
    properties.SetCoverpageTopicID(addTopic("Cover")->Key);
    EXPECT_EQ(expanded("%%booklettitle%%"), "");
    EXPECT_EQ(data->GetProperty("booklettitle"), "The Book");
    properties.SetRawCoverPage(false);
    EXPECT_EQ(expanded("%%booklettitle%%"), "The Book");
}

TEST_F(TagValuesTest, ABookletsContentsNeedTheManifestItself) {
    EXPECT_EQ(expanded("[%%booklettableofcontents%%]"), "[]");
    const auto manifest = addManifest("Book");
    manifest->BookletProperties->SetGenerateTOC(true);
    makeCurrent(addTopic("Intro"), manifest);
    EXPECT_THAT(failureOf([&] { expanded("%%booklettableofcontents%%"); }),
                testing::HasSubstr("needs a manifest as the current item"));
}

}  // namespace
}  // namespace quillbox
