#include "build/CompilerInputs.h"

#include <gmock/gmock.h>

#include "build/BuildTest.h"

namespace quillbox {
namespace {

class CompilerInputsTest : public ProviderTest {
  protected:
    // What a compiler input gets for a content name, a line each.
    std::string streamed(const std::string& contentType) {
        const auto file = newFile("/work/manual/input.txt");
        file->Open(kWriteElement);
        provider->StreamContent(file, contentType);
        file->Close();
        return bytes("/work/manual/input.txt");
    }
    Ref<Topic> addIndexed(const std::string& name, const std::vector<std::string>& keywords) {
        const auto topic = addTopic(name);
        topic->SetAutoGenerateIndexEntry(false);
        for (const auto& keyword : keywords) topic->AddKeyword(keyword);
        return topic;
    }
    void buildForHelp2() { document->CompileType = "2"; }
};

TEST_F(CompilerInputsTest, NameTheProjectFileOfTheCompiler) {
    provider->AfterProcessItem(nullptr, nullptr);
    EXPECT_EQ(document->CompilerInputFile, "/work/manual/Manual.hhp");
    buildForHelp2();
    provider->AfterProcessItem(nullptr, nullptr);
    EXPECT_EQ(document->CompilerInputFile, "/work/manual/Manual.hxc");
    document->CompileType = "0";
    provider->AfterProcessItem(nullptr, nullptr);
    EXPECT_EQ(document->CompilerInputFile, "/work/manual/Manual.hhp");
}

TEST_F(CompilerInputsTest, ListPagesAndThenOtherFiles) {
    addFile("/work/manual/css/help.css");
    provider->ContentCreated(nullptr, nullptr, "/work/manual/Intro.html");
    provider->ContentCreated(nullptr, nullptr, "/work/manual/pages/Deep.html");
    EXPECT_EQ(streamed("files"), "Intro.html\r\npages/Deep.html\r\ncss/help.css\r\n");
    buildForHelp2();
    EXPECT_EQ(streamed("FILES"),
              "<File Url = \"Intro.html\"/>\r\n<File Url = \"pages/Deep.html\"/>\r\n<File Url = "
              "\"css/help.css\"/>\r\n");
}

TEST_F(CompilerInputsTest, KeepHelp2FileListsWellFormed) {
    buildForHelp2();
    provider->ContentCreated(nullptr, nullptr, "/work/manual/A & B.html");
    EXPECT_EQ(streamed("files"), "<File Url = \"A &amp; B.html\"/>\r\n");
}

TEST_F(CompilerInputsTest, GiveALineForEachContextId) {
    const auto topic = addTopic("Intro");
    topic->Key = "T1";
    topic->SetHelpContextIDs("10,20");
    EXPECT_EQ(streamed("map"), "#define IDH_T1_10 10\r\n#define IDH_T1_20 20\r\n");
    EXPECT_EQ(streamed("alias"), "IDH_T1_10 = Intro.html\r\nIDH_T1_20 = Intro.html\r\n");
}

TEST_F(CompilerInputsTest, LeaveContextIdsAsTheyStand) {
    const auto topic = addTopic("Intro");
    topic->Key = "T1";
    topic->SetHelpContextIDs(" 10, 20");
    EXPECT_EQ(streamed("map"), "#define IDH_T1_ 10  10\r\n#define IDH_T1_ 20  20\r\n");
}

TEST_F(CompilerInputsTest, GiveNoLinesForBlankContextIds) {
    addTopic("Intro")->SetHelpContextIDs("   ");
    EXPECT_EQ(streamed("map"), "");
    EXPECT_EQ(streamed("alias"), "");
}

TEST_F(CompilerInputsTest, GiveNoContextIdsForHelp2) {
    addTopic("Intro")->SetHelpContextIDs("10");
    buildForHelp2();
    EXPECT_EQ(streamed("map"), "");
    EXPECT_EQ(streamed("alias"), "");
}

TEST_F(CompilerInputsTest, LeaveOutTopicsThatAreNotInTheHelpFile) {
    document->scraps["_INDEX_ENTRY"] = "%%itemtitle%%";
    const auto topic = addIndexed("Draft", {"Secret"});
    topic->SetHelpContextIDs("10");
    topic->SetIncludeInHelpFile(false);
    for (const auto* content : {"index", "map", "alias"}) EXPECT_EQ(streamed(content), "") << content;
}

TEST_F(CompilerInputsTest, SortIndexEntriesAndKeepEqualOnesInOrder) {
    document->scraps["_INDEX_ENTRY"] = "%%itemtitle%% -> %%itemqualifiedname%%";
    addIndexed("B", {"setup", "Editing"});
    addIndexed("A", {"Setup"});
    EXPECT_EQ(streamed("index"), "Editing -> B\r\nsetup -> B\r\nSetup -> A\r\n");
}

TEST_F(CompilerInputsTest, GiveATopicOneEntryForAllSpellingsOfAWord) {
    document->scraps["_INDEX_ENTRY"] = "%%itemtitle%%";
    addIndexed("A", {"Setup", "setup", "SETUP"});
    EXPECT_EQ(streamed("index"), "Setup\r\n");
}

TEST_F(CompilerInputsTest, GiveTheTitleNoSecondEntry) {
    document->scraps["_INDEX_ENTRY"] = "%%itemtitle%%";
    const auto topic = addTopic("Intro");
    topic->SetTitle("Introduction");
    topic->AddKeyword("INTRODUCTION");
    EXPECT_EQ(streamed("index"), "INTRODUCTION\r\n");
}

TEST_F(CompilerInputsTest, WrapAnEntryInItsLevels) {
    document->scraps["_INDEX_ENTRY"] = "<LI>%%itemtitle%%";
    addIndexed("A", {"Tools | Options"});
    EXPECT_EQ(
        streamed("index"),
        "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Tools\"><param name=\"See Also\" "
        "value=\"Tools\"></OBJECT><UL><UL><LI>Options</UL></UL>\r\n");
}

TEST_F(CompilerInputsTest, WrapThreeLevelsFromTheInside) {
    document->scraps["_MINE"] = "%%itemtitle%%";
    addIndexed("A", {"One|Two|Three"});
    EXPECT_EQ(streamed("index:_MINE"), "One<blockquote>Two<blockquote>Three</blockquote></blockquote>\r\n");
}

TEST_F(CompilerInputsTest, KeepTheLevelsOfHelp2InOneEntry) {
    document->scraps["_INDEX_ENTRY_V2"] = "<Keyword Term=\"%%itemtitle%%\"/>";
    // A tag in quotes needs the word of the scrap's author.
    document->scraps["_INDEX_ENTRY_V2"].insert(0, "%%ReplaceInQuotes:Value=True%%");
    addIndexed("A", {"Tools|Options"});
    buildForHelp2();
    EXPECT_EQ(streamed("index"), "<Keyword Term=\"Tools|Options\"/>\r\n");
}

TEST_F(CompilerInputsTest, UseAScrapOfOnesOwnForBothKindsOfHelp) {
    document->scraps["_MY_SCRAP"] = "* %%itemtitle%%";
    addIndexed("A", {"Tools|Options"});
    EXPECT_EQ(streamed("index:_MY_SCRAP"), "Tools<blockquote>* Options</blockquote>\r\n");
    buildForHelp2();
    EXPECT_EQ(streamed("index:_MY_SCRAP"), "* Tools|Options\r\n");
}

TEST_F(CompilerInputsTest, PutTheTextOfAMissingScrapIntoTheIndex) {
    addIndexed("A", {"One"});
    EXPECT_EQ(streamed("index:_GONE"), "!MISSING SCRAP '_GONE'!\r\n");
}

TEST_F(CompilerInputsTest, TakeTheContentsOfOtherTemplatesIn) {
    document->PageTemplates->Add(make<FakeTemplate>("Code", "", make<NamespaceDefs>()), "Code");
    EXPECT_EQ(streamed("EmbeddedTOC"), "[toc of Code: ||]");
    EXPECT_EQ(streamed("embeddedtoc"), "");
}

TEST_F(CompilerInputsTest, WriteNothingForOtherNames) {
    for (const auto* name : {"", ":", "unknown", "index2", "file"}) EXPECT_EQ(streamed(name), "") << name;
}

TEST_F(CompilerInputsTest, NeedAFile) {
    EXPECT_EQ(failureOf([&] { provider->StreamContent(nullptr, "files"); }),
              "There is no file to stream content to");
}

}  // namespace
}  // namespace quillbox
