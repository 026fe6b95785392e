#include "content/OtherFiles.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OtherFilesTest : public ProjectTest {
  protected:
    Ref<OtherFile> load(const std::string& name) const {
        const auto document = platform().xml->NewDocument();
        document->RootElement()->SetName("file");
        document->RootElement()->AddAttribute("FileName", name);
        const auto file = make<OtherFile>();
        file->SetQbProject(project);
        file->Load(document->RootElement());
        return file;
    }
    int deleted() const { return project->OtherFiles->DeletedFiles()->Count(); }

    EventLog log{project};
};

TEST_F(OtherFilesTest, AFileOfTheProjectsFolderHasAShortRelativeName) {
    project->SetSSProject("$/help");
    const auto file = project->NewOtherFile("/work/manual/a.css");
    EXPECT_EQ(file->RelativeFileName(), "a.css");
    EXPECT_EQ(file->SSSpec(), "$/help/a.css");
    EXPECT_EQ(file->LocalSpec(), "/work/manual/a.css");
    EXPECT_TRUE(file->NewFlag);
    EXPECT_EQ(project->OtherFiles->Count(), 0);
}

TEST_F(OtherFilesTest, AFileBelowTheFolderHasItsFoldersInTheName) {
    project->SetSSProject("$/help");
    const auto file = project->NewOtherFile("/work/manual/img\\sub/a.png");
    EXPECT_EQ(file->RelativeFileName(), "img/sub/a.png");
    EXPECT_EQ(file->SSSpec(), "$/help/img/sub/a.png");
}

TEST_F(OtherFilesTest, AFileElsewhereKeepsItsFullName) {
    for (const auto* path : {"/elsewhere/a.png", "/work/manual2/a.png", "/work/a.png"}) {
        EXPECT_EQ(project->NewOtherFile(path)->RelativeFileName(), path);
    }
}

TEST_F(OtherFilesTest, AskingForTheRelativeNameLeavesNoBaseBehind) {
    const auto file = project->NewOtherFile("/work/manual/a.css");
    file->RelativeFileName();
    file->Filename()->SetPath("b.css");
    EXPECT_EQ(file->LocalSpec(), "b.css");
}

TEST_F(OtherFilesTest, ImagesAreThoseOfFiveKinds) {
    for (const auto* name : {"a.png", "a.bmp", "a.gif", "a.jpg", "a.pcx", "sub/pic.PNG", "a.b.Gif"}) {
        EXPECT_TRUE(project->NewOtherFile(name)->IsImage()) << name;
    }
    for (const auto* name : {"a.jpeg", "a.tif", "a.css", "png", "a.png.txt", ""}) {
        EXPECT_FALSE(project->NewOtherFile(name)->IsImage()) << name;
    }
}

TEST_F(OtherFilesTest, StylesheetsAreCssFilesInAnyCase) {
    EXPECT_TRUE(project->NewOtherFile("STYLE.CSS")->IsStyleSheet());
    EXPECT_FALSE(project->NewOtherFile("style.css2")->IsStyleSheet());
    EXPECT_FALSE(project->NewOtherFile("css")->IsStyleSheet());
}

TEST_F(OtherFilesTest, AdditionsAndRemovalsAreToldMarkTheProjectAndRemovalsAreRemembered) {
    const auto file = project->NewOtherFile("/work/manual/a.css");
    project->OtherFiles->Add(file, file->LocalSpec());
    EXPECT_THAT(log.Take(), ElementsAre("OtherFileAdded(/work/manual/a.css)", "DirtyStateChanged"));
    EXPECT_TRUE(project->ProjectDirty());
    project->OtherFiles->Remove("/WORK/manual/A.css");
    EXPECT_THAT(log.Take(), ElementsAre("OtherFileRemoved(/work/manual/a.css)", "DirtyStateChanged"));
    EXPECT_EQ(deleted(), 1);
}

