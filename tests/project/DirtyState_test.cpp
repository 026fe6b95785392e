#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DirtyState : public ProjectTest {
  protected:
    EventLog log{project};
};

TEST_F(DirtyState, TheProjectIsDirtyWhenAnyOfSixFlagsIs) {
    const auto expectOnly = [&](const char* flag, auto&& set) {
        settle();
        EXPECT_FALSE(project->Dirty()) << flag;
        set();
        EXPECT_TRUE(project->Dirty()) << flag;
        settle();
    };
    expectOnly("project", [&] { project->SetDirty(true); });
    expectOnly("topics", [&] { project->SetTopicsDirty(true); });
    expectOnly("tasks", [&] { project->Tasks->SetDirty(true); });
    expectOnly("glossary", [&] { project->GlossaryItems()->SetDirty(true); });
    expectOnly("manifests", [&] { project->Manifests()->SetDirty(true); });
    expectOnly("nodes", [&] { project->QbNodes()->SetDirty(true); });
}

TEST_F(DirtyState, ASatelliteLeavesTheMainFileClean) {
    project->QbNodes()->SetDirty(true);
    EXPECT_TRUE(project->Dirty());
    EXPECT_FALSE(project->ProjectDirty());
}

TEST_F(DirtyState, WritingTheFlagTellsWhetherOrNotItChanged) {
    project->SetDirty(true);
    project->SetDirty(true);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(DirtyState, ClearingTellsTwiceAsTheTasksTellToo) {
    project->SetDirty(true);
    log.Take();
    project->SetDirty(false);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(DirtyState, ClearingReachesAllFlagsButNotThoseOfTopics) {
    const auto topic = addTopic("One");
    topic->SetTitle("x");
    project->Tasks->SetDirty(true);
    project->GlossaryItems()->SetDirty(true);
    project->Manifests()->SetDirty(true);
    project->QbNodes()->SetDirty(true);
    project->SetDirty(false);
    EXPECT_FALSE(project->Dirty());
    EXPECT_FALSE(project->ProjectDirty());
    EXPECT_FALSE(project->TopicsDirty());
    EXPECT_FALSE(project->Tasks->Dirty());
    EXPECT_FALSE(project->GlossaryItems()->Dirty());
    EXPECT_FALSE(project->Manifests()->Dirty());
    EXPECT_FALSE(project->QbNodes()->Dirty());
    EXPECT_TRUE(topic->Dirty());
}

TEST_F(DirtyState, TheTopicsFlagTellsOnlyWhenItIsSet) {
    project->SetTopicsDirty(true);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    project->SetTopicsDirty(false);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(DirtyState, CollectionsTellWhenTheyAreSetAndTasksAlsoWhenTheyAreCleared) {
    project->GlossaryItems()->SetDirty(true);
    project->Manifests()->SetDirty(true);
    project->QbNodes()->SetDirty(true);
    project->Tasks->SetDirty(true);
    EXPECT_EQ(log.Take().size(), 4u);
    project->GlossaryItems()->SetDirty(false);
    project->Manifests()->SetDirty(false);
    project->QbNodes()->SetDirty(false);
    EXPECT_THAT(log.Take(), IsEmpty());
    project->Tasks->SetDirty(false);
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
}

TEST_F(DirtyState, ACollectionWithoutAProjectTellsNobodyAndTasksFail) {
    make<GlossaryItems>()->SetDirty(true);
    make<Manifests>()->SetDirty(true);
    make<QbNodes>()->SetDirty(true);
    EXPECT_EQ(failureOf([] { make<Tasks>()->SetDirty(false); }), "This object has no project");
}

TEST_F(DirtyState, AnEventOfTheContentsTreeMarksTheProject) {
    project->QbNodes()->ItemAdded(nullptr);
    EXPECT_TRUE(project->ProjectDirty());
    project->SetDirty(false);
    project->QbNodes()->ItemRemoved(nullptr);
    EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(DirtyState, ATreeThatWasReplacedIsNotHeardAnyMore) {
    const auto old = project->QbNodes();
    const auto other = make<QbNodes>();
    project->SetQbNodes(other);
    old->ItemAdded(nullptr);
    EXPECT_FALSE(project->ProjectDirty());
    other->ItemAdded(nullptr);
    EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(DirtyState, PausingReachesSixCollectionsAndReadsTrueOnlyWhenAllArePaused) {
    EXPECT_FALSE(project->PauseEvents());
    project->SetPauseEvents(true);
    EXPECT_TRUE(project->PauseEvents());
    const auto expectNeeded = [&](bool& flag, const char* name) {
        EXPECT_TRUE(flag) << name;
        flag = false;
        EXPECT_FALSE(project->PauseEvents()) << name;
        flag = true;
    };
    expectNeeded(project->Topics->PauseEvents, "Topics");
    expectNeeded(project->QbNodes()->PauseEvents, "QbNodes");
    expectNeeded(project->GlossaryItems()->PauseEvents, "GlossaryItems");
    expectNeeded(project->OtherFiles->PauseEvents, "OtherFiles");
    expectNeeded(project->Tasks->PauseEvents, "Tasks");
    expectNeeded(project->TopicCategories->PauseEvents, "TopicCategories");
    project->SetPauseEvents(false);
    project->Topics->PauseEvents = true;
    EXPECT_FALSE(project->PauseEvents());
}

TEST_F(DirtyState, PausingTellsNothingItself) {
    project->SetPauseEvents(true);
    project->SetPauseEvents(false);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(DirtyState, PausedTopicsAreStillMarkedByAChange) {
    const auto topic = addTopic("One");
    settle();
    log.Take();
    project->Topics->PauseEvents = true;
    topic->SetTitle("x");
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(project->TopicsDirty());
    EXPECT_TRUE(topic->Dirty());
}

}  // namespace
}  // namespace quillbox
