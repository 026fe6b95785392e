#include "support/ProjectTest.h"
#include "topics/RelatedTopics.h"
#include "topics/TopicSection.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TopicFile : public ProjectTest {
  protected:
    static Ref<XMLElement> parse(const std::string& text) {
        const auto document = platform().xml->NewDocument();
        document->Parse(text);
        return document->RootElement();
    }
    Ref<Topic> load(const std::string& text) const {
        const auto topic = make<Topic>();
        topic->SetQbProject(project);
        topic->Load(parse(text));
        return topic;
    }
    static std::string saved(const Ref<Topic>& topic) {
        const auto document = platform().xml->NewDocument();
        document->RootElement()->SetName("Topic");
        topic->Save(document->RootElement());
        return document->ToXml();
    }
    static Date day(int year, int month, int day) { return *Date::From({year, month, day, 0, 0, 0, 0}); }
    std::string file(const Ref<Topic>& topic) const {
        return "/work/manual/TopicData/" + topic->Key + ".xml";
    }
};

TEST_F(TopicFile, ASavedTopicHasThisText) {
    const auto topic = project->NewTopic();
    topic->SetTopicCategory(addCategory("How to"));
    topic->SetName("Intro");
    topic->SetTitle("An \"intro\" & more");
    topic->SetStatus("Draft");
    topic->SetNotes("a\r\n b ");
    topic->SetLayoutName("wide.html");
    topic->SetHelpContextIDs("1, 2");
    topic->SetAllStylesheets(false);
    topic->AddStyleSheet("css/a.css");
    topic->AddStyleSheet("b.css");
    topic->AddKeyword("one");
    topic->AddKeyword("<two>");
    const auto related = make<RelatedTopic>();
    related->SetRelatedTopicType(rttURL);
    related->SetURL("https://example.org/?a&b");
    related->SetTitle("Example");
    related->SetCategory("See also");
    topic->RelatedTopics()->Add(related);
    topic->SetTopicSectionData("BodyText", "<p>Body ]]> &amp;</p>\n");
    EXPECT_EQ(saved(topic),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Topic Key="{00000000-0000-0000-0000-000000000001}" Name="Intro" Title="An &quot;intro&quot; &amp; more" )"
              R"(ContentsTitle="An &quot;intro&quot; &amp; more" IsDefault="False" Status="Draft" )"
              R"(CreatedOn="14-03-2026 15:09" ModifiedOn="14-03-2026 15:09" LayoutName="wide.html" )"
              R"(AllStyleSheets="False" AutoGenerateIndexEntry="True" IncludeInHelpFile="True" )"
              R"(HelpContextIDs="1, 2" Category="{00000000-0000-0000-0000-000000000002}">
  <st>
    <f>css/a.css</f>
    <f>b.css</f>
  </st>
  <Notes>a&#13;
 b </Notes>
  <k Value="one"/>
  <k Value="&lt;two&gt;"/>
  <r t="" cat="See also" Title="Example" rt="1" URL="https://example.org/?a&amp;b"/>
  <s k="BodyText">&lt;p&gt;Body ]]&gt; &amp;amp;&lt;/p&gt;
</s>
</Topic>
)");
}

TEST_F(TopicFile, AnEmptyTopicLoadsWithDefaults) {
    const auto topic = load("<Topic Key='{K}'/>");
    EXPECT_EQ(topic->Key, "{K}");
    EXPECT_EQ(topic->Name(), "");
    EXPECT_EQ(topic->Status(), "In Progress");
    EXPECT_EQ(topic->CreatedOn(), outside.system->now);
    EXPECT_EQ(topic->ModifiedOn(), outside.system->now);
    EXPECT_TRUE(topic->AllStylesheets());
    EXPECT_TRUE(topic->AutoGenerateIndexEntry());
    EXPECT_TRUE(topic->IncludeInHelpFile());
    EXPECT_FALSE(topic->NewTopicFlag);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_FALSE(topic->PauseEvents());
}

TEST_F(TopicFile, ALoadTellsNobodyAndClearsAPause) {
    const auto topic = make<Topic>();
    topic->SetQbProject(project);
    topic->SetPauseEvents(true);
    settle();
    EventLog log(project);
    topic->Load(
        parse("<Topic Key='{K}' Name='n' Title='t' IsDefault='True'><k value='x'/><s k='BodyText'>b</s>"
              "<notes>n</notes></Topic>"));
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(topic->Dirty());
    EXPECT_FALSE(topic->PauseEvents());
    topic->SetTitle("x");
    EXPECT_EQ(log.Count("TopicChanged"), 1);
}

TEST_F(TopicFile, AKeyThatIsEmptyIsMadeAndOneThatIsMissingFails) {
    EXPECT_EQ(load("<Topic Key=''/>")->Key.size(), 38u);
    EXPECT_THAT(failureOf([&] { load("<Topic Name='x'/>"); }), HasSubstr("'Key'"));
}

