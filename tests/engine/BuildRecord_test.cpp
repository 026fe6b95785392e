// What a build does about the files of earlier builds.

#include <filesystem>
#include <map>

#include "engine/BuildRecord.h"
#include "engine/EngineTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

class BuildRecordTest : public EngineTest {
  protected:
    void SetUp() override {
        PutPage("%%itemtitle%%");
        mGuide->AddPage("one", "One");
        mGuide->AddPage("two", "Two");
        Build();
    }

    GuideItem& page(std::size_t place) const { return *mGuide->children.at(place); }

    // Everything below a folder, folders with "/" at their ends.
    static std::map<std::string, std::string> contentOf(const std::string& folder) {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const auto name = entry.path().lexically_relative(folder).generic_string();
            if (entry.is_directory()) {
                files.emplace(name + "/", "");
            } else {
                files.emplace(name, readFile(entry.path()));
            }
        }
        return files;
    }
    std::map<std::string, std::string> CleanBuild() {
        const auto usual = mOutput;
        mOutput = mFolder.Path() + "clean/";
        fs::remove_all(mOutput);
        fs::create_directories(mOutput);
        Build();
        const auto files = contentOf(mOutput);
        mOutput = usual;
        return files;
    }
    // Builds the same guide through another template into the same folder.
    void BuildThroughAnother(const std::string& pageText) {
        writeFile(mTemplates + "Other/template.xml",
                  "<PageTemplate Name='Other'><Namespace Name='Test.Guide'/><Page File='page.html' "
                  "ItemType='test.guide:page'/></PageTemplate>");
        writeFile(mTemplates + "Other/page.html", pageText);
        Prepare(*mDocument);
        mDocument->TemplateName = "Other";
        mDocument->Build();
    }
};

TEST_F(BuildRecordTest, ABuildAfterChangesLeavesWhatACleanOneWrites) {
    Put("support/old/style.css", "old");
    mGuide->AddPage("deep/er/three", "Three");
    Build();
    EXPECT_TRUE(hasFile(mOutput + "deep/er/three.html"));
    fs::remove_all(mTemplates + "Plain/support/old");
    Put("support/style.css", "new");
    page(0).properties["title"] = "Edited";
    page(1).properties["name"] = "renamed";
    mGuide->children.pop_back();
    mGuide->AddPage("four", "Four");
    Build();
    EXPECT_EQ(Output("renamed.html"), "Two");
    const auto files = contentOf(mOutput);
    EXPECT_FALSE(files.contains("two.html") || files.contains("deep/") || files.contains("old/"));
    EXPECT_EQ(files, CleanBuild());
}

TEST_F(BuildRecordTest, CompilerInputsOfAnOldTitleGoToo) {
    PutTemplate("<Page File='in.hhp' CompileType='1' Output='%%helpfiletitle%%.hhp'/>");
    Put("in.hhp", "input");
    mDocument->CompileType = "1";
    Build();
    EXPECT_TRUE(hasFile(mOutput + "Guide.hhp"));
    mDocument->Title = "Manual";
    Build();
    EXPECT_FALSE(hasFile(mOutput + "Guide.hhp"));
    EXPECT_EQ(contentOf(mOutput), CleanBuild());
}

TEST_F(BuildRecordTest, APageThatIsGoneIsNoFileThatOthersReferTo) {
    page(0).properties["title"] = "<a href='two.html'>";
    mGuide->children.pop_back();
    mGuide->calls.clear();
    Build();
    EXPECT_THAT(mGuide->calls, testing::Not(testing::Contains("ContentCreated none two.html")));
}

TEST_F(BuildRecordTest, WhatNoBuildWroteStays) {
    writeFile(mOutput + "own.html", "written by hand");
    writeFile(mOutput + "two.html", "Two, improved by hand");
    mGuide->children.pop_back();
    Build();
    EXPECT_EQ(Output("own.html"), "written by hand");
    EXPECT_EQ(Output("two.html"), "Two, improved by hand");
}

TEST_F(BuildRecordTest, AFileThatTheProjectTookOverStays) {
    mGuide->children.pop_back();
    mDocument->KeptFiles->Add("TWO.html");
    Build();
    EXPECT_EQ(Output("two.html"), "Two");
}

TEST_F(BuildRecordTest, ALinkInThePlaceOfAPageStaysWithItsTarget) {
    fs::rename(mOutput + "two.html", mFolder.Path() + "two.html");
    fs::create_symlink(mFolder.Path() + "two.html", mOutput + "two.html");
    mGuide->children.pop_back();
    Build();
    EXPECT_TRUE(fs::is_symlink(mOutput + "two.html"));
    EXPECT_TRUE(hasFile(mFolder.Path() + "two.html"));
}

