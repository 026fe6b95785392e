// The shipped template for booklets, over the handbook and the real engine.

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

#include "adapters/TemporaryFolder.h"
#include "build/BuildDriver.h"
#include "build/BuildResult.h"
#include "build/ItemFamily.h"
#include "support/Expected.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

// The library's own platform but for what would ask somebody or show the day.
class RealPlatform {
  public:
    RealPlatform() : mBefore(platform()) {
        platform() = makeDefaultPlatform();
        platform().messages = std::make_shared<ScriptedBoxes>();
        platform().system = std::make_shared<FixedSystem>();
        const auto settings = std::make_shared<MemorySettings>();
        settings->Write(Hive::LocalMachine, TestPlatform::kProductKey, "InstallDir",
                        std::string(QUILLBOX_SOURCE_DIR) + "/share/quillbox/");
        platform().settings = settings;
        resetModule();
    }
    ~RealPlatform() {
        platform() = mBefore;
        resetModule();
    }
    RealPlatform(const RealPlatform&) = delete;
    RealPlatform& operator=(const RealPlatform&) = delete;

  private:
    Platform mBefore;
};

class BookletTemplateTest : public testing::Test {
  protected:
    BookletTemplateTest() {
        const fs::path source = fs::path(QUILLBOX_SOURCE_DIR) / "examples/handbook";
        for (const auto* name : {"handbook.qbp", "handbook.h", "TopicData", "ProjectData", "css", "images"})
            fs::copy(source / name, mFolder.Path() + name, fs::copy_options::recursive);
        project->Filename->SetPath(mFolder.Path() + "handbook.qbp");
        project->LoadFromFile(mFolder.Path() + "handbook.qbp");
        manifest = project->Manifests()->Item(1);
    }
    // The page of the booklet, made the way that the printing of booklets makes it.
    std::string built() {
        manifest->BuildIncludeFlag = true;
        manifest->AssignEntryNumbers();
        const auto document = documentEngine().NewDocument();
        BuildDriver(project, {manifest->BookletProperties->Template(), "", false, false, true}).Run(document);
        return read(manifest->Name() + "_manifest.html");
    }
    std::string read(const std::string& name) const {
        const auto file = newFile(mFolder.Path() + name);
        file->Open(kReadWhole);
        const auto text = file->ReadAll();
        file->Close();
        return text;
    }
    static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t found = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
        return found;
    }

    RealPlatform mReal;
    TemporaryFolder mFolder;
    Ref<QbProject> project = make<QbProject>();
    Ref<Manifest> manifest;
};

// A few entries show all that the template does.
TEST_F(BookletTemplateTest, TheHandbookIsAsExpected) {
    const auto keep = [](const Ref<ManifestEntries>& entries, const std::set<std::string>& titles) {
        for (const auto& entry : entries->Items()) {
            if (!titles.contains(entry->RuntimeTitle())) entries->Remove(entry->Key);
        }
    };
    keep(manifest->Entries(), {"Welcome to Quillbox", "Writing", "Appendix: the licence"});
    keep(manifest->Entries()->Item(2)->ChildEntries, {"Languages and characters"});
    const std::regex version("Quillbox [0-9.]+");
    expectData("booklet/Handbook_manifest.html", std::regex_replace(built(), version, "Quillbox VERSION"));
}

TEST_F(BookletTemplateTest, WritesOnePageBesideItsSupportFiles) {
    built();
    std::vector<std::string> made;
    for (const auto& entry : fs::directory_iterator(mFolder.Path()))
        made.push_back(entry.path().filename().string());
    std::sort(made.begin(), made.end());
    EXPECT_EQ(made, (std::vector<std::string>{".quillbox-build", "Handbook_manifest.html", "PrintTemplates",
                                              "ProjectData", "TopicData", "booklet.css", "css", "handbook.h",
                                              "handbook.qbp", "images"}));
    EXPECT_THAT(read("PrintTemplates/Standard.html"), HasSubstr(".THeader"));
}