TEST_F(TopicFile, DatesAreReadByPositionAndLoseTheirTime) {
    const auto dates = [&](const std::string& text) {
        const auto topic = load("<Topic Key='k' CreatedOn='" + text + "' ModifiedOn='" + text + "'/>");
        EXPECT_EQ(topic->CreatedOn(), topic->ModifiedOn());
        return topic->CreatedOn();
    };
    EXPECT_EQ(dates("05-03-2004 17:09"), day(2004, 3, 5));
    EXPECT_EQ(dates("05/03/2004"), day(2004, 3, 5));
    EXPECT_EQ(dates("05x03x2004 and more"), day(2004, 3, 5));
    for (const auto* unreadable : {"", "2004-03-05", "99-99-9999", "29-02-2001", "5-3-2004", "aa-bb-cccc"}) {
        EXPECT_EQ(dates(unreadable), outside.system->now) << unreadable;
    }
}

TEST_F(TopicFile, AfterALoadAndASaveTheTimeIsMidnight) {
    const auto topic = load("<Topic Key='k' CreatedOn='05-03-2004 17:09' ModifiedOn='06-03-2004 18:10'/>");
    EXPECT_THAT(saved(topic), HasSubstr("CreatedOn=\"05-03-2004 00:00\" ModifiedOn=\"06-03-2004 00:00\""));
}

TEST_F(TopicFile, AContentsTitleEqualToTheTitleIsNotKept) {
    EXPECT_EQ(load("<Topic Key='k' Title='a' ContentsTitle='a'/>")->InternalContentsTitle(), "");
    EXPECT_EQ(load("<Topic Key='k' Title='a' ContentsTitle='A'/>")->InternalContentsTitle(), "A");
    const auto topic = addTopic("x");
    topic->SetContentsTitle(topic->Title());
    EXPECT_EQ(topic->InternalContentsTitle(), topic->Title());
    EXPECT_EQ(load(saved(topic))->InternalContentsTitle(), "");
}

TEST_F(TopicFile, NotesAreTrimmedAndALineBreakAloneIsNothing) {
    EXPECT_EQ(load("<Topic Key='k'><Notes>  a b  </Notes></Topic>")->Notes(), "a b");
    EXPECT_EQ(load("<Topic Key='k'><notes>&#13;&#10;</notes></Topic>")->Notes(), "");
    EXPECT_EQ(load("<Topic Key='k'><Notes> &#13;&#10; </Notes></Topic>")->Notes(), "");
    EXPECT_EQ(load("<Topic Key='k'><NOTES>\n</NOTES></Topic>")->Notes(), "\n");
}

TEST_F(TopicFile, BooleansAreTrueForOneTextAlone) {
    const auto flags = [&](const std::string& text) {
        const auto topic = load("<Topic Key='k' IsDefault='" + text + "' AllStyleSheets='" + text +
                                "' AutoGenerateIndexEntry='" + text + "' IncludeInHelpFile='" + text + "'/>");
        return std::vector<bool>{topic->IsDefault(), topic->AllStylesheets(), topic->AutoGenerateIndexEntry(),
                                 topic->IncludeInHelpFile()};
    };
    EXPECT_THAT(flags("True"), testing::Each(true));
    for (const auto* other : {"true", "TRUE", "1", "-1", "", "False", " True"}) {
        EXPECT_THAT(flags(other), testing::Each(false)) << other;
    }
}

TEST_F(TopicFile, AttributesAndChildrenAreReadInAnyCase) {
    const auto topic = load(
        "<TOPIC KEY='k' NAME='n' allstylesheets='False' helpcontextids='7'>"
        "<K VALUE='one'/><ST><F>a.css</F><g>b.css</g></ST><S K='bodytext'>b</S></TOPIC>");
    EXPECT_EQ(topic->Key, "k");
    EXPECT_EQ(topic->Name(), "n");
    EXPECT_EQ(topic->HelpContextIDs(), "7");
    EXPECT_THAT(topic->Keywords->Texts(), ElementsAre("one"));
    EXPECT_THAT(topic->StyleSheets()->Texts(), ElementsAre("a.css", "b.css"));
    EXPECT_EQ(topic->TopicSectionData("BodyText"), "b");
}

TEST_F(TopicFile, ASelectionOfStylesheetsIsSkippedWhereAllAreUsed) {
    EXPECT_EQ(load("<Topic Key='k'><st><f>a.css</f></st></Topic>")->StyleSheets()->Count(), 0);
}

TEST_F(TopicFile, TheOlderFormOfTheBodyLoads) {
    EXPECT_EQ(load("<Topic Key='k'><c>&lt;p&gt;</c></Topic>")->TopicSectionData("BodyText"), "<p>");
    EXPECT_THAT(failureOf([&] { load("<Topic Key='k'><c/><s k='BodyText'/></Topic>"); }),
                HasSubstr("already"));
}

