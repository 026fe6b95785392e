#include <filesystem>

#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TemplatesTest : public EngineTest {
  protected:
    Ref<PageTemplate> Plain() { return mEngine->Templates().PageTemplates()->Item("Plain"); }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const auto& one : mEngine->Templates().PageTemplates()->Items()) names.push_back(one->Name());
        return names;
    }
    void PutOther(const std::string& folder, const std::string& name, const std::string& attributes = "") {
        writeFile(mTemplates + folder + "/template.xml",
                  "<PageTemplate Name='" + name + "' " + attributes + "/>");
    }
};

TEST_F(TemplatesTest, TellWhatTheFolderSays) {
    Put("template.xml",
        "<PageTemplate Name='Plain' Supports='px'><Namespace Name='Test.Guide'/><Namespace Name='CM.Other'/>"
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='in.hhp' "
        "CompileType='1'/></PageTemplate>");
    Put("page.html", "x");
    Put("in.hhp", "x");
    const auto plain = Plain();
    EXPECT_EQ(plain->Path(), mTemplates + "Plain/");
    EXPECT_EQ(plain->Supports(), "px");
    EXPECT_THAT(plain->Namespaces()->Texts(), ElementsAre("Test.Guide", "CM.Other"));
    EXPECT_EQ(plain->Pages()->Count(), 2);
    const auto page = std::dynamic_pointer_cast<TemplatePage>(toObject(plain->Pages()->Item("page.html")));
    EXPECT_EQ(page->NamespaceItemType, "test.guide:page");
    EXPECT_EQ(plain->NamespaceDefs()->Count(), 4);
}

TEST_F(TemplatesTest, StandInTheirOrderThenByName) {
    EXPECT_THAT(Names(), IsEmpty());
    PutOther("a", "Zebra");
    PutOther("b", "Antelope");
    PutOther("c", "Last", "Order='5'");
    PutOther("d", "First", "Order='-1'");
    writeFile(mTemplates + "no template/readme.txt", "x");
    EXPECT_THAT(Names(), ElementsAre("First", "Antelope", "Zebra", "Last"));
}

TEST_F(TemplatesTest, AreReadAgainWhenTheirFilesChange) {
    PutPage("one");
    const auto first = Plain();
    EXPECT_EQ(Plain(), first);
    Put("scraps/_NEW.html", "x");
    const auto second = Plain();
    EXPECT_NE(second, first);
    PutOther("other", "Other");
    EXPECT_THAT(Names(), ElementsAre("Other", "Plain"));
    EXPECT_EQ(Plain(), second);
    std::filesystem::remove_all(mTemplates + "other");
    EXPECT_THAT(Names(), ElementsAre("Plain"));
}

TEST_F(TemplatesTest, ComeFromAddedFoldersToo) {
    PutOther("a", "Mine", "Supports='a'");
    const auto added = mFolder.Path() + "more";
    writeFile(added + "/x/template.xml", "<PageTemplate Name='mine' Supports='p'/>");
    writeFile(added + "/y/template.xml", "<PageTemplate Name='Added'/>");
    mEngine->Templates().AddFolder(added);
    EXPECT_THAT(Names(), ElementsAre("Added", "mine"));
    EXPECT_EQ(mEngine->Templates().PageTemplates()->Item("Mine")->Supports(), "p");
}

TEST_F(TemplatesTest, AFamilyIsKnownByItsName) {
    EXPECT_EQ(mEngine->Templates().Namespaces("TEST.guide")->Count(), 4);
    EXPECT_EQ(failureOf([&] { mEngine->Templates().Namespaces("other"); }),
              "There is no family of items 'other'");
    EXPECT_EQ(failureOf([&] { mDocument->NamespaceProvider("Other.Provider"); }),
              "No provider of items is registered as 'Other.Provider'");
}

struct Broken {
    std::string xml, problem;
};

