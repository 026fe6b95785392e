// Pages that are put on disk beside the build.

#include "engine/PageWork.h"

#include <filesystem>
#include <set>

#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::string pageName(int number) { return "page" + std::to_string(number) + ".html"; }

class PageWorkTest : public EngineTest {
  protected:
    // Nobody hears that its pages are written, so that they are written beside the build.
    PageWorkTest() { mDocument = mEngine->NewDocument(); }

    void Add(PageWork& work, const std::string& name, const std::string& html) {
        auto& page = work.Next();
        page.name = name;
        page.html = html;
        page.isSearched = true;
        work.Add();
    }
    void AddGuidePages(int count) {
        for (int number = 0; number < count; ++number)
            mGuide->AddPage("page" + std::to_string(number), "Page " + std::to_string(number));
    }
    int Written() const {
        int count = 0;
        while (hasFile(mOutput + pageName(count))) ++count;
        return count;
    }

    OutputFolder mTarget{mOutput, ""};
    EncodingNotes mNotes;
    LocalFiles mFiles;
    SearchIndex mIndex{"found"};
};

TEST_F(PageWorkTest, PutsAllPagesOnDiskInTheirOrder) {
    for (const int count : {0, 1, 63, 64, 65, 1000}) {
        OutputFolder target(mOutput, "");
        {
            PageWork work(target, mNotes, mFiles, nullptr);
            for (int number = 0; number < count; ++number)
                Add(work, pageName(number), "text " + std::to_string(number));
            work.Settle();
        }
        ASSERT_THAT(target.Written(), SizeIs(count));
        for (int number = 0; number < count; ++number) {
            EXPECT_EQ(target.Written()[static_cast<std::size_t>(number)].name, pageName(number));
            EXPECT_EQ(Output(pageName(number)), "text " + std::to_string(number));
        }
    }
}

TEST_F(PageWorkTest, SettledPagesAreOnDisk) {
    PageWork work(mTarget, mNotes, mFiles, nullptr);
    for (int number = 0; number < 200; ++number) {
        Add(work, pageName(number), "text");
        if (number % 70 != 0) continue;
        work.Settle();
        EXPECT_TRUE(hasFile(mOutput + pageName(number)));
        EXPECT_THAT(mTarget.Written(), SizeIs(number + 1));
    }
}

TEST_F(PageWorkTest, ReadsWhatPagesReferToAndTheirWords) {
    writeFile(mOutput + "first.png", "1");
    writeFile(mOutput + "last.png", "2");
    {
        PageWork work(mTarget, mNotes, mFiles, &mIndex);
        Add(work, "a.html", "<main><img src='first.png'>alpha</main>");
        for (int number = 0; number < 300; ++number) Add(work, pageName(number), "<main>middle</main>");
        Add(work, "z.html", "<main><img src='last.png'>omega</main>");
        work.Settle();
    }
    EXPECT_THAT(mFiles.Closure(mTarget), ElementsAre("first.png", "last.png"));
    const auto scripts = mIndex.Scripts();
    EXPECT_THAT(scripts.back().text, HasSubstr("\"pages\":302"));
    EXPECT_THAT(scripts.at(1).text, HasSubstr("[\"alpha\",2]"));
    EXPECT_THAT(scripts.at(1).text, HasSubstr("[\"omega\",3012]"));
}

TEST_F(PageWorkTest, PagesGoToTheDiskInTheirEncoding) {
    const auto german = languageOf("de");
    PageWork work(mTarget, mNotes, mFiles, nullptr);
    const auto add = [&](const std::string& name, PageEncoding encoding, std::vector<RawRange> raw = {}) {
        auto& page = work.Next();
        page.encoding = encoding;
        page.language = &german;
        page.raw = std::move(raw);
        Add(work, name, "café é");
    };
    add("a.html", PageEncoding::Ansi);
    add("b.html", PageEncoding::Utf8);
    add("c.html", PageEncoding::Ascii);
    add("d.html", PageEncoding::Ansi, {{5, 8}});
    work.Settle();
    // The place of the first page is used again.
    add("e.html", PageEncoding::Utf8);
    work.Settle();
    EXPECT_EQ(Output("a.html"), "caf\xE9 \xE9");
    EXPECT_EQ(Output("b.html"), "café é");
    EXPECT_EQ(Output("c.html"), "caf&#233; &#233;");
    EXPECT_EQ(Output("d.html"), "caf\xE9 é");
    EXPECT_EQ(Output("e.html"), "café é");
    EXPECT_THAT(mNotes.lines, SizeIs(0));
}

TEST_F(PageWorkTest, CharactersThatDoNotFitAreToldInTheOrderOfThePages) {
    const auto german = languageOf("de");
    {
        PageWork work(mTarget, mNotes, mFiles, nullptr);
        for (int number = 0; number < 200; ++number) {
            auto& page = work.Next();
            page.encoding = PageEncoding::Ansi;
            page.language = &german;
            Add(work, pageName(number), number == 0 ? "語" : number == 199 ? "语" : "語 again");
        }
    }
    ASSERT_THAT(mNotes.lines, SizeIs(2));
    EXPECT_THAT(mNotes.lines[0], HasSubstr("page0.html: U+8A9E is not in code page 1252"));
    EXPECT_THAT(mNotes.lines[1], HasSubstr("page199.html: U+8BED is not in code page 1252"));
}

