#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;

// What pointed to a topic that is removed keeps a frozen title in place of the link.
class TopicRemoval : public ProjectTest {
  protected:
    TopicRemoval() { topic->SetContentsTitle("In the contents"); }

    Ref<Topic> topic = addTopic("Intro");
    Ref<Topic> other = addTopic("Other");
};

TEST_F(TopicRemoval, NodesAtAllDepthsBecomeStandardNodesWithTheContentsTitle) {
    const auto top = addTopicNode(topic);
    const auto deep = addTopicNode(topic, addTopicNode(other, top));
    project->Topics->Remove(topic->Key);
    for (const auto& node : {top, deep}) {
        EXPECT_EQ(node->QbNodeType(), ntStandard);
        EXPECT_EQ(node->CaptionText(), "In the contents");
        EXPECT_EQ(node->CaptionType(), ctSpecific);
        EXPECT_EQ(node->TopicID(), "");
    }
    EXPECT_EQ(deep->ParentNode()->Topic(), other);
}

TEST_F(TopicRemoval, NodesOfOtherTypesStayAsTheyAre) {
    const auto node = addNode("own");
    node->SetQbNodeType(ntSubContents);
    node->SetTopicID(topic->Key);
    project->Topics->Remove(topic->Key);
    EXPECT_EQ(node->CaptionText(), "own");
    EXPECT_EQ(node->TopicID(), topic->Key);
}

TEST_F(TopicRemoval, ANodeThatSpellsTheKeyInAnotherCasePointsToTheTopicToo) {
    topic->Key = "Key";
    project->Topics->Add(topic, "Key");
    const auto node = addTopicNode(topic);
    node->SetTopicID("KEY");
    EXPECT_EQ(node->Topic(), topic);
    project->Topics->Remove("Key");
    EXPECT_EQ(node->QbNodeType(), ntStandard);
}

TEST_F(TopicRemoval, EntriesOfAllManifestsKeepATitleAndLoseTheTopic) {
    const auto booklet = addManifest("Book");
    const auto first = addEntry(booklet, topic, "own title");
    const auto below = addEntry(booklet, topic, "", first);
    const auto kept = addEntry(booklet, other, "");
    const auto tour = addEntry(addManifest("Tour", mtBrowseSequence), topic, "");
    project->Topics->Remove(topic->Key);
    for (const auto& entry : {first, below, tour}) {
        EXPECT_EQ(entry->Title(), "In the contents");
        EXPECT_EQ(entry->TopicID(), "");
        EXPECT_EQ(entry->Topic(), nullptr);
    }
    EXPECT_EQ(kept->Topic(), other);
    EXPECT_TRUE(project->Manifests()->Dirty());
}

TEST_F(TopicRemoval, WhatPointsNowhereIsNotTakenForATopicWithoutAKey) {
    const auto node = addTopicNode(other);
    node->SetTopicID("");
    const auto entry = addEntry(addManifest("Book"), nullptr, "own");
    const auto keyless = make<Topic>();
    keyless->SetQbProject(project);
    keyless->SetTitle("Keyless");
    project->Topics->Add(keyless);
    project->Topics->Remove(3);
    EXPECT_EQ(node->QbNodeType(), ntSingleTopic);
    EXPECT_EQ(entry->Title(), "own");
}

TEST_F(TopicRemoval, TheRepairComesBehindTheEventAndBeforeTheMarks) {
    addTopicNode(topic);
    addEntry(addManifest("Book"), topic, "");
    settle();
    EventLog log(project);
    project->Topics->Remove(topic->Key);
    const std::string dirty = "DirtyStateChanged";
    const std::string caption = "QbNodeChanged(In the contents)";
    EXPECT_THAT(log.Take(),
                ElementsAre("TopicRemoved(Intro)", caption, dirty, dirty, caption, dirty, dirty,
                            "ManifestEntryChanged(Book, In the contents)", dirty, dirty,
                            "ManifestEntryChanged(Book, In the contents)", dirty, dirty, dirty, dirty));
}

TEST_F(TopicRemoval, AHandlerSeesTheLinksAsTheyWere) {
    const auto node = addTopicNode(topic);
    QbNodeTypeEnum seen = ntStandard;
    project->TopicRemoved.connect([&](const Ref<Topic>&) { seen = node->QbNodeType(); });
    project->Topics->Remove(topic->Key);
    EXPECT_EQ(seen, ntSingleTopic);
}

TEST_F(TopicRemoval, FiringTheRemovalOfATopicThatIsStillThereRepairsToo) {
    const auto node = addTopicNode(topic);
    project->FireTopicRemoved(topic);
    EXPECT_EQ(node->QbNodeType(), ntStandard);
    EXPECT_EQ(project->Topics->Count(), 2);
}

}  // namespace
}  // namespace quillbox