TEST_F(BuildRecordTest, ANameInAnotherCaseIsAnotherPage) {
    page(1).properties["name"] = "TWO";
    Build();
    EXPECT_EQ(contentOf(mOutput), CleanBuild());
    EXPECT_FALSE(hasFile(mOutput + "two.html"));
}

TEST_F(BuildRecordTest, EachTemplateKeepsItsOwnFiles) {
    page(1).properties["name"] = "deux";
    BuildThroughAnother("%%itemtitle%%");
    EXPECT_EQ(Output("two.html"), "Two");
    EXPECT_EQ(Output("deux.html"), "Two");
    // Both wrote one.html, and the other one still does.
    page(0).properties["name"] = "un";
    Build();
    EXPECT_FALSE(hasFile(mOutput + "two.html"));
    EXPECT_EQ(Output("one.html"), "One");
    BuildThroughAnother("%%itemtitle%%");
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
    EXPECT_TRUE(hasFile(mOutput + "un.html"));
}

TEST_F(BuildRecordTest, EachProjectKeepsItsOwnFiles) {
    const auto first = mGuide;
    mGuide = make<Guide>();
    mGuide->properties["qualifiedname"] = "/work/second.prj";
    mGuide->AddPage("three", "Three");
    Build();
    EXPECT_EQ(Output("one.html"), "One");
    mGuide = first;
    Build();
    EXPECT_EQ(Output("three.html"), "Three");
}

TEST_F(BuildRecordTest, ABuildThatEndsEarlyRemovesNothingAndForgetsNothing) {
    page(1).properties["name"] = "renamed";
    auto connection = mDocument->ContentCreated.connect([&](const std::string&) { mDocument->Cancel(); });
    Build();
    EXPECT_TRUE(hasFile(mOutput + "two.html"));
    connection.disconnect();
    mGuide->AddPage("three", "Three");
    connection = mDocument->ContentCreated.connect([](const std::string& name) {
        if (name == "three.html") throw AutomationError("no more");
    });
    EXPECT_EQ(BuildFailure(), "no more");
    EXPECT_TRUE(hasFile(mOutput + "two.html"));
    EXPECT_TRUE(hasFile(mOutput + "three.html"));
    connection.disconnect();
    mGuide->children.pop_back();
    Build();
    EXPECT_EQ(contentOf(mOutput), CleanBuild());
}

TEST_F(BuildRecordTest, NoRecordLeadsOutOfTheFolder) {
    const auto sum = contentSum("untouched");
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(sum));
    writeFile(mFolder.Path() + "victim.txt", "untouched");
    writeFile(mFolder.Path() + "outside/victim.txt", "untouched");
    fs::create_directory_symlink(mFolder.Path() + "outside", mOutput + "sub");
    auto record = Output(".quillbox-build");
    ASSERT_THAT(record, HasSubstr(" one.html\n"));
    for (const auto& name : {std::string("../victim.txt"), mFolder.Path() + "victim.txt",
                             std::string("sub/victim.txt"), std::string("sub/../../victim.txt")}) {
        record += digits + (" " + name + "\n");
    }
    writeFile(mOutput + ".quillbox-build", record);
    Build();
    EXPECT_EQ(readFile(mFolder.Path() + "victim.txt"), "untouched");
    EXPECT_EQ(readFile(mFolder.Path() + "outside/victim.txt"), "untouched");
}

TEST_F(BuildRecordTest, ARecordThatMakesNoSenseIsReplaced) {
    const auto good = Output(".quillbox-build");
    for (const auto* bad :
         {"", "\n\n", "[", "nonsense", "zzzzzzzzzzzzzzzz one.html", "[x]\n0123 y\n\xFF\xFE"}) {
        writeFile(mOutput + ".quillbox-build", bad);
        Build();
        EXPECT_EQ(Output(".quillbox-build"), good) << bad;
    }
}

TEST_F(BuildRecordTest, IsGoneWithTheLastFile) {
    PutTemplate("<Page File='page.html' ItemType='test.guide:page'/>");
    mGuide->children.clear();
    Build();
    EXPECT_TRUE(contentOf(mOutput).empty());
}

TEST_F(BuildRecordTest, FilesThatSomebodyRemovedAreNoMatter) {
    fs::remove(mOutput + "one.html");
    fs::remove(mOutput + "two.html");
    mGuide->children.pop_back();
    Build();
    EXPECT_EQ(contentOf(mOutput), CleanBuild());
}

}  // namespace
}  // namespace quillbox
