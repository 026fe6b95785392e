// The shipped template for HTML Help, compiled and read back. Needs the compiler chmcmd and the reader
// extract_chmLib; where they are not there the tests are skipped.

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <cstdlib>

#include "base/Text.h"
#include "engine/EngineTest.h"
#include "engine/Process.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

const std::string kTemplate = std::string(QUILLBOX_SOURCE_DIR) + "/share/quillbox/Templates";

class HtmlHelpTest : public EngineTest {
  protected:
    void SetUp() override {
        if (findProgram("chmcmd").empty() || findProgram("extract_chmLib").empty())
            GTEST_SKIP() << "no chmcmd";
        mEngine->Templates().RegisterFamily(helpFamily());
        mTemplates = kTemplate;
        mGuide->pageKind = "topic";
        mGuide->defaultPage = "intro.html";
    }

    void Compile(const std::string& language) {
        Prepare(*mDocument);
        mDocument->Objects = make<Collection>();
        mDocument->Objects->Add(Value(mGuide), "CM.Quillbox");
        mDocument->TemplateName = "HTML Help";
        mDocument->CompileType = "1";
        mDocument->Compile = true;
        mDocument->CompilerFileName = findProgram("chmcmd");
        mDocument->OutputFileName = mFolder.Path() + "Guide.chm";
        auto variable = make<VariableValue>();
        variable->Name = "Language";
        variable->Value = language;
        mDocument->VariableValues = make<VariableValues>();
        mDocument->VariableValues->Add(variable, "Language");
        mDocument->Build();
        mUnpacked = mFolder.Path() + "unpacked/";
        runProcess({"extract_chmLib", mDocument->OutputFileName, mUnpacked}, mFolder.Path(),
                   [] { return true; });
    }
    std::string Unpacked(const std::string& name) const { return readFile(mUnpacked + name); }

    std::string mUnpacked;
};

// As a viewer reads it: the code page first, then the character references.
std::string viewed(const std::string& bytes, const std::string& codePage) {
    const icu::UnicodeString wide(bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                  ("windows-" + codePage).c_str());
    std::string text, seen;
    wide.toUTF8String(text);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto end = text.compare(at, 2, "&#") == 0 ? text.find(';', at) : std::string::npos;
        if (end == std::string::npos) {
            seen += text[at];
            continue;
        }
        icu::UnicodeString(static_cast<UChar32>(std::stoi(text.substr(at + 2, end - at - 2))))
            .toUTF8String(seen);
        at = end;
    }
    return seen;
}

TEST_F(HtmlHelpTest, HasContentsIndexGlossaryAndDefaultPage) {
    auto intro = mGuide->AddPage("intro", "Say \"hello\" & <more>", "<p>Hello <img src=\"dot.png\"></p>");
    intro->properties["keywords"] = "greeting\nfirst \"word\"";
    intro->properties["id"] = "10";
    auto related = make<GuideItem>("linkcategory", std::map<std::string, std::string>{{"name", "See also"}});
    related->children.push_back(make<GuideItem>(
        "link",
        std::map<std::string, std::string>{{"qualifiedname", "next"}, {"linktitle", "The next & last"}}));
    intro->children.push_back(related);
    mGuide->AddPage("next", "Next", "<p>Bye</p>");
    auto letter = make<GuideItem>("glossaryletter",
                                  std::map<std::string, std::string>{{"name", "T"}, {"glossaryletter", "T"}});
    letter->children.push_back(make<GuideItem>(
        "glossaryitem", std::map<std::string, std::string>{{"glossaryitemterm", "topic"},
                                                           {"glossaryitemdefinition", "a page"}}));
    mGuide->children.push_back(letter);
    mGuide->contents = {
        {"Start & go", "intro.html"}, {"Deeper", "next.html", 2, 11}, {"Words", "Glossary.html"}};
    writeFile(mOutput + "dot.png", "png");
    Compile("en");
    ASSERT_THAT(mDocument->CompilerLog(), testing::Not(HasSubstr("Error:")));
    EXPECT_THAT(mDocument->CompilerLog(), testing::Not(HasSubstr("Warning:")));
    const auto page = Unpacked("intro.html");
    EXPECT_THAT(page, HasSubstr("<title>Say &quot;hello&quot; &amp; &lt;more&gt;</title>"));
    EXPECT_THAT(page, HasSubstr("<p>Hello <img src=\"dot.png\"></p>"));
    EXPECT_THAT(page, HasSubstr("<h2>See also</h2>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"next.html\">The next &amp; last</a></li>"));
    EXPECT_THAT(page,
                HasSubstr("<div class=\"branch\"><ul><li><a href=\"next.html\">Deeper</a></li></ul></div>"));
    EXPECT_THAT(page, HasSubstr("<a href=\"next.html\">Deeper&nbsp;&#187;</a>"));
    EXPECT_THAT(page, testing::Not(HasSubstr("%%")));
    EXPECT_THAT(Unpacked("next.html"),
                HasSubstr("<p class=\"trail\"><a href=\"intro.html\">Start &amp; go</a></p>"));
    EXPECT_THAT(Unpacked("Glossary.html"), HasSubstr("<dt><a name=\"topic\">topic</a></dt><dd>a page</dd>"));
    EXPECT_EQ(Unpacked("dot.png"), "png");
    EXPECT_THAT(Unpacked("help.css"), HasSubstr("font-family"));
    EXPECT_EQ(Unpacked("Guide.hhc"), readFile(mOutput + "Guide.hhc"));
    EXPECT_THAT(Unpacked("Guide.hhc"), HasSubstr("<param name=\"ImageNumber\" value=\"11\">"));
    EXPECT_THAT(
        Unpacked("Guide.hhk"),
        HasSubstr("<param name=\"Name\" value=\"first &quot;word&quot;\"><param name=\"Name\" value=\"Say "
                  "&quot;hello&quot; &amp; &lt;more&gt;\"><param name=\"Local\" value=\"intro.html\">"));
    EXPECT_THAT(Unpacked("#SYSTEM"), HasSubstr("intro.html"));
    EXPECT_TRUE(hasFile(mUnpacked + "#IVB"));
}

