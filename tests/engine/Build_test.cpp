// What a build calls, writes and reports, and in which order.

#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BuildTest : public EngineTest {};

TEST_F(BuildTest, CallsTheProviderInThePublishedOrder) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page' Filter='type=all'/><Page File='index.html'/>");
    Put("page.html", "%%itemtitle%%");
    Put("index.html", "start");
    Put("support/style.css", "body {}");
    mGuide->AddPage("one", "One");
    mGuide->AddPage("two", "Two");
    Build();
    EXPECT_THAT(
        mGuide->calls,
        ElementsAre("Initialise", "BeforeProcessRootItem", "GetItems test.guide:page of Guide type=all",
                    "ContentCreated none style.css", "BeforeProcessItem one", "ContentCreated one one.html",
                    "AfterProcessItem one", "BeforeProcessItem two", "ContentCreated two two.html",
                    "AfterProcessItem two", "BeforeProcessItem Guide", "ContentCreated Guide index.html",
                    "AfterProcessItem Guide", "AfterProcessRootItem"));
    EXPECT_THAT(mCreated, ElementsAre("one.html", "two.html", "index.html"));
    EXPECT_EQ(Output("one.html"), "One");
    EXPECT_EQ(Output("index.html"), "start");
    EXPECT_EQ(Output("style.css"), "body {}");
}

TEST_F(BuildTest, WritesAPageForEachItemBelowEachParent) {
    PutTemplate("<Page File='word.html' ItemType='test.guide:word'/>");
    Put("word.html", "%%itemtitle%%");
    for (const std::string letter : {"A", "B"}) {
        auto item = make<GuideItem>("letter", std::map<std::string, std::string>{{"name", letter}});
        item->children.push_back(make<GuideItem>(
            "word",
            std::map<std::string, std::string>{{"name", letter + "word"}, {"title", "word of " + letter}}));
        mGuide->children.push_back(item);
    }
    Build();
    EXPECT_THAT(mCreated, ElementsAre("Aword.html", "Bword.html"));
    EXPECT_EQ(Output("Bword.html"), "word of B");
}

TEST_F(BuildTest, AHandlerKeepsAPageFromBeingWritten) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='wide.html' "
        "ItemType='test.guide:page'/>");
    Put("page.html", "narrow");
    Put("wide.html", "wide");
    mGuide->AddPage("one", "One");
    mGuide->AddPage("two", "Two");
    mDocument->BeforeOutputNamespacePage.connect([](const Ref<TemplatePage>& page,
                                                    const Ref<NamespaceDef>& def, const Ref<Object>& item,
                                                    bool& dontGenerate) {
        EXPECT_EQ(def->Name, "test.guide:page");
        const bool wide = readGuideProperty(*item, "name") == "two";
        dontGenerate = page->Name != (wide ? "wide.html" : "page.html");
    });
    Build();
    EXPECT_THAT(mCreated, ElementsAre("one.html", "two.html"));
    EXPECT_EQ(Output("one.html"), "narrow");
    EXPECT_EQ(Output("two.html"), "wide");
}

TEST_F(BuildTest, NamesAPageByItsOutput) {
    PutTemplate("<Page File='page.html' ItemType='test.guide:page' Output='%%itemtitle%%_all.htm'/>");
    Put("page.html", "%%filename%% %%pagename%% %%pagelayout%%");
    mGuide->AddPage("one", "One");
    Build();
    EXPECT_THAT(mCreated, ElementsAre("One_all.htm"));
    EXPECT_EQ(Output("One_all.htm"), "One_all One_all.htm page.html");
}

TEST_F(BuildTest, PutsPagesIntoFoldersOfTheirNames) {
    PutPage("<link href=\"%%rootpath%%style.css\">");
    mGuide->AddPage("guides/first\\one", "One");
    Build();
    EXPECT_THAT(mCreated, ElementsAre("guides/first/one.html"));
    EXPECT_EQ(Output("guides/first/one.html"), "<link href=\"../../style.css\">");
}

TEST_F(BuildTest, WritesTheInputsOfItsCompileTypeLast) {
    PutTemplate(
        "<Page File='in.hhp' CompileType='1' Output='%%helpfiletitle%%.hhp'/>"
        "<Page File='in.hxc' CompileType='2' Output='%%helpfiletitle%%.hxc'/>"
        "<Page File='page.html' ItemType='test.guide:page'/>");
    Put("in.hhp", "[FILES]\n%%streamcontent:name=files%%\n");
    Put("in.hxc", "other");
    Put("page.html", "page");
    mGuide->AddPage("one", "One");
    mDocument->CompileType = "1";
    Build();
    EXPECT_THAT(mCreated, ElementsAre("one.html", "Guide.hhp"));
    EXPECT_EQ(Output("Guide.hhp"), "[FILES]\r\none.html\r\n");
    EXPECT_FALSE(hasFile(mOutput + "Guide.hxc"));
    EXPECT_EQ(mGuide->calls.back(), "StreamContent files");
}

