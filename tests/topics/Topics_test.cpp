#include "topics/Topics.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TopicsTest : public ProjectTest {
  protected:
    Ref<Topic> newTopic(const std::string& name) const {
        const auto topic = project->NewTopic();
        topic->SetPauseEvents(true);
        topic->SetName(name);
        topic->SetPauseEvents(false);
        return topic;
    }
    int deleted() const { return project->Topics->DeletedTopics()->Count(); }

    EventLog log{project};
};

TEST_F(TopicsTest, AnAdditionIsToldAndMarksTopicsAndProject) {
    const auto topic = newTopic("One");
    project->Topics->Add(topic, topic->Key);
    EXPECT_THAT(log.Take(), ElementsAre("TopicAdded(One)", "DirtyStateChanged", "DirtyStateChanged"));
    EXPECT_TRUE(project->TopicsDirty());
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicsTest, ARemovalIsToldWhenTheTopicHasLeft) {
    const auto topic = addTopic("One");
    settle();
    log.Take();
    int left = -1;
    project->TopicRemoved.connect([&](const Ref<Topic>&) { left = project->Topics->Count(); });
    project->Topics->Remove(topic->Key);
    EXPECT_EQ(left, 0);
    EXPECT_THAT(log.Take(), ElementsAre("TopicRemoved(One)", "DirtyStateChanged", "DirtyStateChanged"));
    EXPECT_TRUE(project->TopicsDirty());
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_EQ(deleted(), 1);
}

TEST_F(TopicsTest, APausedCollectionTellsNothingAndMarksNothingAndStillRemembersRemovals) {
    const auto one = addTopic("One");
    const auto node = addTopicNode(one);
    settle();
    log.Take();
    project->Topics->PauseEvents = true;
    project->Topics->Add(newTopic("Two"));
    project->Topics->Remove(one->Key);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
    EXPECT_EQ(node->QbNodeType(), ntSingleTopic);
    EXPECT_EQ(deleted(), 1);
}

TEST_F(TopicsTest, AnUnknownKeyGivesNoneAndCannotBeRemoved) {
    EXPECT_EQ(project->Topics->Item("none"), nullptr);
    EXPECT_NE(failureOf([&] { project->Topics->Remove("none"); }), "no failure");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_EQ(deleted(), 0);
}

TEST_F(TopicsTest, ATopicRemovedTwiceStandsTwiceInTheListOfRemovedOnes) {
    const auto topic = addTopic("One");
    project->Topics->Remove(1);
    project->Topics->Add(topic, topic->Key);
    EXPECT_EQ(deleted(), 1);
    project->Topics->Remove(topic->Key);
    EXPECT_EQ(deleted(), 2);
    project->Topics->ClearDeletedTopics();
    EXPECT_EQ(deleted(), 0);
}

TEST_F(TopicsTest, ANumberAsKeyDoesNotReachTheListOfRemovedOnes) {
    addTopic("One");
    project->Topics->Remove(1);
    project->Topics->Add(newTopic("Two"), 1);
    EXPECT_EQ(deleted(), 1);
    EXPECT_EQ(project->Topics->Item("1")->Name(), "Two");
}

TEST_F(TopicsTest, ACollectionWithoutAProjectKeepsAListOfItsOwn) {
    const auto topic = addTopic("One");
    settle();
    log.Take();
    const auto sorted = project->SortedTopics();
    sorted->Remove(topic->Key);
    EXPECT_EQ(sorted->DeletedTopics()->Count(), 1);
    EXPECT_EQ(deleted(), 0);
    sorted->Add(topic, topic->Key);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(TopicsTest, AHandlerMayRemoveWhatWasJustAdded) {
    project->TopicAdded.connect([&](const Ref<Topic>& topic) { project->Topics->Remove(topic->Key); });
    const auto topic = newTopic("One");
    project->Topics->Add(topic, topic->Key);
    EXPECT_EQ(project->Topics->Count(), 0);
    EXPECT_THAT(log.Take(), ElementsAre("TopicAdded(One)", "TopicRemoved(One)", "DirtyStateChanged",
                                        "DirtyStateChanged", "DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(TopicsTest, AFailureOfAHandlerReachesTheCallerAndTheTopicIsIn) {
    project->TopicAdded.connect([](const Ref<Topic>&) { throw AutomationError("not now"); });
    const auto topic = newTopic("One");
    EXPECT_EQ(failureOf([&] { project->Topics->Add(topic, topic->Key); }), "not now");
    EXPECT_EQ(project->Topics->Count(), 1);
    EXPECT_FALSE(project->Dirty());
}

}  // namespace
}  // namespace quillbox