TEST_F(OtherFilesTest, AFileThatIsPutBackIsNotDeleted) {
    const auto file = addFile("/work/manual/a.css");
    project->OtherFiles->Remove(1);
    project->OtherFiles->Add(file, file->LocalSpec());
    EXPECT_EQ(deleted(), 0);
    project->OtherFiles->Remove(1);
    project->OtherFiles->Add(file, 1);
    EXPECT_EQ(deleted(), 1);
    EXPECT_THAT(failureOf([&] { project->OtherFiles->Remove(1); }), HasSubstr("already"));
    EXPECT_EQ(project->OtherFiles->Count(), 0);
}

TEST_F(OtherFilesTest, APausedCollectionTellsMarksAndRemembersNothing) {
    const auto file = addFile("/work/manual/a.css");
    settle();
    log.Take();
    project->OtherFiles->PauseEvents = true;
    project->OtherFiles->Remove(1);
    project->OtherFiles->Add(file, file->LocalSpec());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
    EXPECT_EQ(deleted(), 0);
}

TEST_F(OtherFilesTest, AFileIsFoundByItsNameInAnyCaseAndWithEitherSeparator) {
    const auto file = project->NewOtherFile("/work/manual/img/a.css");
    EXPECT_FALSE(project->OtherFiles->Exists("/work/manual/img/a.css"));
    project->OtherFiles->Add(file, "key");
    const auto& files = *project->OtherFiles;
    for (const auto* name :
         {"/work/manual/img/a.css", "/WORK/manual/img/A.CSS", "\\work\\manual\\img\\a.css"}) {
        EXPECT_TRUE(files.Exists(name)) << name;
        EXPECT_EQ(files.Item(name), file) << name;
    }
    EXPECT_EQ(files.Item("KEY"), file);
    EXPECT_FALSE(files.Exists("key"));
    EXPECT_FALSE(files.Exists("a.css"));
    EXPECT_EQ(files.Item("a.css"), nullptr);
}

TEST_F(OtherFilesTest, AFileIsFoundByItsNewNameWhenItWasRenamed) {
    const auto file = addFile("/work/manual/a.css");
    EXPECT_TRUE(project->OtherFiles->Exists("/work/manual/a.css"));
    file->Filename()->SetBaseName("b");
    EXPECT_FALSE(project->OtherFiles->Exists("/work/manual/a.css"));
    EXPECT_TRUE(project->OtherFiles->Exists("/work/manual/b.css"));
    file->SetFilename(newFile("/work/manual/c.css"));
    EXPECT_FALSE(project->OtherFiles->Exists("/work/manual/b.css"));
    EXPECT_TRUE(project->OtherFiles->Exists("/work/manual/c.css"));
    EXPECT_NE(failureOf([&] { file->SetFilename(nullptr); }), "no failure");
}

TEST_F(OtherFilesTest, ALoadedFileIsAbsoluteAndNotNew) {
    EXPECT_EQ(load("a.css")->LocalSpec(), "/work/manual/a.css");
    EXPECT_EQ(load("img\\a.png")->LocalSpec(), "/work/manual/img/a.png");
    EXPECT_EQ(load("/elsewhere/a.css")->LocalSpec(), "/elsewhere/a.css");
    EXPECT_FALSE(load("a.css")->NewFlag);
}

TEST_F(OtherFilesTest, WithoutAPlaceOfTheProjectARelativeNameStays) {
    project->Filename->SetPath("");
    EXPECT_EQ(load("img/a.png")->LocalSpec(), "img/a.png");
}

TEST_F(OtherFilesTest, ASavedFileHasItsRelativeNameAndIsNotNew) {
    const auto file = addFile("/work/manual/img/a.png");
    addFile("/elsewhere/b.png");
    EXPECT_THAT(project->Save(),
                HasSubstr("  <file FileName=\"img/a.png\"/>\n  <file FileName=\"/elsewhere/b.png\"/>\n"));
    EXPECT_FALSE(file->NewFlag);
}

TEST_F(OtherFilesTest, AFileNeedsItsNameAndAProject) {
    const auto document = platform().xml->NewDocument();
    document->RootElement()->SetName("file");
    const auto file = make<OtherFile>();
    EXPECT_EQ(failureOf([&] { file->RelativeFileName(); }), "This object has no project");
    file->SetQbProject(project);
    EXPECT_THAT(failureOf([&] { file->Load(document->RootElement()); }), HasSubstr("'FileName'"));
}

}  // namespace
}  // namespace quillbox
