#include "support/SourceControlTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// What is particular to topics, to other files and to commands on the whole project.
class TopicElement : public SourceControlTest {
  protected:
    TopicElement() { import(); }
    std::string topicSpec(const Ref<Topic>& of) const {
        return "$/help/manual/TopicData/" + of->Key + ".xml";
    }
};

TEST_F(TopicElement, ANewTopicBelongsToItsMaker) {
    const auto fresh = addTopic("New");
    EXPECT_EQ(fresh->CheckOutStatus(), StatusCheckedOutToCurrentUser);
    EXPECT_TRUE(fresh->CheckedOut());
    EXPECT_TRUE(fresh->IsCheckedOut());
    EXPECT_FALSE(fresh->ReadOnly());
    EXPECT_EQ(fresh->CheckedOutToUser(), "");
    EXPECT_THAT(safe->Take(), IsEmpty());
    platform().sourceSafe = nullptr;
    resetSourceSafe();
    EXPECT_EQ(fresh->CheckOutStatus(), StatusCheckedOutToCurrentUser);
    EXPECT_FALSE(fresh->ReadOnly());
}

TEST_F(TopicElement, ReadOnlyIsAskedOnceUntilTheStatusChanges) {
    EXPECT_TRUE(topic->ReadOnly());
    safe->At(topicSpec(topic)).user = "Writer";
    safe->At(topicSpec(topic)).folder = "/work/manual/TopicData";
    EXPECT_TRUE(topic->ReadOnly());
    topic->UndoCheckout();
    EXPECT_TRUE(topic->ReadOnly());
    topic->CheckOut();
    EXPECT_FALSE(topic->ReadOnly());
    EXPECT_TRUE(file->ReadOnly());
    file->CheckOut();
    EXPECT_FALSE(file->ReadOnly());
}

TEST_F(TopicElement, AChangeOfTheProjectTypeForgetsWhatTopicsKnew) {
    EXPECT_TRUE(topic->ReadOnly());
    project->SetSSActivated(false);
    EXPECT_TRUE(topic->ReadOnly());
    project->SetProjectType(ProjectTypeSingleFile);
    EXPECT_FALSE(topic->ReadOnly());
}

TEST_F(TopicElement, ItsOwnStatusEventComesBeforeTheProjects) {
    std::vector<std::string> order;
    topic->CheckoutStatusChanged.connect([&] { order.push_back("own"); });
    project->TopicCheckoutStatusChanged.connect([&](const Ref<Topic>&) { order.push_back("project"); });
    file->CheckoutStatusChanged.connect([&] { order.push_back("own"); });
    project->OtherFileCheckoutStatusChanged.connect(
        [&](const Ref<OtherFile>&) { order.push_back("project"); });
    topic->CheckOut();
    file->CheckOut();
    EXPECT_THAT(order, ElementsAre("own", "project", "own", "project"));
}

TEST_F(TopicElement, AnUndoneCheckOutLoadsTheTopicAgainInSilence) {
    topic->CheckOut();
    const auto title = topic->Title();
    topic->SetTitle("changed");
    EventLog log(project);
    EXPECT_TRUE(topic->UndoCheckout());
    EXPECT_EQ(topic->Title(), title);
    EXPECT_FALSE(topic->PauseEvents());
    EXPECT_THAT(log.Take(), ElementsAre("TopicCheckoutStatusChanged(Intro)"));
}

TEST_F(TopicElement, ACheckInSavesWhatIsChangedFirst) {
    topic->CheckOut();
    topic->SetTitle("changed");
    project->GlossaryItems()->CheckOut();
    project->GlossaryItems()->Item(1)->SetDefinition("changed");
    EXPECT_TRUE(topic->CheckIn());
    EXPECT_TRUE(project->GlossaryItems()->CheckIn());
    EXPECT_THAT(safe->At(topicSpec(topic)).text, HasSubstr("Title=\"changed\""));
    EXPECT_THAT(safe->At("$/help/manual/ProjectData/Glossary.xml").text, HasSubstr("changed"));
    EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicElement, WhatIsNotCheckedOutKeepsItsFileAndItsMark) {
    const auto before = bytes(topic->LocalSpec());
    topic->SetTitle("changed");
    project->GlossaryItems()->Item(1)->SetDefinition("changed");
    const auto glossary = bytes(project->GlossaryItems()->LocalSpec());
    project->Save();
    EXPECT_EQ(bytes(topic->LocalSpec()), before);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_EQ(bytes(project->GlossaryItems()->LocalSpec()), glossary);
    EXPECT_TRUE(project->GlossaryItems()->Dirty());
    newFile(project->GlossaryItems()->LocalSpec())->Delete();
    project->Save();
    EXPECT_THAT(bytes(project->GlossaryItems()->LocalSpec()), HasSubstr("changed"));
}

TEST_F(TopicElement, ADirtyTreeThatIsNotCheckedOutIsNotCheckedIn) {
    project->QbNodes()->Item(1)->SetIcon(7);
    EXPECT_EQ(project->QbNodes()->CheckIn(), true);  // its file is as it was
    outside.files->Put(project->QbNodes()->LocalSpec(), "other");
    EXPECT_FALSE(project->QbNodes()->CheckIn());
    EXPECT_THAT(outside.messages->shown, IsEmpty());
}

