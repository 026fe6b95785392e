#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kBackup = "/work/manual/Manual.bak";
constexpr const char* kData = "/work/manual/ProjectData/";

class SaveToDisk : public ProjectTest {
  protected:
    std::vector<std::string> written() const {
        std::vector<std::string> paths;
        for (const auto& call : outside.files->Calls()) {
            if (call.starts_with("write ")) paths.push_back(call.substr(6));
        }
        return paths;
    }
    // Saves, and gives what was written.
    std::vector<std::string> save() {
        outside.files->ForgetCalls();
        EXPECT_TRUE(project->SaveToDisk());
        return written();
    }
    std::string topicFile(const Ref<Topic>& topic) const {
        return "/work/manual/TopicData/" + topic->Key + ".xml";
    }
};

TEST_F(SaveToDisk, TheFirstSaveMakesNoBackup) {
    addTopic("One");
    EXPECT_THAT(save(), ElementsAre(kFile));
    EXPECT_FALSE(has(kBackup));
    EXPECT_THAT(bytes(kFile), HasSubstr("<QbProject ProjectType=\"0\""));
    EXPECT_FALSE(project->Dirty());
    EXPECT_FALSE(project->Topics->Item(1)->Dirty());
}

TEST_F(SaveToDisk, TheBackupHoldsTheResultOfTheSaveBefore) {
    project->SetTitle("First");
    save();
    const auto first = bytes(kFile);
    project->SetTitle("Second");
    save();
    EXPECT_EQ(bytes(kBackup), first);
    save();
    EXPECT_THAT(bytes(kBackup), HasSubstr("Title=\"Second\""));
}

TEST_F(SaveToDisk, AFileOfTheUsersWithTheBackupsNameIsReplaced) {
    outside.files->Put(kBackup, "mine");
    save();
    EXPECT_EQ(bytes(kBackup), "mine");  // nothing to back up yet
    save();
    EXPECT_EQ(bytes(kBackup), bytes(kFile));
}

TEST_F(SaveToDisk, AReadOnlyBackupDoesNotStopTheSave) {
    save();
    outside.files->Put(kBackup, "old");
    outside.files->SetReadOnly(kBackup, true);
    project->SetTitle("x");
    EXPECT_TRUE(project->SaveToDisk());
    EXPECT_THAT(bytes(kFile), HasSubstr("Title=\"x\""));
}

TEST_F(SaveToDisk, AProjectThatIsNamedAsABackupIsNotDeleted) {
    project->Filename->SetPath(kBackup);
    save();
    outside.files->SetReadOnly(kBackup, true);
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_FALSE(project->SaveToDisk());
    EXPECT_TRUE(has(kBackup));
}

TEST_F(SaveToDisk, AReadOnlyFileIsToldInABoxAndThereIsANewBackupAllTheSame) {
    save();
    outside.files->SetReadOnly(kFile, true);
    project->SetTitle("x");
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_FALSE(project->SaveToDisk());
    ASSERT_EQ(outside.messages->shown.size(), 1u);
    const auto& box = outside.messages->shown[0];
    EXPECT_EQ(box.title, "Could not save");
    EXPECT_EQ(box.text, std::string("Could not save to '") + kFile +
                            "'.  Please check that this file is accessible and is not read-only.");
    EXPECT_EQ(box.buttons, MessageButtons::bsOK);
    EXPECT_EQ(box.icon, MessageIcon::biExclamation);
    EXPECT_TRUE(project->Dirty());
    EXPECT_EQ(bytes(kBackup), bytes(kFile));
    EXPECT_THAT(bytes(kFile), Not(HasSubstr("Title=\"x\"")));
}

TEST_F(SaveToDisk, AProjectWithoutAPlaceIsToldInABox) {
    const auto nowhere = make<QbProject>();
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_FALSE(nowhere->SaveToDisk());
    EXPECT_EQ(outside.messages->shown.size(), 1u);
}

