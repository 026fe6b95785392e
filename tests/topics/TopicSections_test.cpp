#include "support/ProjectTest.h"
#include "topics/TopicSection.h"
#include "topics/TopicSectionDefs.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TopicSectionsTest : public ProjectTest {
  protected:
    TopicSectionsTest() {
        settle();
        log.Take();
    }
    Ref<Topic> topic = addTopic("Intro");
    EventLog log{project};
};

TEST_F(TopicSectionsTest, TheFirstWriteMakesTheSection) {
    EXPECT_EQ(topic->TopicSectionData("BodyText"), "");
    topic->SetTopicSectionData("BodyText", "x");
    const auto section = topic->TopicSections->Item(1);
    EXPECT_EQ(section->Data(), "x");
    EXPECT_EQ(section->Topic(), topic);
    EXPECT_EQ(section->TopicSectionDef()->Key, "BodyText");
}

TEST_F(TopicSectionsTest, AnEmptyTextMakesTheSectionToo) {
    topic->SetTopicSectionData("BodyText", "");
    EXPECT_EQ(topic->TopicSections->Count(), 1);
}

TEST_F(TopicSectionsTest, WritingTheDataTellsEachTime) {
    const auto section = topic->NewTopicSection("BodyText", "x");
    log.Take();
    section->SetData("x");
    section->SetData("x");
    EXPECT_THAT(log.Take(), ElementsAre("TopicSectionChanged(Intro, x)", "DirtyStateChanged",
                                        "TopicSectionChanged(Intro, x)", "DirtyStateChanged"));
    EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicSectionsTest, APausedTopicHoldsTheChangeBack) {
    const auto section = topic->NewTopicSection("BodyText", "x");
    settle();
    log.Take();
    topic->SetPauseEvents(true);
    section->SetData("y");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
    EXPECT_EQ(topic->TopicSectionData("BodyText"), "y");
}

TEST_F(TopicSectionsTest, ASectionWithoutATopicTakesData) {
    const auto section = make<TopicSection>();
    section->SetData("x");
    EXPECT_EQ(section->Data(), "x");
    EXPECT_EQ(section->Topic(), nullptr);
    EXPECT_EQ(section->TopicSectionDef(), nullptr);
}

TEST_F(TopicSectionsTest, ASectionNeedsADefinition) {
    EXPECT_NE(failureOf([] { make<TopicSection>()->SetTopicSectionDef(nullptr); }), "no failure");
}

TEST_F(TopicSectionsTest, TheDefinitionIsKeptByItsKey) {
    const auto section = topic->NewTopicSection("BodyText", "");
    resetModule();
    EXPECT_EQ(section->TopicSectionDef(), topicSectionDefs()->Item("BodyText"));
}

TEST_F(TopicSectionsTest, ASectionIsFoundByItsCaptionInAnyCase) {
    const auto section = topic->NewTopicSection("BodyText", "");
    EXPECT_EQ(topic->TopicSections->TopicSectionByCaption("BODY text"), Value(section));
    EXPECT_EQ(topic->TopicSections->TopicSectionByCaption("Body"), Value::None());
}

TEST_F(TopicSectionsTest, ThereIsOneDefinitionAndItIsMadeOnce) {
    const auto defs = make<TopicSectionDefs>();
    defs->Populate();
    EXPECT_EQ(defs->Count(), 1);
    EXPECT_EQ(defs->Item(1)->Key, "BodyText");
    EXPECT_EQ(defs->Item(1)->Caption, "Body Text");
    EXPECT_NE(failureOf([&] { defs->Populate(); }), "no failure");
    EXPECT_EQ(defs->Count(), 1);
}

TEST_F(TopicSectionsTest, ATagHoldsAnyValueAndKeepsAnObjectAlive) {
    const auto section = topic->NewTopicSection("BodyText", "");
    EXPECT_EQ(getMember(*section, "Tag"), Value::None());
    putMember(*section, "Tag", 7);
    EXPECT_EQ(getMember(*section, "Tag"), Value(7));
    auto held = make<Task>();
    const std::weak_ptr<Task> watched = held;
    putMember(*section, "Tag", held);
    held.reset();
    EXPECT_FALSE(watched.expired());
    topic->TopicSections->Remove(1);
    EXPECT_FALSE(watched.expired());
}

}  // namespace
}  // namespace quillbox