TEST_F(HtmlHelpTest, LeavesTheGlossaryOutWhereThereIsNone) {
    mGuide->AddPage("intro", "Intro");
    Compile("en");
    EXPECT_FALSE(hasFile(mUnpacked + "Glossary.html"));
}

struct LanguageCase {
    std::string tag, codePage, text;
    bool inCodePage;
};

class HelpLanguageTest : public HtmlHelpTest, public testing::WithParamInterface<LanguageCase> {};

TEST_P(HelpLanguageTest, TextSurvivesIntoContentsIndexTitleAndSearchList) {
    const auto& given = GetParam();
    auto intro = mGuide->AddPage("intro", given.text, "<p>" + given.text + "</p>");
    intro->properties["keywords"] = given.text;
    mGuide->contents = {{given.text, "intro.html"}};
    mDocument->Title = "Guide";
    Compile(given.tag);
    ASSERT_THAT(mDocument->CompilerLog(), testing::Not(HasSubstr("Error:")));
    const auto name = "value=\"" + given.text + "\"";
    EXPECT_THAT(viewed(Unpacked("Guide.hhc"), given.codePage), HasSubstr(name));
    EXPECT_THAT(viewed(Unpacked("Guide.hhk"), given.codePage), HasSubstr(name));
    const auto page = Unpacked("intro.html");
    EXPECT_THAT(viewed(page, given.codePage), HasSubstr("<title>" + given.text + "</title>"));
    const auto body = page.substr(page.find("<body"));
    EXPECT_TRUE(std::all_of(body.begin(), body.end(), [](unsigned char c) { return c < 0x80; }));
    EXPECT_THAT(viewed(body, given.codePage), HasSubstr("<p>" + given.text + "</p>"));
    EXPECT_THAT(viewed(Unpacked("#STRINGS"), given.codePage), HasSubstr(given.text));
    const bool hasNotes = mDocument->CompilerLog().find("is not in code page") != std::string::npos;
    EXPECT_EQ(hasNotes, !given.inCodePage);
}

INSTANTIATE_TEST_SUITE_P(Languages, HelpLanguageTest,
                         testing::Values(LanguageCase{"de", "1252", "Überblick für Größen", true},
                                         LanguageCase{"fr", "1252", "Présentation générale à l’œuvre", true},
                                         LanguageCase{"pl", "1250", "Zażółć gęślą jaźń", true},
                                         LanguageCase{"ru", "1251", "Общее описание", true},
                                         LanguageCase{"el", "1253", "Γενική περιγραφή", true},
                                         LanguageCase{"tr", "1254", "Genel bakış ve İçindekiler", true},
                                         LanguageCase{"he", "1255", "סקירה כללית", true},
                                         LanguageCase{"ar", "1256", "نظرة عامة", true},
                                         LanguageCase{"lt", "1257", "Bendra apžvalga ąčęėįšųūž", true},
                                         LanguageCase{"vi", "1258", "Tổng quan về chương trình", false},
                                         LanguageCase{"th", "874", "ภาพรวมทั่วไป", true},
                                         LanguageCase{"ja", "932", "概要と使い方", true},
                                         LanguageCase{"zh-CN", "936", "概述和使用方法", true},
                                         LanguageCase{"ko", "949", "개요 및 사용법", true},
                                         LanguageCase{"zh-TW", "950", "概述與使用方法", true},
                                         LanguageCase{"en", "1252", "English with Русский and 漢字", false}),
                         [](const auto& info) { return replaceAll(info.param.tag, "-", ""); });

}  // namespace
}  // namespace quillbox