TEST_F(BookletTemplateTest, EveryEntryHasItsMarksItsTitleAndItsRow) {
    const auto page = built();
    EXPECT_THAT(page, Not(HasSubstr("%%")));
    EXPECT_THAT(page, Not(HasSubstr("!MISSING")));
    EXPECT_THAT(page, Not(HasSubstr("!ERROR")));
    EXPECT_THAT(page, Not(HasSubstr("!NO PROPERTY")));
    EXPECT_THAT(page, HasSubstr("<head>"));
    const auto entries = manifest->Entries()->AllEntries();
    ASSERT_GT(entries->Count(), 20);
    std::size_t last = 0;
    for (const auto& entry : entries->Items()) {
        const auto mark = [&](const char* end) {
            return "<div class=\"qbentrynumber\">~~" + entry->RuntimeEntryNumber() + end + "</div>";
        };
        const auto start = page.find(mark("~S"));
        const auto end = page.find(mark("~E"));
        ASSERT_NE(end, std::string::npos) << entry->RuntimeTitle();
        EXPECT_LT(last, start);
        EXPECT_LT(start, end);
        EXPECT_EQ(count(page, mark("~S")) + count(page, mark("~E")), 2U);
        EXPECT_THAT(page, HasSubstr("<span class=PageNumber>" + entry->Key + "</span>"));
        EXPECT_THAT(page.substr(start, end - start),
                    HasSubstr("<span class=\"number\">" + entry->RuntimeEntryNumber() + "</span> "));
        last = start;
    }
}

TEST_F(BookletTemplateTest, LinksLeadToEntriesOrBecomeText) {
    const auto page = built();
    EXPECT_THAT(page,
                HasSubstr("<a class=\"reference\" href=\"#topic-Installing\">Installing and building <span "
                          "class=\"see\">(&#8594;&#160;2.1)</span></a>"));
    EXPECT_THAT(page, HasSubstr("<h1 id=\"topic-Installing\">"));
    EXPECT_THAT(page, Not(HasSubstr(".html\">")));
    EXPECT_THAT(page, HasSubstr("<span class=\"term\">"));
}

TEST_F(BookletTemplateTest, PartsThatAreNotAskedForAreLeftOut) {
    auto& properties = *manifest->BookletProperties;
    properties.SetEntryNumbering(enNone);
    properties.SetGenerateTOC(false);
    properties.SetCoverpageTopicID("");
    properties.SetTitle("Pens & <Ink>");
    const auto page = built();
    EXPECT_THAT(page, Not(HasSubstr("class=\"contents\"")));
    EXPECT_THAT(page, Not(HasSubstr("class=\"number\"")));
    EXPECT_THAT(page, Not(HasSubstr("class=\"see\"")));
    EXPECT_THAT(page, HasSubstr("<title>Pens &amp; &lt;Ink&gt;</title>"));
    EXPECT_THAT(page, HasSubstr("<p class=\"title\">Pens &amp; &lt;Ink&gt;</p>"));
    EXPECT_THAT(page, HasSubstr("~~2.1~S"));
}

TEST_F(BookletTemplateTest, TheTitleGivesWayToAWholeCoverPageOnly) {
    const std::string title = "<p class=\"title\">Quillbox Handbook</p>";
    EXPECT_THAT(built(), Not(HasSubstr(title)));
    manifest->BookletProperties->SetRawCoverPage(false);
    const auto page = built();
    EXPECT_THAT(page, HasSubstr(title));
    EXPECT_LT(page.find(title), page.find("images/cover.png"));
}

TEST_F(BookletTemplateTest, PagesBreakBeforeChaptersAndWhereAnEntrySaysSo) {
    const std::string pageBreak = "<p style=\"page-break-after: always\">&nbsp;</p>";
    const auto page = built();
    // Six chapters and one entry that asks for it; none after a chapter that ends in an entry without a
    // topic.
    EXPECT_EQ(count(page, pageBreak), 8U);
    EXPECT_LT(page.find("class=\"contents\""), page.find(pageBreak));
    EXPECT_LT(page.find(pageBreak), page.find("~~1~S"));
}

}  // namespace
}  // namespace quillbox
