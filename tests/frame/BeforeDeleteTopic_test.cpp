#include "frame/Root.h"
#include "support/ProjectTest.h"
#include "topics/RelatedTopics.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BeforeDeleteTopic : public ProjectTest {
  protected:
    struct Outcome {
        bool cancel, noPrompt;
    };
    // Runs the checks as a script does, with both flags by reference.
    Outcome check(bool cancel = false, bool noPrompt = false) {
        Arguments arguments{topic, cancel, noPrompt};
        callMember(*make<Root>(), "BeforeDeleteTopic", arguments);
        return {toBoolean(arguments[1]), toBoolean(arguments[2])};
    }
    Ref<RelatedTopic> relate(const Ref<Topic>& from, const std::string& key) {
        const auto related = make<RelatedTopic>();
        related->ChildTopicKey = key;
        related->SetCategory("c");
        from->RelatedTopics()->Add(related);
        return related;
    }
    static std::vector<std::string> relatedKeys(const Ref<Topic>& from) {
        std::vector<std::string> keys;
        for (const auto& one : from->RelatedTopics()->Items()) keys.push_back(one->ChildTopicKey);
        return keys;
    }
    void answer(MessageAnswer one) { outside.messages->answers.push_back(one); }

    Ref<Topic> topic = addTopic("Intro");
    Ref<Topic> other = addTopic("Other");
};

TEST_F(BeforeDeleteTopic, AsksNothingWhereNoNodePointsToTheTopic) {
    addTopicNode(other);
    relate(other, topic->Key);
    const auto [cancel, noPrompt] = check();
    EXPECT_FALSE(cancel);
    EXPECT_FALSE(noPrompt);
    EXPECT_THAT(outside.messages->shown, IsEmpty());
    EXPECT_THAT(relatedKeys(other), IsEmpty());
    EXPECT_EQ(project->QbNodes()->Count(), 1);
}

TEST_F(BeforeDeleteTopic, LeavesTheFlagsAsTheyCameWhereItDoesNotAsk) {
    const auto [cancel, noPrompt] = check(true, true);
    EXPECT_TRUE(cancel);
    EXPECT_TRUE(noPrompt);
}

TEST_F(BeforeDeleteTopic, AsksOnceForAllNodesWithTheNameInTheText) {
    addTopicNode(topic);
    addTopicNode(topic, addTopicNode(topic));
    answer(MessageAnswer::mbYes);
    const auto [cancel, noPrompt] = check();
    EXPECT_FALSE(cancel);
    EXPECT_TRUE(noPrompt);
    ASSERT_EQ(outside.messages->shown.size(), 1u);
    const auto& box = outside.messages->shown[0];
    EXPECT_EQ(
        box.text,
        "There are one or more Table of Contents nodes that point to this Topic ('Intro').  Do you want to "
        "delete those too ?");
    EXPECT_EQ(box.buttons, MessageButtons::bsYesNoCancel);
    EXPECT_EQ(box.icon, MessageIcon::biQuestion);
}

TEST_F(BeforeDeleteTopic, AsksAlsoWhenToldNotToPrompt) {
    addTopicNode(topic);
    answer(MessageAnswer::mbNo);
    check(false, true);
    EXPECT_EQ(outside.messages->shown.size(), 1u);
}

TEST_F(BeforeDeleteTopic, YesRemovesNodesFromTheLevelThatHoldsThem) {
    const auto book = addNode("Book");
    const auto below = addTopicNode(topic, book);
    addTopicNode(topic);
    const auto stays = addTopicNode(other, book);
    answer(MessageAnswer::mbYes);
    check();
    EXPECT_EQ(project->QbNodes()->Count(), 1);
    EXPECT_EQ(book->ChildNodes->Count(), 1);
    EXPECT_EQ(book->ChildNodes->Item(1), stays);
    EXPECT_EQ(below->TopicID(), topic->Key);
}

