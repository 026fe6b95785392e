#include "support/SourceControlTest.h"

namespace quillbox {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class AddToSourceSafe : public SourceControlTest {
  protected:
    AddToSourceSafe() {
        project->VSSDatabase();
        safe->Take();
    }
    // The captions of a run.
    std::vector<std::string> run(bool expected, bool addTopics = true) {
        std::vector<std::string> captions;
        sigc::connection heard = project->SourceSafeProgress.connect(
            [&](const std::string& caption) { captions.push_back(caption); });
        EXPECT_EQ(project->AddToSourceSafe(addTopics), expected);
        heard.disconnect();
        return captions;
    }
};

TEST_F(AddToSourceSafe, EverythingIsAddedInOrderAndStaysCheckedOut) {
    EXPECT_THAT(
        run(true),
        ElementsAre("Creating SourceSafe Project", "Adding project file", "Creating Project Data sub-project",
                    "Adding Glossary", "Adding Table of Contents", "Adding Booklets", "Adding Tasks",
                    "Creating Topic Data sub-project", "Adding Topic 'Intro'", "Adding File 'a.png'"));
    const auto added = [](const std::string& path) {
        return "Add $/help/manual/" + path + " 'Added by Quillbox' keep";
    };
    EXPECT_THAT(safe->Take(),
                ElementsAre("NewSubproject $/help ''", "NewSubproject $/help/manual ''", added("Manual.qbp"),
                            "NewSubproject $/help/manual/ProjectData 'Created by Quillbox'",
                            added("ProjectData/Glossary.xml"), added("ProjectData/TableOfContents.xml"),
                            added("ProjectData/Manifests.xml"), added("ProjectData/Tasks.xml"),
                            "NewSubproject $/help/manual/TopicData 'Created by Quillbox'",
                            added("TopicData/" + topic->Key + ".xml"),
                            "NewSubproject $/help/manual/img 'Created by Quillbox'",
                            "Add $/help/manual/img/a.png 'Added by Quillbox'",
                            "Checkout $/help/manual/img/a.png 'Checked out by Quillbox'"));
    EXPECT_EQ(project->GetCheckOutStatus("$/help/manual/Manual.qbp", kFolder), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(topic->CheckOutStatus(), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(project->QbNodes()->CheckOutStatus(), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(file->CheckOutStatus(), StatusCheckedOutToCurrentUser);
    EXPECT_FALSE(project->SSActivated());
    EXPECT_TRUE(project->IsProjectFileInSourceSafe());
    EXPECT_TRUE(project->IsGlossaryInSourceSafe());
    EXPECT_TRUE(project->IsTOCInSourceSafe());
    EXPECT_TRUE(project->IsManifestsInSourceSafe());
    EXPECT_TRUE(project->IsProjectFolderInSourceSafe());
}

TEST_F(AddToSourceSafe, ASecondRunHasNothingToDo) {
    run(true);
    topic->SetTitle("changed");
    safe->Take();
    outside.files->ForgetCalls();
    EXPECT_THAT(run(true), IsEmpty());
    EXPECT_THAT(safe->Take(), IsEmpty());
    EXPECT_TRUE(topic->Dirty());
}

TEST_F(AddToSourceSafe, WithoutTopicsThereIsNoTopicFolder) {
    EXPECT_THAT(run(true, false), Not(Contains(HasSubstr("Topic"))));
    EXPECT_FALSE(safe->Has("$/help/manual/TopicData"));
    EXPECT_TRUE(safe->Has("$/help/manual/img/a.png"));
}

TEST_F(AddToSourceSafe, AProjectFileThatCannotBeAddedStopsTheTopicsAlone) {
    newFile(kFile)->Delete();
    const auto captions = run(false);
    EXPECT_THAT(captions, Contains("Adding Tasks"));
    EXPECT_THAT(captions, Contains("Adding File 'a.png'"));
    EXPECT_THAT(captions, Not(Contains(HasSubstr("Topic"))));
    safe->entries = {{"$", {.isFolder = true}}};
    EXPECT_THAT(run(true, false), Contains("Adding Tasks"));
}

TEST_F(AddToSourceSafe, AFileOutsideTheFolderLeavesTheProjectWithAWarning) {
    addFile("/elsewhere/b.png");
    outside.messages->answers = {MessageAnswer::mbOK};
    EXPECT_THAT(run(true), Not(Contains(HasSubstr("b.png"))));
    EXPECT_EQ(project->OtherFiles->Count(), 1);
    EXPECT_EQ(project->OtherFiles->DeletedFiles()->Count(), 1);
    ASSERT_EQ(outside.messages->shown.size(), 1u);
    EXPECT_EQ(outside.messages->shown[0].title, "SourceSafe");
    EXPECT_EQ(outside.messages->shown[0].icon, MessageIcon::biExclamation);
    EXPECT_EQ(
        outside.messages->shown[0].text,
        "The file '/elsewhere/b.png' is not in a sub-directory of the project file directory and so cannot "
        "be "
        "added to SourceSafe.  This file will be removed from the project in order to continue adding to "
        "SourceSafe.  Move the file to a sub-directory and then add back to the project.");
}

TEST_F(AddToSourceSafe, AFailureEndsTheRunInSilenceWithTheResultAsItStood) {
    newFile(project->Tasks->LocalSpec())->Delete();
    EXPECT_THAT(run(true), Not(Contains(HasSubstr("Topic"))));
    EXPECT_TRUE(safe->Has("$/help/manual/ProjectData/Manifests.xml"));
    EXPECT_FALSE(safe->Has("$/help/manual/img"));
}

TEST_F(AddToSourceSafe, WithoutASessionOrAFolderNothingIsAdded) {
    project->SetSSProject("help");
    EXPECT_THAT(run(false), ElementsAre("Creating SourceSafe Project"));
    EXPECT_THAT(safe->Take(), IsEmpty());
    project->SetSSActivated(false);
    safe->refusesLogin = true;
    EXPECT_THAT(run(false), IsEmpty());
}

TEST_F(AddToSourceSafe, AChainOfFoldersIsMadeOrFound) {
    const auto make = [&](const std::string& spec) {
        const auto folder = project->CreateSourceSafeProjectFolder(spec);
        return folder ? folder->Spec() : "none";
    };
    EXPECT_EQ(make("$/a/b/"), "$/a/b");
    EXPECT_THAT(safe->Take(), ElementsAre("NewSubproject $/a ''", "NewSubproject $/a/b ''"));
    EXPECT_EQ(make("$/a// /b/c"), "$/a/b/c");
    EXPECT_THAT(safe->Take(), ElementsAre("NewSubproject $/a/b/c ''"));
    EXPECT_EQ(make("$/"), "$/");
    EXPECT_EQ(make("$"), "$/");
    for (const auto* spec : {"", "a/b", "/a", " $/a"}) EXPECT_EQ(make(spec), "none") << spec;
    EXPECT_THAT(safe->Take(), IsEmpty());
    safe->failingCall = "NewSubproject";
    EXPECT_EQ(make("$/a/d"), "none");
}

TEST_F(AddToSourceSafe, FilesOfOneFolderShareIt) {
    outside.files->Put("/work/manual/img/b.png", "b");
    outside.files->Put("/work/manual/img/deep/c.png", "c");
    addFile("/work/manual/img/b.png");
    addFile("/work/manual/img/deep/c.png");
    run(true);
    const auto calls = safe->Take();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "NewSubproject $/help/manual/img 'Created by Quillbox'"),
              1);
    EXPECT_THAT(calls, Contains("NewSubproject $/help/manual/img/deep 'Created by Quillbox'"));
    EXPECT_TRUE(safe->Has("$/help/manual/img/deep/c.png"));
}

TEST_F(AddToSourceSafe, AFileThatIsThereAlreadyIsDone) {
    run(true);
    safe->Take();
    EXPECT_TRUE(file->AddToSourceSafe());
    EXPECT_THAT(safe->Take(), IsEmpty());
}

TEST_F(AddToSourceSafe, ATopicIsSavedBeforeItIsAddedAndGivesFalse) {
    run(true);
    const auto fresh = addTopic("New");
    EXPECT_FALSE(fresh->AddToSourceSafe());
    EXPECT_TRUE(has(fresh->LocalSpec()));
    EXPECT_TRUE(safe->Has(fresh->SSSpec()));
    EXPECT_FALSE(fresh->NewTopicFlag);
}

}  // namespace
}  // namespace quillbox