TEST_F(TemplatesTest, ABrokenOneTellsFileLineAndWhatWasExpected) {
    const Broken table[] = {
        {"<Other/>", ", line 1: expected the root element PageTemplate, found Other"},
        {"<PageTemplate/>", ", line 1: expected the attribute Name of PageTemplate with a text in it"},
        {"<PageTemplate Name=' '/>",
         ", line 1: expected the attribute Name of PageTemplate with a text in it"},
        {"<PageTemplate Name='x' Order='a'/>", ", line 1: expected a whole number in Order, found 'a'"},
        {"<PageTemplate Name='x' Colour='a'/>",
         "found the attribute Colour, expected of PageTemplate: Name, Supports, Order"},
        {"<PageTemplate Name='x'>\n<Pages/></PageTemplate>",
         ", line 2: expected Namespace, Page or SearchIndex, found Pages"},
        {"<PageTemplate Name='x'>\n\n<Namespace/></PageTemplate>",
         ", line 3: expected the attribute Name of Namespace"},
        {"<PageTemplate Name='x'><Page/></PageTemplate>", "expected the attribute File of Page"},
        {"<PageTemplate Name='x'><Page File='no.html'/></PageTemplate>",
         "expected the page file 'no.html' in "},
        {"<PageTemplate Name='x'><Page File='../p.html'/></PageTemplate>", "found '../p.html'"},
        {"<PageTemplate Name='x'><Page File='p.html' CompileType='3'/></PageTemplate>",
         "expected 1 (HTML Help) or 2"},
        {"<PageTemplate Name='x'><Page File='p.html' Encoding='utf-16'/></PageTemplate>",
         "expected utf-8, ansi, ascii"},
        {"<PageTemplate Name='x'><Page File='p.html'/><Page File='P.HTML'/></PageTemplate>", "expected"},
        {"<PageTemplate Name='x'><Page File='p.html' CompileType='1' ItemType='a'/></PageTemplate>",
         "no ItemType"},
        {"<PageTemplate Name='x'><Page File='p.html' Output='%%a:b=1,b=2%%'/></PageTemplate>",
         "%%a:b=1,b=2%%"},
        {"<PageTemplate Name='x'>\n<Page", "template.xml"},
        {"", "template.xml"},
    };
    for (const auto& row : table) {
        std::filesystem::remove_all(mTemplates + "Broken");
        writeFile(mTemplates + "Broken/template.xml", row.xml);
        writeFile(mTemplates + "Broken/p.html", "x");
        const auto broken = mEngine->Templates().PageTemplates()->Item("Broken");
        const auto failure = failureOf([&] { broken->Pages(); });
        EXPECT_THAT(failure, testing::StartsWith(mTemplates + "Broken/template.xml")) << row.xml;
        EXPECT_THAT(failure, HasSubstr(row.problem)) << row.xml;
        EXPECT_EQ(failureOf([&] { broken->Supports(); }), failure);
    }
}

TEST_F(TemplatesTest, ABrokenOneStandsLastAndLeavesTheOthersAlone) {
    PutOther("aaa", "");
    PutPage("page");
    EXPECT_THAT(Names(), ElementsAre("Plain", "aaa"));
    mGuide->AddPage("one", "One");
    Build();
    EXPECT_EQ(Output("one.html"), "page");
    PutOther("aaa", "Repaired", "Order='-1'");
    EXPECT_THAT(Names(), ElementsAre("Repaired", "Plain"));
}

TEST_F(TemplatesTest, TwoOfOneNameInOneFolderAreTold) {
    PutPage("page");
    PutOther("copy of Plain", "plain");
    EXPECT_THAT(Names(), ElementsAre("Plain", "copy of Plain"));
    EXPECT_THAT(failureOf([&] { mEngine->Templates().PageTemplates()->Item("copy of Plain")->Pages(); }),
                HasSubstr("copy of Plain/template.xml: expected a Name of its own, found 'plain'"));
}