TEST_F(BeforeDeleteTopic, YesRemovesANodeBelowOneThatIsRemovedToo) {
    const auto above = addTopicNode(topic);
    addTopicNode(topic, above);
    answer(MessageAnswer::mbYes);
    check();
    EXPECT_EQ(project->QbNodes()->Count(), 0);
    EXPECT_EQ(above->ChildNodes->Count(), 0);
}

TEST_F(BeforeDeleteTopic, NoKeepsNodesWithATitleOfTheirOwn) {
    topic->SetContentsTitle("In the contents");
    const auto node = addTopicNode(topic);
    answer(MessageAnswer::mbNo);
    const auto [cancel, noPrompt] = check();
    EXPECT_FALSE(cancel);
    EXPECT_TRUE(noPrompt);
    EXPECT_EQ(project->QbNodes()->Count(), 1);
    EXPECT_EQ(node->CaptionText(), "In the contents");
    EXPECT_EQ(node->CaptionType(), ctSpecific);
    EXPECT_EQ(node->QbNodeType(), ntStandard);
    EXPECT_EQ(node->TopicID(), "");
}

TEST_F(BeforeDeleteTopic, CancelLeavesEverythingAsItIs) {
    const auto node = addTopicNode(topic);
    relate(other, topic->Key);
    settle();
    EventLog log(project);
    answer(MessageAnswer::mbCancel);
    const auto [cancel, noPrompt] = check();
    EXPECT_TRUE(cancel);
    EXPECT_FALSE(noPrompt);
    EXPECT_EQ(node->TopicID(), topic->Key);
    EXPECT_THAT(relatedKeys(other), ElementsAre(topic->Key));
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(BeforeDeleteTopic, ANodeIsOfTheTopicWhateverItsTypeAndByItsKeyWithCase) {
    topic->Key = "Abc";
    const auto standard = addNode("standard");
    standard->SetTopicID("Abc");
    const auto otherCase = addNode("other case");
    otherCase->SetTopicID("abc");
    answer(MessageAnswer::mbYes);
    check();
    EXPECT_EQ(project->QbNodes()->Count(), 1);
    EXPECT_EQ(project->QbNodes()->Item(1), otherCase);
}

TEST_F(BeforeDeleteTopic, OfTwoNeighbouringLinksTheSecondStays) {
    for (const auto& key : {topic->Key, topic->Key, std::string("x"), topic->Key, topic->Key, topic->Key}) {
        relate(other, key);
    }
    check();
    EXPECT_THAT(relatedKeys(other), ElementsAre(topic->Key, "x", topic->Key));
}

TEST_F(BeforeDeleteTopic, ItsOwnLinksStay) {
    relate(topic, topic->Key);
    check();
    EXPECT_THAT(relatedKeys(topic), ElementsAre(topic->Key));
}

TEST_F(BeforeDeleteTopic, TheTopicItselfIsNotRemoved) {
    check();
    EXPECT_EQ(project->Topics->Item(topic->Key), topic);
}

TEST_F(BeforeDeleteTopic, ALinkThatGoesIsToldAndMarked) {
    relate(other, topic->Key);
    settle();
    EventLog log(project);
    check();
    EXPECT_THAT(log.Take(), ElementsAre("TopicRelatedTopicsChanged(Other)", "DirtyStateChanged",
                                        "TopicChanged(Other)", "DirtyStateChanged"));
    EXPECT_TRUE(other->Dirty());
}

TEST_F(BeforeDeleteTopic, NeedsATopicOfAProject) {
    bool cancel = false, noPrompt = false;
    const auto root = make<Root>();
    EXPECT_NE(failureOf([&] { root->BeforeDeleteTopic(nullptr, cancel, noPrompt); }), "no failure");
    EXPECT_NE(failureOf([&] { root->BeforeDeleteTopic(make<Topic>(), cancel, noPrompt); }), "no failure");
}

}  // namespace
}  // namespace quillbox
