#include "topics/Topic.h"

#include "support/ProjectTest.h"
#include "topics/TopicSection.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TopicTest : public ProjectTest {
  protected:
    TopicTest() {
        settle();
        log.Take();
    }

    Ref<Topic> topic = addTopic("Intro");
    EventLog log{project};
    EventLog own{topic};
};

TEST_F(TopicTest, ANewTopicHasItsDefaults) {
    const auto fresh = make<Topic>();
    EXPECT_TRUE(fresh->NewTopicFlag);
    EXPECT_EQ(fresh->Key, "");
    EXPECT_EQ(fresh->Keywords->Count(), 0);
    EXPECT_EQ(fresh->TopicSections->Count(), 0);
    EXPECT_EQ(fresh->StyleSheets()->Count(), 0);
    EXPECT_TRUE(fresh->AllStylesheets());
    EXPECT_TRUE(fresh->AutoGenerateIndexEntry());
    EXPECT_TRUE(fresh->IncludeInHelpFile());
    EXPECT_FALSE(fresh->IsDefault());
    EXPECT_FALSE(fresh->PauseEvents());
    EXPECT_FALSE(fresh->Dirty());
    EXPECT_TRUE(fresh->CreatedOn().IsZero());
    EXPECT_TRUE(fresh->ModifiedOn().IsZero());
    EXPECT_EQ(fresh->TopicCategory(), nullptr);
    EXPECT_EQ(fresh->QbProject(), nullptr);
    EXPECT_EQ(fresh->RelatedTopics()->Topic(), fresh);
}