TEST_F(TemplatesTest, PagesAndScrapsAreUtf8) {
    PutPage("page");
    Put("scraps/_BAD.html", "one\ntwo \xFF\n");
    mGuide->AddPage("one", "One");
    EXPECT_EQ(BuildFailure(), mTemplates + "Plain/scraps/_BAD.html, line 2: expected text in UTF-8");
    EXPECT_FALSE(hasFile(mOutput + "one.html"));
    Put("scraps/_BAD.html", "\xEF\xBB\xBFmarked");
    Put("page.html", "\xEF\xBB\xBF%%scrap:name=_bad%%");
    Build();
    EXPECT_EQ(Output("one.html"), "marked");
    Put("page.html", "\xC3\x28");
    EXPECT_EQ(BuildFailure(), mTemplates + "Plain/page.html, line 1: expected text in UTF-8");
}

TEST_F(TemplatesTest, AScrapIsFoundInAnyCaseWithoutItsLastLineEnd) {
    PutPage("page");
    Put("scraps/_One.html", "one\n\n");
    Put("scraps/_two.HTML", "two\r\n");
    Prepare(*mDocument);
    EXPECT_EQ(mDocument->Scrap("_ONE"), "one\n");
    EXPECT_EQ(mDocument->Scrap("_Two"), "two");
    EXPECT_THAT(mDocument->Scrap("_THREE"), testing::StartsWith("!MISSING"));
    Put("scraps/_ONE.html", "again");
    Prepare(*mDocument);
    EXPECT_THAT(failureOf([&] { mDocument->Scrap("_ONE"); }), HasSubstr("expected each scrap once"));
}

TEST_F(TemplatesTest, APageOfAnUnknownItemTypeIsTold) {
    PutTemplate("<Page File='page.html' ItemType='test.guide:nothing'/>");
    Put("page.html", "page");
    EXPECT_EQ(BuildFailure(),
              mTemplates +
                  "Plain/template.xml, line 3: expected a known item type, found 'test.guide:nothing'; "
                  "known are: test.guide:guide, test.guide:page, test.guide:letter, test.guide:word");
}

TEST_F(TemplatesTest, APageMayDependOnItems) {
    PutTemplate("<Page File='letters.html' OnlyWith='test.guide:letter'/>");
    Put("letters.html", "page");
    Build();
    EXPECT_THAT(mCreated, IsEmpty());
    mGuide->children.push_back(make<GuideItem>("letter", std::map<std::string, std::string>{{"name", "A"}}));
    Build();
    EXPECT_THAT(mCreated, ElementsAre("letters.html"));
}

TEST_F(TemplatesTest, APageMayGiveWayToAnItem) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='start.html' Output='index.html' "
        "OnlyIfFree='True'/>");
    Put("page.html", "item");
    Put("start.html", "start");
    mGuide->AddPage("intro", "Intro");
    Build();
    EXPECT_THAT(mCreated, ElementsAre("intro.html", "index.html"));
    EXPECT_EQ(Output("index.html"), "start");
    mGuide->AddPage("Index", "Index");
    mCreated.clear();
    Build();
    EXPECT_THAT(mCreated, ElementsAre("intro.html", "Index.html"));
}

TEST_F(TemplatesTest, APageMayGiveWayToAFileOfTheProject) {
    PutTemplate("<Page File='start.html' Output='index.html' OnlyIfFree='True'/>");
    Put("start.html", "start");
    mDocument->KeptFiles->Add("index.html");
    Build();
    EXPECT_THAT(mCreated, IsEmpty());
}

TEST_F(TemplatesTest, AnUnknownTagAndAMissingScrapShowInThePage) {
    EXPECT_EQ(Rendered("%%nothing:like=this%% %%scrap:name=_GONE%%"),
              "%%nothing:like=this%% !MISSING SCRAP '_GONE'!");
}

TEST_F(TemplatesTest, AScrapThatContainsItselfIsTold) {
    Put("scraps/_A.html", "%%scrap:name=_B%%");
    Put("scraps/_B.html", "%%scrap:name=_A%%");
    PutPage("\n%%scrap:name=_A%%");
    mGuide->AddPage("one", "One");
    EXPECT_THAT(BuildFailure(),
                HasSubstr("page.html, line 2, writing one.html: Tags expand into tags more than 100"));
}

}  // namespace
}  // namespace quillbox
