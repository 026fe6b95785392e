#include "topics/TopicCategories.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TopicCategoriesTest : public ProjectTest {
  protected:
    EventLog log{project};
};

TEST_F(TopicCategoriesTest, RenamingIsToldMarksTheProjectAndKeepsTheKeyOfTopics) {
    const auto category = addCategory("Old");
    const auto topic = addTopic("One");
    topic->SetTopicCategory(category);
    const auto key = category->Key;
    settle();
    log.Take();
    category->SetName("New");
    EXPECT_THAT(log.Take(), ElementsAre("TopicCategoryChanged(New)", "DirtyStateChanged"));
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_EQ(category->Key, key);
    EXPECT_EQ(topic->TopicCategory(), category);
    EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicCategoriesTest, ACategoryWithoutAProjectCannotBeNamed) {
    EXPECT_EQ(failureOf([] { make<TopicCategory>()->SetName("x"); }), "This object has no project");
}

TEST_F(TopicCategoriesTest, AdditionsAndRemovalsAreToldAndMark) {
    const auto category = project->NewTopicCategory();
    category->SetName("c");
    settle();
    log.Take();
    project->TopicCategories->Add(category, category->Key);
    EXPECT_THAT(log.Take(), ElementsAre("TopicCategoryAdded(c)", "DirtyStateChanged"));
    project->TopicCategories->Remove(category->Key);
    EXPECT_THAT(log.Take(), ElementsAre("TopicCategoryRemoved(c)", "DirtyStateChanged"));
    EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(TopicCategoriesTest, APausedCollectionMarksNothingButANameStillDoes) {
    const auto category = addCategory("c");
    settle();
    log.Take();
    project->TopicCategories->PauseEvents = true;
    project->TopicCategories->Remove(1);
    project->TopicCategories->Add(category, category->Key);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
    category->SetName("d");
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(TopicCategoriesTest, TheFirstOfANameInAnyCaseIsFound) {
    const auto first = addCategory("How To");
    addCategory("HOW TO");
    EXPECT_EQ(project->TopicCategories->TopicCategoryByName("how to"), first);
    EXPECT_EQ(project->TopicCategories->TopicCategoryByName("how"), nullptr);
}

TEST_F(TopicCategoriesTest, ARemovedCategoryStaysWithItsTopicsUntilTheyAreLoadedAgain) {
    auto category = addCategory("c");
    const auto topic = addTopic("One");
    topic->SetTopicCategory(category);
    project->TopicCategories->Remove(category->Key);
    EXPECT_EQ(topic->TopicCategory(), category);
    project->Load(project->Save());
    EXPECT_EQ(project->Topics->Item(1)->TopicCategory(), nullptr);
    category.reset();
    EXPECT_EQ(topic->TopicCategory(), nullptr);
}

TEST_F(TopicCategoriesTest, AKeyAndANameAreNeededInAFile) {
    const auto load = [&](const std::string& attributes) {
        return failureOf([&] { project->Load("<QbProject>\n<cat " + attributes + "/></QbProject>"); });
    };
    EXPECT_EQ(load("Key='k' Name='n'"), "no failure");
    EXPECT_EQ(project->TopicCategories->Item("k")->Name(), "n");
    EXPECT_THAT(load("Name='n'"),
                HasSubstr("line 2, element 'cat': The element 'cat' has no attribute 'Key'"));
    EXPECT_THAT(load("Key='k'"), HasSubstr("'Name'"));
}

}  // namespace
}  // namespace quillbox