TEST_F(PageWorkTest, LargePagesAreNotHeldTogether) {
    const std::string large(3 << 20, 'x');
    PageWork work(mTarget, mNotes, mFiles, nullptr);
    for (int number = 0; number < 5; ++number) Add(work, pageName(number), large);
    work.Settle();
    for (int number = 0; number < 5; ++number)
        EXPECT_EQ(std::filesystem::file_size(mOutput + pageName(number)), large.size());
}

TEST_F(PageWorkTest, AFailureComesOutAndNamesTheFile) {
    for (const int bad : {3, 100}) {
        std::filesystem::remove_all(mOutput);
        std::filesystem::create_directories(mOutput + pageName(bad));
        PageWork work(mTarget, mNotes, mFiles, nullptr);
        const auto failure = failureOf([&] {
            for (int number = 0; number < 500; ++number) Add(work, pageName(number), "text");
            work.Settle();
        });
        EXPECT_THAT(failure, HasSubstr(mOutput + pageName(bad)));
        EXPECT_FALSE(hasFile(mOutput + pageName(bad + 1)));
    }
}

TEST_F(PageWorkTest, WhatIsOnDiskIsNotedThoughAPageFails) {
    for (const int bad : {0, 63, 64, 200, 401, 499}) {
        std::filesystem::remove_all(mOutput);
        std::filesystem::create_directories(mOutput + pageName(bad));
        OutputFolder target(mOutput, "");
        failureOf([&] {
            PageWork work(target, mNotes, mFiles, &mIndex);
            for (int number = 0; number < 500; ++number) Add(work, pageName(number), "<main>word</main>");
            work.Settle();
        });
        std::set<std::string> noted, there;
        for (const auto& file : target.Written()) noted.insert(file.name);
        for (int number = 0; number < 500; ++number) {
            if (hasFile(mOutput + pageName(number)) && number != bad) there.insert(pageName(number));
        }
        EXPECT_EQ(noted, there);
        EXPECT_EQ(target.Written().size(), noted.size());
        for (int number = 0; number < bad; ++number) EXPECT_TRUE(there.contains(pageName(number)));
    }
}

TEST_F(PageWorkTest, WhatWasAddedIsWrittenThoughTheWorkIsLeft) {
    {
        PageWork work(mTarget, mNotes, mFiles, nullptr);
        for (int number = 0; number < 150; ++number) Add(work, pageName(number), "text");
    }
    EXPECT_EQ(Written(), 150);
}

TEST_F(PageWorkTest, ABuildThatNobodyHearsWritesTheSame) {
    PutPage("%%pagename%%: %%itemtitle%% é");
    AddGuidePages(200);
    Build();
    EXPECT_EQ(Written(), 200);
    EXPECT_EQ(Output(pageName(199)), "page199.html: Page 199 é");
    const auto record = Output(".quillbox-build");
    mDocument->ContentCreated.connect([&](const std::string& name) {
        mCreated.push_back(name);
        EXPECT_TRUE(hasFile(mOutput + name));
    });
    std::filesystem::remove_all(mOutput);
    Build();
    EXPECT_THAT(mCreated, SizeIs(200));
    EXPECT_EQ(Output(".quillbox-build"), record);
}

TEST_F(PageWorkTest, NamesAreToldOfPagesThatAreOnTheirWay) {
    PutPage("page");
    AddGuidePages(3);
    std::vector<std::string> made;
    mDocument->ContentMade.connect([&](const std::string& name) {
        made.push_back(name);
        EXPECT_FALSE(hasFile(mOutput + name));
    });
    Build();
    EXPECT_THAT(made, ElementsAre("page0.html", "page1.html", "page2.html"));
    EXPECT_EQ(Written(), 3);
}

TEST_F(PageWorkTest, PagesBeforeAFailingOneAreWrittenAndNoted) {
    PutPage("%%itemtitle%%%%fail:condition=Name is 'page130'%%");
    AddGuidePages(200);
    EXPECT_THAT(BuildFailure(), HasSubstr("writing page130.html: the tag failed"));
    EXPECT_EQ(Written(), 130);
    EXPECT_THAT(Output(".quillbox-build"), HasSubstr(" page129.html\n"));
}

TEST_F(PageWorkTest, PagesBeforeACancelAreWrittenAndNoted) {
    PutPage("page");
    AddGuidePages(200);
    mDocument->Progress.connect([&](const std::string&, int done, int) {
        if (done == 70) mDocument->Cancel();
    });
    Build();
    EXPECT_EQ(Written(), 70);
    EXPECT_THAT(Output(".quillbox-build"), HasSubstr(" page69.html\n"));
}

TEST_F(PageWorkTest, APageThatCannotBeWrittenEndsTheBuild) {
    PutPage("page");
    AddGuidePages(300);
    std::filesystem::create_directories(mOutput + pageName(10));
    EXPECT_THAT(BuildFailure(), HasSubstr(mOutput + pageName(10)));
    EXPECT_EQ(Written(), 10 + 1);
    EXPECT_THAT(Output(".quillbox-build"), HasSubstr(" page9.html\n"));
}

}  // namespace
}  // namespace quillbox
