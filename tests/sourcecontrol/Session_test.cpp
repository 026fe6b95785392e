#include "frame/Root.h"
#include "support/SourceControlTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSafeKey = "Software\\Microsoft\\SourceSafe";

class Session : public SourceControlTest {
  protected:
    void user(const char* name, const std::string& value) {
        outside.settings->Write(Hive::CurrentUser, TestPlatform::kProductKey, name, value);
    }
};

TEST_F(Session, TheClientIsLookedForOnceInTheProcess) {
    EXPECT_TRUE(make<Root>()->IsSourceSafeAvailable());
    platform().sourceSafe = nullptr;
    EXPECT_TRUE(make<Root>()->IsSourceSafeAvailable());
    resetSourceSafe();
    EXPECT_FALSE(make<Root>()->IsSourceSafeAvailable());
    EXPECT_THAT(safe->calls, IsEmpty());
}

TEST_F(Session, WithoutASettingTheDefaultDatabaseIsOpened) {
    EXPECT_NE(project->VSSDatabase(), nullptr);
    EXPECT_THAT(safe->Take(), ElementsAre("Open '' '' ''"));
}

TEST_F(Session, TheUsersSettingWinsOverTheMachines) {
    outside.settings->Write(Hive::LocalMachine, kSafeKey, "Current Database", "/machine/x.ini");
    EXPECT_EQ(make<Root>()->SSDatabase(), "/machine/x.ini");
    user("SSDatabase", "/mine/x.ini");
    user("SSUser", "ann");
    user("SSPassword", "secret");
    const auto root = make<Root>();
    EXPECT_EQ(root->SSDatabase(), "/mine/x.ini");
    EXPECT_EQ(root->SSUser(), "ann");
    EXPECT_EQ(root->SSPassword(), "secret");
    EXPECT_NE(root->VSSDatabase(), nullptr);
    EXPECT_NE(root->VSSDatabase(), root->VSSDatabase());
    EXPECT_EQ(safe->Take().at(0), "Open '/mine/x.ini' 'ann' 'secret'");
}

TEST_F(Session, ALocationThatIsThereAndIsNoIniFileStandsForItsIniFile) {
    outside.files->Put("/safe/data/x.txt", "");
    outside.files->Put("/safe/SRCSAFE.INI", "");
    const auto database = [&](const std::string& setting) {
        user("SSDatabase", setting);
        return make<Root>()->SSDatabase();
    };
    EXPECT_EQ(database("/safe/data/x.txt"), "/safe/data/srcsafe.ini");
    EXPECT_EQ(database("/safe/data/"), "/safe/data/srcsafe.ini");
    EXPECT_EQ(database("/safe/data"), "/safe/data/srcsafe.ini");
    EXPECT_EQ(database("/safe/SRCSAFE.INI"), "/safe/SRCSAFE.INI");
    EXPECT_EQ(database("/safe/other/srcsafe.ini"), "/safe/other/srcsafe.ini");
    EXPECT_EQ(database("/not/there"), "/not/there");
}

TEST_F(Session, OneSessionServesAProjectUntilItIsTurnedOff) {
    const auto session = project->VSSDatabase();
    EXPECT_EQ(project->VSSDatabase(), session);
    project->SetSSActivated(true);
    EXPECT_EQ(project->VSSDatabase(), session);
    project->SetSSActivated(false);
    EXPECT_NE(project->VSSDatabase(), session);
}

TEST_F(Session, AFailedLoginIsTriedAgain) {
    safe->refusesLogin = true;
    EXPECT_EQ(project->VSSDatabase(), nullptr);
    EXPECT_EQ(make<Root>()->VSSDatabase(), nullptr);
    EXPECT_EQ(project->VSSItem("$/"), nullptr);
    safe->refusesLogin = false;
    EXPECT_NE(project->VSSDatabase(), nullptr);
    EXPECT_THAT(outside.messages->shown, IsEmpty());
}