TEST_F(TopicTest, TheProjectsNewTopicHasAKeyADateAndNoMarks) {
    const auto fresh = project->NewTopic();
    EXPECT_EQ(fresh->Key.size(), 38u);
    EXPECT_EQ(fresh->CreatedOn(), outside.system->now);
    EXPECT_TRUE(fresh->ModifiedOn().IsZero());
    EXPECT_EQ(fresh->QbProject(), project);
    EXPECT_FALSE(fresh->PauseEvents());
    EXPECT_FALSE(fresh->Dirty());
    EXPECT_TRUE(fresh->NewTopicFlag);
    EXPECT_EQ(project->Topics->Count(), 1);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(TopicTest, EachSetterTellsTheProjectThenMarksAndStamps) {
    const std::vector<std::pair<const char*, Value>> setters = {{"Name", "x"},
                                                                {"Title", "x"},
                                                                {"ContentsTitle", "x"},
                                                                {"Notes", "x"},
                                                                {"Status", "x"},
                                                                {"LayoutName", "x"},
                                                                {"IsDefault", true},
                                                                {"HelpContextIDs", "1,2"},
                                                                {"IncludeInHelpFile", false},
                                                                {"AutoGenerateIndexEntry", false},
                                                                {"TopicCategory", addCategory("c")}};
    for (const auto& [property, value] : setters) {
        SCOPED_TRACE(property);
        topic->SetDirty(false);
        project->SetDirty(false);
        topic->SetModifiedOn({});
        log.Take();
        putMember(*topic, property, value);
        EXPECT_EQ(getMember(*topic, property), value);
        const auto name = topic->Name();
        EXPECT_THAT(log.Take(), ElementsAre("TopicChanged(" + name + ")", "DirtyStateChanged"));
        EXPECT_TRUE(topic->Dirty());
        EXPECT_EQ(topic->ModifiedOn(), outside.system->now);
        EXPECT_TRUE(project->TopicsDirty());
        EXPECT_FALSE(project->ProjectDirty());
        EXPECT_THAT(own.Take(), IsEmpty());
    }
}

TEST_F(TopicTest, APausedTopicNeitherTellsNorMarksNorStamps) {
    topic->SetPauseEvents(true);
    topic->SetModifiedOn({});
    topic->SetTitle("x");
    topic->AddKeyword("k");
    topic->FireChanged();
    topic->RelatedTopics()->Add(make<RelatedTopic>());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(topic->Dirty());
    EXPECT_TRUE(topic->ModifiedOn().IsZero());
    EXPECT_EQ(topic->Title(), "x");
}

TEST_F(TopicTest, APausedTopicRaisesItsOwnStylesheetAndSectionEvents) {
    topic->SetPauseEvents(true);
    topic->SetAllStylesheets(false);
    topic->AddStyleSheet("a.css");
    topic->RemoveStyleSheet("a.css");
    topic->SetTopicSectionData("BodyText", "x");
    EXPECT_THAT(own.Take(), ElementsAre("TopicStyleSheetsChanged", "TopicStyleSheetAdded(a.css)",
                                        "TopicStyleSheetsChanged", "TopicStyleSheetRemoved(a.css)",
                                        "TopicStyleSheetsChanged", "TopicSectionDataChanged(x)"));
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(TopicTest, DatesAreStoredAndNothingElseHappens) {
    const auto day = *Date::From({2001, 2, 3, 4, 5, 6, 0});
    topic->SetCreatedOn(day);
    topic->SetModifiedOn(day);
    EXPECT_EQ(topic->CreatedOn(), day);
    EXPECT_EQ(topic->ModifiedOn(), day);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(TopicTest, AContentsTitleFallsBackToTheTitle) {
    EXPECT_EQ(topic->ContentsTitle(), "Intro title");
    EXPECT_EQ(topic->InternalContentsTitle(), "");
    topic->SetContentsTitle("Contents");
    EXPECT_EQ(topic->ContentsTitle(), "Contents");
    EXPECT_EQ(topic->InternalContentsTitle(), "Contents");
    EXPECT_EQ(topic->Title(), "Intro title");
}

TEST_F(TopicTest, MarkingItMarksTheProjectAndNeedsOne) {
    topic->SetDirty(true);
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    project->SetDirty(false);
    topic->SetDirty(false);
    EXPECT_FALSE(project->Dirty());
    const auto alone = make<Topic>();
    alone->SetDirty(false);
    EXPECT_EQ(failureOf([&] { alone->SetDirty(true); }), "This object has no project");
}

TEST_F(TopicTest, ATopicWithoutAProjectTakesChanges) {
    const auto alone = make<Topic>();
    alone->SetTitle("x");
    alone->AddKeyword("k");
    alone->SetTopicSectionData("BodyText", "b");
    alone->RelatedTopics()->Add(make<RelatedTopic>());
    EXPECT_TRUE(alone->Dirty());
    EXPECT_EQ(alone->ModifiedOn(), outside.system->now);
    EXPECT_EQ(failureOf([&] { alone->LocalSpec(); }), "This object has no project");
    EXPECT_EQ(failureOf([&] { alone->Save(nullptr); }), "This object has no project");
    EXPECT_EQ(failureOf([&] { alone->Load(nullptr); }), "This object has no project");
}

TEST_F(TopicTest, KeywordsMayRepeat) {
    topic->AddKeyword("set-up");
    topic->AddKeyword("set-up");
    EXPECT_THAT(topic->Keywords->Texts(), ElementsAre("set-up", "set-up"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicChanged(Intro)", "DirtyStateChanged", "TopicChanged(Intro)",
                                        "DirtyStateChanged"));
}

TEST_F(TopicTest, UsingAllStylesheetsThrowsTheSelectionAway) {
    topic->SetAllStylesheets(false);
    topic->AddStyleSheet("a.css");
    own.Take();
    log.Take();
    topic->SetAllStylesheets(true);
    EXPECT_THAT(own.Take(), ElementsAre("TopicStyleSheetsChanged"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicChanged(Intro)", "DirtyStateChanged"));
    EXPECT_EQ(topic->StyleSheets()->Count(), 0);
    topic->SetAllStylesheets(false);
    EXPECT_EQ(topic->StyleSheets()->Count(), 0);
}

TEST_F(TopicTest, AStylesheetIsAddedOnceAndTold) {
    topic->AddStyleSheet("css/a.css");
    EXPECT_THAT(own.Take(), ElementsAre("TopicStyleSheetAdded(css/a.css)", "TopicStyleSheetsChanged"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicChanged(Intro)", "DirtyStateChanged"));
    EXPECT_THAT(failureOf([&] { topic->AddStyleSheet("CSS/a.css"); }), HasSubstr("already"));
    EXPECT_THAT(own.Take(), IsEmpty());
    EXPECT_TRUE(topic->AllStylesheets());
}

TEST_F(TopicTest, RemovingAStylesheetIsToldWhetherOrNotItWasThere) {
    topic->RemoveStyleSheet("none.css");
    EXPECT_THAT(own.Take(), ElementsAre("TopicStyleSheetRemoved(none.css)", "TopicStyleSheetsChanged"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicChanged(Intro)", "DirtyStateChanged"));
}

TEST_F(TopicTest, AStylesheetIsIncludedWhenAllAreOrItIsSelected) {
    EXPECT_TRUE(topic->IncludeStylesheet("any.css"));
    topic->SetAllStylesheets(false);
    EXPECT_FALSE(topic->IncludeStylesheet("css/a.css"));
    topic->AddStyleSheet("css\\a.css");
    EXPECT_TRUE(topic->IncludeStylesheet("css/A.css"));
    EXPECT_FALSE(topic->IncludeStylesheet("a.css"));
}

TEST_F(TopicTest, ANewSectionIsToldOnceToTheTopicAndTwiceToTheProject) {
    topic->SetTopicSectionData("BodyText", "<p>1</p>");
    EXPECT_THAT(own.Take(), ElementsAre("TopicSectionDataChanged(<p>1</p>)"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicSectionChanged(Intro, <p>1</p>)", "DirtyStateChanged",
                                        "TopicChanged(Intro)", "DirtyStateChanged"));
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_TRUE(project->TopicsDirty());
}

TEST_F(TopicTest, TheSameTextWrittenTwiceIsToldOnce) {
    topic->SetTopicSectionData("BodyText", "x");
    topic->SetTopicSectionData("BodyText", "x");
    EXPECT_THAT(own.Take(), ElementsAre("TopicSectionDataChanged(x)"));
    topic->SetTopicSectionData("BodyText", "X");
    EXPECT_THAT(own.Take(), ElementsAre("TopicSectionDataChanged(X)"));
    EXPECT_EQ(topic->TopicSections->Count(), 1);
}

TEST_F(TopicTest, AnUnknownSectionCannotBeWrittenAndReadsEmpty) {
    EXPECT_EQ(topic->TopicSectionData("Other"), "");
    EXPECT_THAT(failureOf([&] { topic->SetTopicSectionData("Other", "x"); }), HasSubstr("'Other'"));
    EXPECT_EQ(topic->TopicSections->Count(), 0);
    EXPECT_THAT(own.Take(), IsEmpty());
}

TEST_F(TopicTest, ASecondSectionOfTheSameKeyFails) {
    topic->NewTopicSection("BodyText", "1");
    EXPECT_THAT(failureOf([&] { topic->NewTopicSection("bodytext", "2"); }), HasSubstr("already"));
    EXPECT_EQ(topic->TopicSectionData("BODYTEXT"), "1");
}

TEST_F(TopicTest, TheSectionIsReachedAsAParameterisedProperty) {
    putMember(*topic, "TopicSectionData", "x", {"BodyText"});
    EXPECT_EQ(getMember(*topic, "TopicSectionData", {"BodyText"}), Value("x"));
}

TEST_F(TopicTest, FiringASectionChangeLeavesTheTopicsOwnMarks) {
    topic->FireTopicSectionChanged(topic->NewTopicSection("BodyText", "x"));
    EXPECT_FALSE(topic->Dirty());
    EXPECT_EQ(log.Count("TopicSectionChanged"), 2);
    EXPECT_EQ(log.Count("TopicChanged"), 0);
}

TEST_F(TopicTest, AHandlerSeesTheTopicAsItWasBeforeTheMark) {
    bool wasDirty = true;
    project->TopicChanged.connect([&](const Ref<Topic>& changed) { wasDirty = changed->Dirty(); });
    topic->SetTitle("x");
    EXPECT_FALSE(wasDirty);
    EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicTest, ItsFileIsNamedByItsKey) {
    topic->Key = "{K}";
    EXPECT_EQ(topic->LocalSpec(), "/work/manual/TopicData/{K}.xml");
    EXPECT_EQ(topic->QualifiedName(), "Intro");
}

}  // namespace
}  // namespace quillbox