TEST_F(BuildTest, ACompileTypeBeyondAllNumbersFails) {
    PutTemplate("<Page File='in.hhp' CompileType='1'/>");
    Put("in.hhp", "input");
    mDocument->CompileType = "1e300";
    EXPECT_NE(BuildFailure(), "no failure");
    EXPECT_FALSE(hasFile(mOutput + "in.hhp"));
}

TEST_F(BuildTest, ReportsLocalFilesThatPagesReferTo) {
    PutTemplate("<Page File='page.html' ItemType='test.guide:page'/>");
    Put("page.html",
        "<!-- <img src='no.png'> --><img src=\"a%20b.png\" alt='x > y'><a href='one.html#x'>1 < 2</a><a "
        "href=zip/f.zip>"
        "<img src='http://x/y.png'><img src='../out.png'><img src='gone.png'><div "
        "style=\"background:url('bg.png')\">");
    Put("support/style.css", "@import 'more.css'; h1 { background: url(img/h1.png) }");
    for (const auto* file :
         {"a b.png", "no.png", "zip/f.zip", "bg.png", "img/h1.png", "img/deep.png", "kept.png"}) {
        writeFile(mOutput + file, "x");
    }
    writeFile(mOutput + "more.css",
              "p { background: url( \"img/deep.png\" ) } b { background: url(kept.png) }");
    writeFile(mFolder.Path() + "out.png", "x");
    mDocument->KeptFiles->Add("KEPT.png");
    mGuide->AddPage("one", "One");
    Build();
    std::vector<std::string> reported;
    for (const auto& call : mGuide->calls) {
        if (call.starts_with("ContentCreated none ")) reported.push_back(call.substr(20));
    }
    EXPECT_THAT(reported, ElementsAre("style.css", "img/h1.png", "more.css", "a b.png", "zip/f.zip", "bg.png",
                                      "img/deep.png"));
    EXPECT_THAT(mCreated, ElementsAre("one.html"));
}

TEST_F(BuildTest, RedirectsWhatIsWrittenToTheOutputRoot) {
    PutPage("page");
    Put("support/style.css", "body {}");
    mGuide->AddPage("one", "One");
    mDocument->OutputRoot = mFolder.Path() + "site/deep";
    Build();
    EXPECT_EQ(readFile(mFolder.Path() + "site/deep/one.html"), "page");
    EXPECT_EQ(readFile(mFolder.Path() + "site/deep/style.css"), "body {}");
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
    EXPECT_THAT(mGuide->calls, testing::Contains("ContentCreated one one.html"));
}

TEST_F(BuildTest, TellsHowManyPagesAreWritten) {
    PutPage("page");
    for (const auto* name : {"one", "two", "three"}) mGuide->AddPage(name, name);
    mDocument->BeforeOutputNamespacePage.connect(
        [](const auto&, const auto&, const Ref<Object>& item, bool& dont) {
            dont = readGuideProperty(*item, "name") == "two";
        });
    std::vector<std::string> told;
    mDocument->Progress.connect([&](const std::string& caption, int done, int total) {
        told.push_back(caption + " " + std::to_string(done) + "/" + std::to_string(total));
    });
    Build();
    EXPECT_THAT(told, ElementsAre("Generating content: writing one.html 1/3",
                                  "Generating content: writing three.html 2/2"));
}

TEST_F(BuildTest, CountsAPageOnceWhateverLayoutsMayWriteIt) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='wide.html' "
        "ItemType='test.guide:page'/>");
    Put("page.html", "narrow");
    Put("wide.html", "wide");
    for (const auto* name : {"one", "two", "none"}) mGuide->AddPage(name, name);
    mDocument->BeforeOutputNamespacePage.connect(
        [](const Ref<TemplatePage>& page, const auto&, const Ref<Object>& item, bool& dont) {
            const auto name = readGuideProperty(*item, "name");
            dont = name == "none" || page->Name != (name == "two" ? "wide.html" : "page.html");
        });
    std::vector<std::string> told;
    mDocument->Progress.connect([&](const std::string&, int done, int total) {
        told.push_back(std::to_string(done) + "/" + std::to_string(total));
    });
    Build();
    EXPECT_THAT(told, ElementsAre("1/3", "2/3"));
    EXPECT_THAT(mCreated, ElementsAre("one.html", "two.html"));
}