TEST_F(TopicFile, ASectionOfAnUnknownKeyStopsTheLoadAndLeavesTheTopicPaused) {
    const auto topic = make<Topic>();
    topic->SetQbProject(project);
    const auto failure = failureOf([&] { topic->Load(parse("<Topic Key='k'>\n<s k='Other'/></Topic>")); });
    EXPECT_EQ(failure, "line 2, element 's': There is no topic section 'Other'");
    EXPECT_TRUE(topic->PauseEvents());
}

TEST_F(TopicFile, ACategoryIsFoundByItsKey) {
    const auto category = addCategory("c");
    EXPECT_EQ(load("<Topic Key='k' Category='" + category->Key + "'/>")->TopicCategory(), category);
    EXPECT_EQ(load("<Topic Key='k' Category='none'/>")->TopicCategory(), nullptr);
}

TEST_F(TopicFile, ALoadReplacesWhatTheTopicHeld) {
    const auto topic = addTopic("Old", "<p>old</p>");
    topic->AddKeyword("old");
    topic->RelatedTopics()->Add(make<RelatedTopic>());
    const auto oldRelated = topic->RelatedTopics();
    topic->Load(parse("<Topic Key='k'/>"));
    EXPECT_EQ(topic->Name(), "Old");
    EXPECT_EQ(topic->Keywords->Count(), 0);
    EXPECT_EQ(topic->TopicSections->Count(), 0);
    EXPECT_EQ(topic->RelatedTopics()->Count(), 0);
    EXPECT_EQ(topic->RelatedTopics()->Topic(), nullptr);
    settle();
    oldRelated->Add(make<RelatedTopic>());
    EXPECT_FALSE(topic->Dirty());
    topic->RelatedTopics()->Add(make<RelatedTopic>());
    EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicFile, ASaveClearsTheMarksOfTheTopicAndNotThoseOfTheProject) {
    const auto topic = addTopic("One");
    saved(topic);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_FALSE(topic->NewTopicFlag);
    EXPECT_TRUE(project->TopicsDirty());
}

TEST_F(TopicFile, WithSeparateFilesTheElementKeepsTheKeyAlone) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto topic = addTopic("One", "<p>x</p>");
    EXPECT_THAT(saved(topic), HasSubstr("<Topic Key=\"" + topic->Key + "\"/>"));
    EXPECT_THAT(bytes(file(topic)), HasSubstr("<Topic Name=\"One\""));
    EXPECT_THAT(bytes(file(topic)), testing::Not(HasSubstr("Key=")));
    const auto read = load("<Topic Key='" + topic->Key + "' Name='not this'/>");
    EXPECT_EQ(read->Name(), "One");
    EXPECT_EQ(read->TopicSectionData("BodyText"), "<p>x</p>");
}

TEST_F(TopicFile, ACleanTopicWithAFileLeavesItAlone) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto topic = addTopic("One");
    outside.files->Put(file(topic), "mine");
    topic->SetDirty(false);
    EXPECT_THAT(saved(topic), HasSubstr("<Topic Key=\"" + topic->Key + "\"/>"));
    EXPECT_EQ(bytes(file(topic)), "mine");
    EXPECT_TRUE(topic->NewTopicFlag);
    topic->SetTitle("x");
    saved(topic);
    EXPECT_THAT(bytes(file(topic)), HasSubstr("Title=\"x\""));
    EXPECT_FALSE(topic->NewTopicFlag);
}

TEST_F(TopicFile, ACleanTopicWithoutAFileGetsOne) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto topic = addTopic("One");
    topic->SetDirty(false);
    topic->Save(nullptr);
    EXPECT_TRUE(has(file(topic)));
}

TEST_F(TopicFile, ATopicWhoseFileIsMissingKeepsItsKeyAlone) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto topic = load("<Topic Key='{K}' Name='not read'/>");
    EXPECT_EQ(topic->Key, "{K}");
    EXPECT_EQ(topic->Name(), "");
    EXPECT_EQ(topic->Status(), "In Progress");
}

TEST_F(TopicFile, AFailureInItsFileNamesTheFile) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    outside.files->Put("/work/manual/TopicData/k.xml", "<Topic>\n<s k='Other'/></Topic>");
    EXPECT_EQ(failureOf([&] { load("<Topic Key='k'/>"); }),
              "/work/manual/TopicData/k.xml: line 2, element 's': There is no topic section 'Other'");
}

TEST_F(TopicFile, AKeyThatIsNoFileNameTouchesNoFile) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto topic = addTopic("One");
    for (const auto& key :
         std::vector<std::string>{"../x", "a/b", "a\\b", std::string("a\0b", 3), "/etc/x"}) {
        topic->Key = key;
        topic->SetTitle("x");
        outside.files->ForgetCalls();
        EXPECT_THAT(failureOf([&] { topic->Save(nullptr); }), HasSubstr("no plain file name")) << key;
        EXPECT_THAT(failureOf([&] { topic->Load(nullptr); }), HasSubstr("no plain file name")) << key;
        EXPECT_THAT(outside.files->Calls(), IsEmpty());
    }
}

}  // namespace
}  // namespace quillbox
