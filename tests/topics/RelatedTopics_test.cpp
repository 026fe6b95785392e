#include "topics/RelatedTopics.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RelatedTopicsTest : public ProjectTest {
  protected:
    RelatedTopicsTest() {
        settle();
        log.Take();
    }

    Ref<RelatedTopic> relate(const std::string& category, const std::string& key = "") const {
        const auto related = make<RelatedTopic>();
        related->ChildTopicKey = key;
        related->SetCategory(category);
        topic->RelatedTopics()->Add(related);
        return related;
    }
    void load(const std::string& r) const {
        const auto document = platform().xml->NewDocument();
        document->Parse("<Topic Key='" + topic->Key + "'>" + r + "</Topic>");
        topic->Load(document->RootElement());
    }

    Ref<Topic> topic = addTopic("Intro");
    EventLog log{project};
};

TEST_F(RelatedTopicsTest, AnAdditionAndARemovalAreToldTwiceAndMark) {
    EventLog own(topic->RelatedTopics());
    const auto related = relate("See");
    EXPECT_THAT(own.Take(), ElementsAre("ItemAdded(See)"));
    EXPECT_THAT(log.Take(), ElementsAre("TopicRelatedTopicsChanged(Intro)", "DirtyStateChanged",
                                        "TopicChanged(Intro)", "DirtyStateChanged"));
    EXPECT_TRUE(topic->Dirty());
    topic->RelatedTopics()->Remove(1);
    EXPECT_THAT(own.Take(), ElementsAre("ItemRemoved(See)"));
    EXPECT_EQ(log.Take().size(), 4u);
}

TEST_F(RelatedTopicsTest, TheSameLinkMayStandTwice) {
    EventLog own(topic->RelatedTopics());
    const auto related = relate("See");
    topic->RelatedTopics()->Add(related);
    EXPECT_EQ(topic->RelatedTopics()->Count(), 2);
    EXPECT_EQ(own.Count("ItemAdded"), 2);
}

TEST_F(RelatedTopicsTest, RemovingBehindTheEndFailsAndTellsNothing) {
    relate("See");
    EventLog own(topic->RelatedTopics());
    log.Take();
    EXPECT_NE(failureOf([&] { topic->RelatedTopics()->Remove(2); }), "no failure");
    EXPECT_THAT(own.Take(), IsEmpty());
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(RelatedTopicsTest, EachSetterTellsTheParentTopicAndThroughItTheProject) {
    const auto related = make<RelatedTopic>();
    related->SetTitle("alone");
    EXPECT_THAT(log.Take(), IsEmpty());
    related->SetParentTopic(topic);
    for (const auto& [property, value] : std::vector<std::pair<const char*, Value>>{{"URL", "x"},
                                                                                    {"RelatedTopicType", 1},
                                                                                    {"Title", "T"},
                                                                                    {"Category", "c"},
                                                                                    {"ParentTopic", topic}}) {
        settle();
        log.Take();
        putMember(*related, property, value);
        EXPECT_THAT(log.Take(), ElementsAre(HasSubstr("TopicRelatedTopicChanged(Intro, "),
                                            "DirtyStateChanged", "TopicChanged(Intro)", "DirtyStateChanged"))
            << property;
        EXPECT_TRUE(topic->Dirty());
        EXPECT_TRUE(project->ProjectDirty());
    }
    settle();
    related->ChildTopicKey = "k";
    EXPECT_FALSE(project->Dirty());
}

TEST_F(RelatedTopicsTest, TheChildIsFoundByItsKeyAndNoneForAnUnknownOne) {
    const auto related = relate("See", topic->Key);
    EXPECT_NE(failureOf([&] { related->ChildTopic(); }), "no failure");
    related->SetParentTopic(topic);
    EXPECT_EQ(related->ChildTopic(), topic);
    related->ChildTopicKey = "none";
    EXPECT_EQ(related->ChildTopic(), nullptr);
}

TEST_F(RelatedTopicsTest, ALinkOfAnOlderFileIsToATopicAndHasNoTitle) {
    load("<r t='k' cat='See'/>");
    const auto related = topic->RelatedTopics()->Item(1);
    EXPECT_EQ(related->ChildTopicKey, "k");
    EXPECT_EQ(related->Category(), "See");
    EXPECT_EQ(related->RelatedTopicType(), rttTopic);
    EXPECT_EQ(related->Title(), "");
    EXPECT_EQ(related->URL(), "");
    EXPECT_EQ(related->ParentTopic(), topic);
}

TEST_F(RelatedTopicsTest, ATypeThatIsNoNumberIsPassedOver) {
    load("<r t='' cat='' rt='one' Title='T' URL='u'/><r t='' cat='' rt='1'/><r t='' cat='' rt='77'/>");
    EXPECT_EQ(topic->RelatedTopics()->Item(1)->RelatedTopicType(), rttTopic);
    EXPECT_EQ(topic->RelatedTopics()->Item(1)->URL(), "u");
    EXPECT_EQ(topic->RelatedTopics()->Item(2)->RelatedTopicType(), rttURL);
    EXPECT_EQ(topic->RelatedTopics()->Item(3)->RelatedTopicType(), 77);
}

TEST_F(RelatedTopicsTest, AKeyAndACategoryAreNeededInAFile) {
    EXPECT_THAT(failureOf([&] { load("<r cat='c'/>"); }), HasSubstr("'t'"));
    EXPECT_THAT(failureOf([&] { load("<r t='k'/>"); }), HasSubstr("'cat'"));
}

TEST_F(RelatedTopicsTest, LinksAreGroupedByCategoryInAnyCaseAndCollectedAnew) {
    relate("See Also");
    const auto second = relate("see also");
    relate("Other");
    const auto group = make<RelatedTopicCategory>();
    group->Name = "See Also";
    group->Topic = topic;
    log.Take();
    EXPECT_EQ(group->Links()->Count(), 2);
    EXPECT_EQ(group->Links()->Item(2), second);
    EXPECT_EQ(group->Links()->Topic(), nullptr);
    EXPECT_THAT(log.Take(), IsEmpty());
    second->SetCategory("Other");
    EXPECT_EQ(group->Links()->Count(), 1);
}

TEST_F(RelatedTopicsTest, AListIsHeardWhileItIsTheTopicsOwn) {
    const auto list = topic->RelatedTopics();
    std::weak_ptr<Topic> watched = topic;
    project->Topics->Remove(1);
    topic.reset();
    EXPECT_TRUE(project->Topics->DeletedTopics()->Count() == 1);
    project->Topics->ClearDeletedTopics();
    EXPECT_TRUE(watched.expired());
    list->Add(make<RelatedTopic>());
    EXPECT_EQ(list->Count(), 1);
}

}  // namespace
}  // namespace quillbox
