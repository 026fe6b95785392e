// Running a compiler: what it is given, what becomes of its log and of the compiled file.

#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "engine/EngineTest.h"
#include "engine/Process.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class CompilerTest : public EngineTest {
  protected:
    void SetUp() override {
        PutTemplate(
            "<Page File='page.html' ItemType='test.guide:page'/>"
            "<Page File='in.hhp' CompileType='1' Output='%%helpfiletitle%%.hhp'/>");
        Put("page.html", "page");
        Put("in.hhp", "input");
        mGuide->AddPage("one", "One");
        mDocument->CompileType = "1";
        mDocument->Compile = true;
        mDocument->OutputFileName = mFolder.Path() + "deliver/Guide.chm";
        std::filesystem::create_directories(mFolder.Path() + "deliver");
    }
    // A compiler that does what the lines of a shell script say.
    void UseCompiler(const std::string& script, const std::string& name = "hhc") {
        const auto path = mFolder.Path() + "bin/" + name;
        writeFile(path, "#!/bin/sh\n" + script + "\n");
        chmod(path.c_str(), 0755);
        mDocument->CompilerFileName = path;
    }
    std::string Delivered() const { return readFile(mFolder.Path() + "deliver/Guide.chm"); }
};

TEST_F(CompilerTest, StartsInTheOutputFolderWithTheInputLast) {
    UseCompiler(
        "pwd; for a in \"$@\"; do echo \"arg $a\"; done; echo to stderr >&2; cat \"$1\"; echo compiled > "
        "Guide.chm; exit 1");
    Build();
    EXPECT_EQ(mDocument->CompilerLog(),
              mOutput.substr(0, mOutput.size() - 1) + "\narg " + mOutput + "Guide.hhp\nto stderr\ninput");
    EXPECT_EQ(Delivered(), "compiled\n");
    EXPECT_FALSE(hasFile(mOutput + "Guide.chm"));
    EXPECT_THAT(mCreated, ElementsAre("one.html", "Guide.hhp"));
}

TEST_F(CompilerTest, ChmcmdNeedNotScanPages) {
    UseCompiler("echo \"$1\"; echo x > Guide.chm", "chmcmd");
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "--no-html-scan\n");
}

TEST_F(CompilerTest, OneThatDiesLeavesOneErrorLineAndTheOldFile) {
    mDocument->OutputFileName = mOutput + "Guide.chm";
    writeFile(mOutput + "Guide.chm", "the old one");
    UseCompiler("echo Writing; : > Guide.chm; exit 217");
    Build();
    EXPECT_EQ(mDocument->CompilerLog(),
              "Writing\nError: hhc ended without a compiled file, with status 217\n");
    EXPECT_EQ(Output("Guide.chm"), "the old one");
    UseCompiler("echo half > Guide.chm; kill -SEGV $$");
    Build();
    EXPECT_THAT(mDocument->CompilerLog(), StartsWith("Error: hhc died: "));
    EXPECT_EQ(Output("Guide.chm"), "the old one");
    UseCompiler("echo new > Guide.chm");
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "");
    EXPECT_EQ(Output("Guide.chm"), "new\n");
    EXPECT_FALSE(hasFile(mOutput + "Guide.chm.before"));
}

TEST_F(CompilerTest, AFileOfThatNameInTheOutputFolderIsPutBack) {
    writeFile(mOutput + "Guide.chm", "somebody else's");
    UseCompiler("echo new > Guide.chm");
    Build();
    EXPECT_EQ(Delivered(), "new\n");
    EXPECT_EQ(Output("Guide.chm"), "somebody else's");
}

TEST_F(CompilerTest, OneThatCannotBeStartedIsAnErrorLine) {
    mDocument->CompilerFileName = mFolder.Path() + "bin/none.exe";
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "Error: none.exe could not be started: No such file or directory\n");
}

