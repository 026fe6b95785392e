// The names of output files, and what is on disk under them.

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

#include "engine/EngineTest.h"
#include "engine/OutputFolder.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

class NamesTest : public EngineTest {
  protected:
    void SetUp() override { PutPage("%%itemtitle%%"); }
};

TEST_F(NamesTest, NoNameLeavesTheOutputFolder) {
    for (const auto* name : {"../x", "..\\x", "a/../../x", "/etc/x", "\\x", "C:\\x", "c:x", "x/../y"}) {
        mGuide->children.clear();
        mGuide->AddPage(name, "Evil");
        const auto failure = BuildFailure();
        EXPECT_THAT(
            failure,
            HasSubstr("The page page.html of the template 'Plain' cannot be made for the GuideItem 'Evil': "))
            << name;
        EXPECT_THAT(failure, testing::AnyOf(HasSubstr("it leaves the output folder"),
                                            HasSubstr("it is an absolute path")))
            << name;
    }
    EXPECT_FALSE(hasFile(mFolder.Path() + "x.html"));
}

TEST_F(NamesTest, NoNameIsADeviceOrEmptyOrHoldsControlCharacters) {
    for (const auto* name :
         {"CON", "con", "aux .v2", "sub/NUL", "COM1", "lpt9", "COM\u00B2", "conin$", "PRN/x"}) {
        EXPECT_THAT(failureOf([&] { checkedOutputName(std::string(name) + ".html"); }),
                    HasSubstr("names a device"))
            << name;
    }
    for (const auto* name : {"", "  ", ".", "./", "a/", "a\nb", "a\x7F"}) {
        EXPECT_THAT(failureOf([&] { checkedOutputName(name); }),
                    HasSubstr("cannot be the name of an output file"))
            << name;
    }
    for (const auto* name :
         {"CONTENTS.html", "COM10.html", "Console.html", "a..b.html", "..a.html", ".hidden.html"}) {
        EXPECT_EQ(checkedOutputName(name), name);
    }
    EXPECT_EQ(checkedOutputName("a\\./b//c.html"), "a/b/c.html");
    mGuide->AddPage("", "Nameless");
    EXPECT_THAT(BuildFailure(), HasSubstr("for the GuideItem 'Nameless': it has no name"));
}

TEST_F(NamesTest, TwoPagesOfOneNameInAnyCaseAreTold) {
    mGuide->AddPage("Intro", "One");
    mGuide->AddPage("intro", "Two");
    EXPECT_EQ(BuildFailure(),
              "Two files of the build would have one name: 'intro.html' from page.html and 'Intro.html' "
              "from page.html");
}

TEST_F(NamesTest, AFileOfTheProjectIsNeverReplaced) {
    mGuide->AddPage("one", "One");
    mDocument->KeptFiles->Add("sub\\Own.html");
    mDocument->KeptFiles->Add("ONE.html");
    EXPECT_EQ(BuildFailure(),
              "The page page.html would replace the project's own file 'ONE.html' by 'one.html'");
    mDocument->KeptFiles = make<Collection>();
    mDocument->KeptFiles->Add("style.css");
    Put("support/style.css", "new");
    Put("support/a.css", "first");
    writeFile(mOutput + "style.css", "own");
    EXPECT_EQ(
        BuildFailure(),
        "A support file of the template would replace the project's own file 'style.css' by 'style.css'");
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
    EXPECT_FALSE(hasFile(mOutput + "a.css"));
    writeFile(mOutput + "style.css", "new");
    EXPECT_EQ(BuildFailure(), "no failure");
}

TEST_F(NamesTest, AnEqualFileIsNotWrittenAgain) {
    mGuide->AddPage("one", "First text");
    mGuide->AddPage("two", "Second text");
    Build();
    const auto old = std::filesystem::last_write_time(mOutput + "one.html") - std::chrono::hours(5);
    std::filesystem::last_write_time(mOutput + "one.html", old);
    std::filesystem::last_write_time(mOutput + "two.html", old);
    mGuide->children[1]->properties["title"] = "Other text";
    Build();
    EXPECT_EQ(std::filesystem::last_write_time(mOutput + "one.html"), old);
    EXPECT_GT(std::filesystem::last_write_time(mOutput + "two.html"), old);
    EXPECT_EQ(Output("two.html"), "Other text");
}