TEST_F(Session, WithoutTheClientEverythingIsSilent) {
    project->SetSSActivated(true);
    EXPECT_EQ(project->ProjectType(), ProjectTypeSeparateFiles);
    project->SetProjectType(ProjectTypeSingleFile);
    EXPECT_EQ(project->ProjectType(), ProjectTypeSeparateFiles);
    platform().sourceSafe = nullptr;
    resetSourceSafe();
    EXPECT_FALSE(project->SSActivated());
    EXPECT_EQ(project->ProjectType(), ProjectTypeSingleFile);
    EXPECT_EQ(project->VSSDatabase(), nullptr);
    EXPECT_FALSE(project->AddToSourceSafe());
    EXPECT_FALSE(project->IsProjectFolderInSourceSafe());
    EXPECT_EQ(project->CreateSourceSafeProjectFolder("$/x"), nullptr);
    EXPECT_FALSE(project->CheckOut(true, "x"));
    EXPECT_FALSE(project->QbNodes()->CheckOut());
    EXPECT_EQ(project->GetCheckOutStatus("$/", "/"), StatusCheckedIn);
    EXPECT_EQ(topic->CheckedOutToUser(), "");
    EXPECT_THAT(outside.messages->shown, IsEmpty());
}

TEST_F(Session, FoldersAndFilesAreToldApart) {
    safe->PutFolder("$/help");
    safe->Put("$/help/a.txt", "");
    EXPECT_TRUE(project->DoesSSProjectExist("$/help"));
    EXPECT_TRUE(project->DoesSSProjectExist("$/help/"));
    EXPECT_FALSE(project->DoesSSItemExist("$/help"));
    EXPECT_TRUE(project->DoesSSItemExist("$/help\\a.txt"));
    EXPECT_FALSE(project->DoesSSProjectExist("$/help/a.txt"));
    EXPECT_FALSE(project->DoesSSItemExist("$/help/none"));
    EXPECT_NE(project->VSSItem("$/help"), nullptr);
    EXPECT_EQ(project->VSSItem("none"), nullptr);
}

TEST_F(Session, PathsAndSpecsOfElementsStandOnTheProjects) {
    EXPECT_EQ(project->TopicDataPath(), "/work/manual/TopicData/");
    EXPECT_EQ(project->ProjectDataPath(), "/work/manual/ProjectData/");
    EXPECT_EQ(project->TopicDataSpec(), "$/help/manual/TopicData\\");
    EXPECT_EQ(project->ProjectDataSpec(), "$/help/manual/ProjectData\\");
    EXPECT_EQ(topic->SSSpec(), "$/help/manual/TopicData\\" + topic->Key + ".xml");
    EXPECT_EQ(project->QbNodes()->SSSpec(), "$/help/manual/ProjectData\\TableOfContents.xml");
    EXPECT_EQ(project->GlossaryItems()->SSSpec(), "$/help/manual/ProjectData\\Glossary.xml");
    EXPECT_EQ(project->Tasks->SSSpec(), "$/help/manual/ProjectData\\Tasks.xml");
    EXPECT_EQ(project->Manifests()->SSSpec(), "$/help/manual/ProjectData\\Manifests.xml");
    EXPECT_EQ(file->SSSpec(), "$/help/manual/img/a.png");
    EXPECT_EQ(project->Manifests()->LocalSpec(), "/work/manual/ProjectData/Manifests.xml");
}

TEST_F(Session, TheStatusGoesByUserAndFolder) {
    safe->Put("$/a.txt", "");
    const auto status = [&](const std::string& user, const std::string& folder, const std::string& asked) {
        safe->At("$/a.txt").user = user;
        safe->At("$/a.txt").folder = folder;
        return project->GetCheckOutStatus("$/a.txt", asked);
    };
    EXPECT_EQ(status("", "", "/work/"), StatusCheckedIn);
    EXPECT_EQ(status("Somebody", "/work", "/work/"), StatusCheckedOutToOtherUser);
    EXPECT_EQ(status("Writer", "/work", "/work/"), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(status("Writer", "/WORK", "/work\\"), StatusCheckedOutToCurrentUser);
    EXPECT_EQ(status("Writer", "/other", "/work/"), StatusCheckedOutWrongDirectory);
    EXPECT_EQ(status("Writer", "/work", "/work"), StatusCheckedOutWrongDirectory);
    EXPECT_EQ(project->GetCheckOutStatus("$/none", "/work/"), StatusCheckedIn);
}

}  // namespace
}  // namespace quillbox