TEST_F(CompilerTest, IsLookedForOnThePath) {
    const std::string oldPath = std::getenv("PATH");
    UseCompiler("echo mine; echo x > Guide.chm", "chmcmd");
    mDocument->CompilerFileName.clear();
    setenv("PATH", (mFolder.Path() + "bin").c_str(), 1);
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "mine\n");
    UseCompiler("echo the first; echo x > Guide.chm", "hhc");
    mDocument->CompilerFileName.clear();
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "the first\n");
    setenv("PATH", mTemplates.c_str(), 1);
    std::filesystem::remove(mOutput + "one.html");
    EXPECT_THAT(BuildFailure(), HasSubstr("neither hhc nor chmcmd is on the path"));
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
    setenv("PATH", oldPath.c_str(), 1);
}

TEST_F(CompilerTest, HelpTwoHasNoCompilerOfItsOwn) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='in.hhp' CompileType='2' "
        "Output='a.hxc'/>");
    mDocument->CompileType = "2";
    EXPECT_EQ(BuildFailure(), "No compiler was given for Help 2.0");
    mDocument->Compile = false;
    EXPECT_EQ(BuildFailure(), "no failure");
}

TEST_F(CompilerTest, ATemplateWithoutInputIsNotCompiled) {
    PutPage("page");
    mDocument->CompilerFileName = "no such compiler";
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "");
}

TEST_F(CompilerTest, APlaceThatCannotTakeTheFileIsFoundBeforeTheWork) {
    UseCompiler("echo x > Guide.chm");
    mDocument->OutputFileName = mFolder.Path() + "nowhere/Guide.chm";
    EXPECT_THAT(BuildFailure(), HasSubstr("nowhere/Guide.chm: the folder of the compiled file is not there"));
    mDocument->OutputFileName = mFolder.Path() + "deliver";
    EXPECT_THAT(BuildFailure(), HasSubstr("a folder stands where the compiled file goes"));
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
}

TEST_F(CompilerTest, AnInputThatWasNotWrittenIsTold) {
    UseCompiler("echo x > Guide.chm");
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='in.hhp' CompileType='1' "
        "Output='other.hhp'/>");
    EXPECT_EQ(BuildFailure(), "The template 'Plain' wrote no compiler input " + mOutput + "Guide.hhp");
}

TEST_F(CompilerTest, ATitleThatIsNoFileNameIsTold) {
    UseCompiler("echo x > Guide.chm");
    mDocument->Title = "Client/Server";
    EXPECT_EQ(BuildFailure(),
              "'Client/Server.hhp' cannot be the name of a compiler input: it names a folder too");
}

TEST_F(CompilerTest, CancelEndsACompilerAndWhatItStarted) {
    UseCompiler("echo begun; sleep 60 & echo half > Guide.chm; sleep 60");
    mDocument->Progress.connect([&](const std::string& caption, int, int) {
        if (caption == "Compiling") mDocument->Cancel();
    });
    const auto start = std::chrono::steady_clock::now();
    Build();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_TRUE(mDocument->Cancelled());
    EXPECT_THAT(mDocument->CompilerLog(), HasSubstr("Error: hhc was stopped"));
    EXPECT_FALSE(hasFile(mOutput + "Guide.chm"));
}

TEST_F(CompilerTest, AnErrorOfAHandlerEndsTheCompilerToo) {
    UseCompiler("sleep 60");
    mDocument->Progress.connect([&](const std::string& caption, int, int) {
        if (caption == "Compiling") throw AutomationError("enough");
    });
    EXPECT_EQ(BuildFailure(), "enough");
}

TEST_F(CompilerTest, AChannelThatIsHeldOpenDoesNotHoldTheBuild) {
    UseCompiler("sleep 30 & echo x > Guide.chm; echo done");
    const auto start = std::chrono::steady_clock::now();
    Build();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_EQ(mDocument->CompilerLog(), "done\n");
}

TEST_F(CompilerTest, ALogInTheCodePageIsReadable) {
    UseCompiler("printf 'gr\\374n\\n'; echo x > Guide.chm");
    Build();
    EXPECT_EQ(mDocument->CompilerLog(), "grün\n");
}

}  // namespace
}  // namespace quillbox