TEST_F(NamesTest, AChangedFileIsOverwrittenInItsPlace) {
    const auto page = mGuide->AddPage("one", std::string(100000, 'a'));
    Build();
    struct stat before {
    }, after{};
    stat((mOutput + "one.html").c_str(), &before);
    for (const auto& text : {std::string("short"), std::string(200000, 'b'),
                             std::string("x") + std::string(199999, 'b'), std::string()}) {
        page->properties["title"] = text;
        Build();
        EXPECT_EQ(Output("one.html"), text);
    }
    stat((mOutput + "one.html").c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(NamesTest, OutputThatCannotBeWrittenNamesTheFile) {
    mGuide->AddPage("one", "One");
    std::filesystem::create_directories(mOutput + "one.html");
    EXPECT_THAT(BuildFailure(), HasSubstr(mOutput + "one.html: cannot write"));
    std::filesystem::remove(mOutput + "one.html");
    mkfifo((mOutput + "one.html").c_str(), 0600);
    EXPECT_THAT(BuildFailure(), HasSubstr(mOutput + "one.html: cannot write"));
    std::filesystem::remove(mOutput + "one.html");
    mDocument->OutputRoot = mFolder.Path() + "a file/below";
    writeFile(mFolder.Path() + "a file", "x");
    EXPECT_THAT(BuildFailure(), HasSubstr(mFolder.Path() + "a file/below"));
    // Nobody makes a folder or a file there, whatever the rights.
    mDocument->OutputRoot = "/proc/quillbox";
    EXPECT_THAT(BuildFailure(), HasSubstr("/proc/quillbox/: cannot make the folder"));
    mDocument->OutputRoot = "/proc";
    EXPECT_THAT(BuildFailure(), HasSubstr("/proc/one.html: cannot write"));
}

// Makes every file end at a size, as a full disk does.
class SizeLimit {
  public:
    explicit SizeLimit(rlim_t bytes) {
        mHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &mOld);
        const rlimit limit{bytes, mOld.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() {
        setrlimit(RLIMIT_FSIZE, &mOld);
        std::signal(SIGXFSZ, mHandler);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;

  private:
    rlimit mOld{};
    void (*mHandler)(int);
};

TEST_F(NamesTest, OutputThatDoesNotFitLeavesNoHalfPage) {
    const auto page = mGuide->AddPage("one", std::string(1000, 'a'));
    Build();
    page->properties["title"] = std::string(500000, 'b');
    std::string failure, failureOfNew;
    {
        const SizeLimit limit(70000);
        failure = BuildFailure();
        page->properties["name"] = "two";
        failureOfNew = BuildFailure();
    }
    EXPECT_THAT(failure, HasSubstr(mOutput + "one.html: cannot write"));
    EXPECT_EQ(Output("one.html"), std::string(1000, 'a'));
    EXPECT_THAT(failureOfNew, HasSubstr(mOutput + "two.html: cannot write"));
    EXPECT_FALSE(hasFile(mOutput + "two.html"));
}

TEST_F(NamesTest, NotesOfABuildThatDoNotFitAreToldToo) {
    mGuide->AddPage("one", "One");
    std::string failure;
    {
        const SizeLimit limit(40);
        failure = BuildFailure();
    }
    EXPECT_THAT(failure, HasSubstr(mOutput + ".quillbox-build: cannot write"));
    EXPECT_FALSE(hasFile(mOutput + ".quillbox-build"));
    EXPECT_EQ(Output("one.html"), "One");
    Build();
    EXPECT_THAT(Output(".quillbox-build"), HasSubstr(" one.html\n"));
}

TEST_F(NamesTest, LinksDoNotLeadOutOfTheOutputFolder) {
    const auto outside = mFolder.Path() + "outside";
    writeFile(outside + "/file.txt", "untouched");
    mGuide->AddPage("one", "One");
    std::filesystem::create_symlink(outside + "/file.txt", mOutput + "one.html");
    EXPECT_THAT(BuildFailure(), HasSubstr(mOutput + "one.html: cannot write"));
    EXPECT_EQ(readFile(outside + "/file.txt"), "untouched");
    std::filesystem::remove(mOutput + "one.html");
    std::filesystem::create_directory_symlink(outside, mOutput + "sub");
    mGuide->children.clear();
    mGuide->AddPage("sub/deeper/one", "One");
    EXPECT_THAT(BuildFailure(), HasSubstr("lies outside the output folder"));
    EXPECT_FALSE(hasFile(outside + "/deeper"));
}

}  // namespace
}  // namespace quillbox