TEST_F(SaveToDisk, EventsOfASaveAreThoseOfTheDirtyState) {
    addTopic("One");
    addTask("Work");
    EventLog log(project);
    save();
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(SaveToDisk, ASaveThatFailsOnTheWayLeavesTheFileEmptyTheBackupAndTheMarks) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    save();
    const auto good = bytes(kFile);
    addTerm("x");
    outside.files->SetReadOnly(std::string(kData) + "Glossary.xml", true);
    EXPECT_THAT(failureOf([&] { project->SaveToDisk(); }), HasSubstr("Glossary.xml"));
    EXPECT_EQ(bytes(kFile), "");
    EXPECT_EQ(bytes(kBackup), good);
    EXPECT_TRUE(project->Dirty());
    outside.files->SetReadOnly(std::string(kData) + "Glossary.xml", false);
    EXPECT_TRUE(project->SaveToDisk());
    EXPECT_THAT(bytes(kFile), HasSubstr("<QbProject"));
}

TEST_F(SaveToDisk, SeparateFilesAreWrittenWhenChangedOrMissing) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto one = addTopic("One", "<p/>");
    const auto two = addTopic("Two");
    addTerm("term");
    addNode("node");
    addTask("task");
    addManifest("book");
    const std::string data = kData;
    EXPECT_THAT(save(),
                ElementsAre(kFile, topicFile(one), topicFile(two), data + "Glossary.xml",
                            data + "Manifests.xml", data + "TableOfContents.xml", data + "Tasks.xml"));
    EXPECT_THAT(bytes(kFile), Not(HasSubstr("One")));
    EXPECT_THAT(bytes(kFile), HasSubstr("<Topic Key=\"" + one->Key + "\"/>"));
    EXPECT_THAT(bytes(kFile), HasSubstr("  <GlossaryItems/>\n  <Manifests/>\n  <Nodes/>\n  <Tasks/>\n"));

    EXPECT_THAT(save(), ElementsAre(kFile));
    two->SetTitle("changed");
    EXPECT_THAT(save(), ElementsAre(kFile, topicFile(two)));
    project->GlossaryItems()->Item(1)->SetDefinition("x");
    EXPECT_THAT(save(), ElementsAre(kFile, data + "Glossary.xml"));
    project->Tasks->Item(1)->SetNotes("x");
    EXPECT_THAT(save(), ElementsAre(kFile, data + "Tasks.xml"));
    project->Manifests()->Item(1)->SetNotes("x");
    EXPECT_THAT(save(), ElementsAre(kFile, data + "Manifests.xml"));
    project->QbNodes()->Item(1)->SetIcon(1);
    EXPECT_THAT(save(), ElementsAre(kFile, data + "TableOfContents.xml"));
    newFile(topicFile(one))->Delete();
    newFile(data + "Tasks.xml")->Delete();
    EXPECT_THAT(save(), ElementsAre(kFile, topicFile(one), data + "Tasks.xml"));
}

TEST_F(SaveToDisk, ARemovedTopicKeepsItsFileWithoutSourceControl) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto one = addTopic("One");
    save();
    project->Topics->Remove(1);
    addFile("/work/manual/a.css");
    project->OtherFiles->Remove(1);
    save();
    EXPECT_TRUE(has(topicFile(one)));
    EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 1);
    EXPECT_EQ(project->OtherFiles->DeletedFiles()->Count(), 1);
}

TEST_F(SaveToDisk, SavingAsTextMarksNothingCleanButTheTopics) {
    const auto one = addTopic("One");
    addTask("Work");
    project->Save();
    EXPECT_FALSE(one->Dirty());
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_TRUE(project->TopicsDirty());
    EXPECT_TRUE(project->Tasks->Dirty());
    EXPECT_FALSE(has(kFile));
}

TEST_F(SaveToDisk, SavingAsTextTwiceLeavesUnchangedFilesAlone) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    const auto one = addTopic("One");
    project->Save();
    settle();
    outside.files->ForgetCalls();
    project->Save();
    EXPECT_THAT(written(), IsEmpty());
}

}  // namespace
}  // namespace quillbox