TEST_F(BuildTest, CancelStopsAtTheNextPageAndTheNextBuildForgetsIt) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='in.hhp' CompileType='1' "
        "Output='Guide.hhp'/>");
    Put("page.html", "page");
    Put("in.hhp", "input");
    for (const auto* name : {"one", "two", "three"}) mGuide->AddPage(name, name);
    mDocument->CompileType = "1";
    auto connection = mDocument->ContentCreated.connect([&](const std::string& name) {
        if (name == "two.html") mDocument->Cancel();
    });
    Build();
    EXPECT_TRUE(mDocument->Cancelled());
    EXPECT_THAT(mCreated, ElementsAre("one.html", "two.html"));
    connection.disconnect();
    mCreated.clear();
    Build();
    EXPECT_FALSE(mDocument->Cancelled());
    EXPECT_THAT(mCreated, ElementsAre("one.html", "two.html", "three.html", "Guide.hhp"));
}

TEST_F(BuildTest, ASecondBuildStartsClean) {
    PutPage("%%itemtitle%% %%tableofcontents:BookPrefix=<ul>,BookSuffix=</ul>,NodeScrap=_n%%");
    Put("scraps/_n.html", "%%nodecaption%%");
    mGuide->AddPage("one", "One");
    mGuide->contents = {{"Old", "one.html"}};
    mGuide->defaultPage = "one.html";
    Build();
    EXPECT_EQ(Output("one.html"), "One <ul>\nOld\n</ul>\n");
    const auto provider = mDocument->NamespaceProvider("Test.GuideProvider");
    mGuide->contents = {{"New", "one.html"}};
    mGuide->defaultPage.clear();
    Build();
    EXPECT_EQ(Output("one.html"), "One <ul>\nNew\n</ul>\n");
    EXPECT_NE(mDocument->NamespaceProvider("Test.GuideProvider"), provider);
    EXPECT_EQ(mDocument->DefaultTopic, "");
    EXPECT_EQ(mDocument->CompilerLog(), "");
}

TEST_F(BuildTest, ABuildInsideABuildIsRefused) {
    PutPage("page");
    mGuide->AddPage("one", "One");
    std::string failure;
    mDocument->ContentCreated.connect(
        [&](const std::string&) { failure = failureOf([&] { mDocument->Build(); }); });
    Build();
    EXPECT_EQ(failure, "A build of this document is under way already");
}

TEST_F(BuildTest, AFailureTellsPageLineAndWhatWasWritten) {
    PutPage("line one\nline %%fail%% two");
    mGuide->AddPage("one", "One");
    EXPECT_EQ(BuildFailure(), mTemplates + "Plain/page.html, line 2, writing one.html: the tag failed");
    PutPage("well");
    Build();
    EXPECT_EQ(Output("one.html"), "well");
}

TEST_F(BuildTest, AnErrorInAHandlerEndsTheBuild) {
    PutPage("page");
    mGuide->AddPage("one", "One");
    auto connection =
        mDocument->ContentCreated.connect([](const std::string&) { throw AutomationError("no more"); });
    EXPECT_EQ(BuildFailure(), "no more");
    connection.disconnect();
    EXPECT_EQ(BuildFailure(), "no failure");
}

TEST_F(BuildTest, SettingsThatCannotWorkAreTold) {
    PutPage("page");
    mGuide->AddPage("one", "One");
    Prepare(*mDocument);
    mDocument->TemplateName = "Other";
    EXPECT_EQ(failureOf([&] { mDocument->Build(); }), "The document has no page template 'Other'");
    mDocument->TemplateName = "Plain";
    mDocument->OutputPath.clear();
    EXPECT_EQ(failureOf([&] { mDocument->Build(); }), "The document has no output path");
    mDocument->OutputPath = mOutput;
    mDocument->Objects = make<Collection>();
    EXPECT_EQ(failureOf([&] { mDocument->Build(); }), "The document's objects hold no 'Test.Guide'");
}

TEST_F(BuildTest, RendersALoadedPageForOneItem) {
    PutPage("page");
    Put("part.html", "<b title=\"%%itemtitle%%\">");
    auto page = mGuide->AddPage("one", "One");
    Prepare(*mDocument);
    auto loaded = mDocument->LoadPage(mTemplates + "Plain\\part.html");
    auto data = make<GuideData>();
    data->document.Set(mDocument);
    data->SetCurrentItem(nullptr, page, "page", nullptr);
    loaded->SetDataProvider(data);
    EXPECT_EQ(loaded->Render(), "<b title=\"One\">");
    EXPECT_THAT(failureOf([&] { mDocument->LoadPage(mTemplates + "Plain/none.html"); }),
                HasSubstr("Plain/none.html"));
}

TEST_F(BuildTest, CopiesSupportFilesOutsideABuild) {
    PutPage("page");
    Put("support/PrintTemplates/Standard.html", "frame");
    mDocument->OutputPath = mOutput;
    mDocument->CopyTemplateSupportFiles(mEngine->Templates().PageTemplates()->Item("Plain"));
    EXPECT_EQ(Output("PrintTemplates/Standard.html"), "frame");
}

}  // namespace
}  // namespace quillbox