TEST_F(TopicElement, TheWholeProjectIsCheckedOutButForTasksAndFiles) {
    safe->Take();
    EXPECT_TRUE(project->CheckOut(true, "x"));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkout $/help/manual/Manual.qbp 'x'",
                                          "Checkout $/help/manual/ProjectData/Glossary.xml 'x'",
                                          "Checkout $/help/manual/ProjectData/TableOfContents.xml 'x'",
                                          "Checkout $/help/manual/ProjectData/Manifests.xml 'x'",
                                          "Checkout " + topicSpec(topic) + " 'Checked Out by Quillbox'"));
    EXPECT_FALSE(project->CheckOut(true, "x"));
}

TEST_F(TopicElement, TheWholeProjectIsCheckedInAndItsResultIsOfTheFileAlone) {
    project->CheckOut(true, "x");
    topic->SetTitle("changed");
    safe->Take();
    EXPECT_FALSE(project->CheckIn(true, "y", true));
    EXPECT_THAT(safe->Take(), ElementsAre("Checkin " + topicSpec(topic) + " 'y' keep"));
    EXPECT_TRUE(project->CheckIn(true, "y", false));
    EXPECT_EQ(safe->Take().size(), 5u);
    EXPECT_EQ(topic->CheckOutStatus(), StatusCheckedIn);
}

TEST_F(TopicElement, UndoingAndFetchingTheWholeProjectReachesTopicsAlone) {
    project->CheckOut(true, "x");
    safe->Take();
    EXPECT_TRUE(project->UndoCheckout(true));
    EXPECT_THAT(safe->Take(),
                ElementsAre("UndoCheckout $/help/manual/Manual.qbp", "UndoCheckout " + topicSpec(topic)));
    EXPECT_TRUE(project->GetLatestSSVersion(true));
    EXPECT_THAT(safe->Take(), ElementsAre("Get $/help/manual/Manual.qbp", "Get " + topicSpec(topic)));
    project->CheckOut(false, "x");
    EXPECT_FALSE(project->GetLatestSSVersion(false));
}

TEST_F(TopicElement, ARemovedTopicIsDeletedAtTheNextSaveWithItsFile) {
    const auto local = topic->LocalSpec();
    project->Topics->Remove(1);
    project->OtherFiles->Remove(1);
    safe->Take();
    ASSERT_TRUE(project->SaveToDisk(false));
    EXPECT_TRUE(has(local));
    EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 1);
    ASSERT_TRUE(project->SaveToDisk());
    EXPECT_THAT(safe->Take(), ElementsAre("Delete " + topicSpec(topic), "Delete $/help/manual/img/a.png"));
    EXPECT_FALSE(has(local));
    EXPECT_TRUE(has("/work/manual/img/a.png"));
    EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 0);
    EXPECT_EQ(project->OtherFiles->DeletedFiles()->Count(), 0);
    safe->Take();
    project->SaveToDisk();
    EXPECT_THAT(safe->Take(), IsEmpty());
}

TEST_F(TopicElement, AFileThatWasRemovedDuringAPauseStaysInTheDatabase) {
    project->OtherFiles->PauseEvents = true;
    project->OtherFiles->Remove(1);
    project->OtherFiles->PauseEvents = false;
    safe->Take();
    ASSERT_TRUE(project->SaveToDisk());
    EXPECT_THAT(safe->Take(), IsEmpty());
    EXPECT_TRUE(safe->Has("$/help/manual/img/a.png"));
}

TEST_F(TopicElement, ATopicThatHasComeBackStays) {
    project->Topics->Remove(1);
    project->Topics->Add(topic, topic->Key);
    project->SaveToDisk();
    EXPECT_TRUE(safe->Has(topicSpec(topic)));
    EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 0);
}

TEST_F(TopicElement, ATopicThatTheDatabaseDoesNotKnowKeepsItsFile) {
    const auto fresh = addTopic("New");
    project->SaveToDisk();
    const auto local = fresh->LocalSpec();
    project->Topics->Remove(fresh->Key);
    EXPECT_TRUE(project->SaveToDisk());
    EXPECT_TRUE(has(local));
}

TEST_F(TopicElement, ASaveMakesTheDataFolders) {
    project = newProject();
    project->Filename->SetPath("/work/new/New.qbp");
    outside.files->Put("/work/new/x", "");
    project->SetSSActivated(true);
    outside.files->ForgetCalls();
    project->SaveToDisk();
    EXPECT_THAT(outside.files->Calls(), testing::IsSupersetOf({"make folder /work/new/ProjectData/",
                                                               "make folder /work/new/TopicData/"}));
}

TEST_F(TopicElement, ANewFileIsAddedByTheSaveAndALoadedOneIsNot) {
    outside.files->Put("/work/manual/img/b.png", "b");
    addFile("/work/manual/img/b.png");
    safe->Take();
    project->SaveToDisk();
    EXPECT_THAT(safe->Take(), ElementsAre("Add $/help/manual/img/b.png 'Added by Quillbox'",
                                          "Checkout $/help/manual/img/b.png 'Checked out by Quillbox'"));
    const auto other = newProject();
    other->LoadFromFile(kFile);
    safe->entries.erase("$/help/manual/img/b.png");
    safe->Take();
    other->SaveToDisk();
    EXPECT_THAT(safe->Take(), Not(testing::Contains(HasSubstr("Add "))));
}

}  // namespace
}  // namespace quillbox
