#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

class CommonTagsTest : public EngineTest {
  protected:
    IDataProvider& Common() {
        if (!mCommon) mCommon = mDocument->NewCommonProvider(nullptr);
        return dynamic_cast<IDataProvider&>(*mCommon);
    }
    static Ref<Element> Tag(const std::string& type) {
        auto element = make<Element>();
        element->Attributes->Add(type, "type");
        return element;
    }
    Ref<Object> mCommon;
};

TEST_F(CommonTagsTest, TellOfTheBuildAndThePage) {
    mDocument->OutputFileName = "/somewhere/My Guide.chm";
    mDocument->CompileType = "1";
    mDocument->Help2Namespace = "Guide.2";
    mDocument->Help2FileID = "GuideId";
    mGuide->defaultPage = "intro.html";
    EXPECT_EQ(
        Rendered("%%date%%|%%time%%|%%date:format=dd.mm.yyyy%%|%%version%%|%%projectfile%%|%%pagename%%|"
                 "%%pagelayout%%|%%templatename%%|%%outputfilename%%|%%defaulttopic%%|%%compiletype%%|"
                 "%%help2namespace%%|%%help2fileid%%|%%rootpath%%"),
        "2026-03-09|14:05|09.03.2026|1.2.3|guide.prj|intro.html|page.html|Plain|My "
        "Guide.chm|intro.html|1|Guide.2|"
        "GuideId|");
}

TEST_F(CommonTagsTest, TellOfTheLanguage) {
    const std::string text =
        "%%language%% %%languageid%% %%languagenumber%% %%codepage%% %%charset%% %%languagename%%";
    EXPECT_EQ(Rendered(text), "en-US 0x0409 1033 1252 windows-1252 English (United States)");
    auto variable = make<VariableValue>();
    variable->Value = "ja";
    mDocument->VariableValues->Add(variable, "language");
    EXPECT_EQ(Rendered(text), "ja-JP 0x0411 1041 932 shift_jis Japanese (Japan)");
}

TEST_F(CommonTagsTest, TellTheDirectionOfTheWriting) {
    EXPECT_EQ(Rendered("%%direction%%"), "ltr");
    for (const auto* language : {"he", "ar-EG", "fa", "ur", "az-Arab"}) {
        auto variable = make<VariableValue>();
        variable->Value = language;
        mDocument->VariableValues = make<VariableValues>();
        mDocument->VariableValues->Add(variable, "Language");
        EXPECT_EQ(Rendered("%%direction%%"), "rtl") << language;
    }
}

TEST_F(CommonTagsTest, EscapeForScriptsAndAnchors) {
    mGuide->AddPage("intro", "</a> \\ \"b\" 'c'\n\u00e9")->properties["term"] = "C++ a-b.c_d 1\u00e9";
    EXPECT_EQ(Rendered("%%property:name=Title,escape=script%%"),
              R"(\u003c/a> \\ \"b\" \u0027c\u0027\u000aé)");
    EXPECT_EQ(Rendered("%%property:name=Term,escape=anchor%%"), "C.2b.2b-a.2db.2ec_d-1é");
}

TEST_F(CommonTagsTest, LinkToPagesWithSignsInTheirNames) {
    mGuide->AddPage("C#? 50%41", "C sharp");
    auto page = mGuide->AddPage("one", "One");
    page->properties["qualifiedname"] = "C#? 50%41";
    mGuide->contents = {{"C sharp", "C#? 50%41.html"}, {"One", "one.html"}};
    PutPage("%%targetlink%%|%%targetexists%%|%%previouspage%%|%%pagename:escape=link%%");
    Build();
    EXPECT_EQ(Output("one.html"), "C%23%3F 50%2541.html|True|C%23%3F 50%2541.html|one.html");
    page->properties["qualifiedname"] = "one.html#part?";
    Build();
    EXPECT_THAT(Output("one.html"), HasSubstr("one.html#part?.html|True|"));
}

TEST_F(CommonTagsTest, TheStartPageIsThereInAnyCase) {
    mGuide->AddPage("one", "One");
    mGuide->AddPage("two", "Two");
    mGuide->defaultPage = "two.html";
    PutPage("%%startpage%%");
    Build();
    EXPECT_EQ(Output("one.html"), "two.html");
    mGuide->defaultPage = "gone.html";
    Build();
    EXPECT_EQ(Output("one.html"), "one.html");
}

TEST_F(CommonTagsTest, TellWhetherALinkLeadsSomewhere) {
    const std::pair<const char*, const char*> cases[] = {{"two", "True"},      {"TWO", "True"},
                                                         {"three", ""},        {"file", "True"},
                                                         {"a%20file", "True"}, {"http://a.b/c", "True"}};
    writeFile(mOutput + "file.html", "file");
    writeFile(mOutput + "a file.html", "file");
    mGuide->AddPage("two", "Two");
    auto page = mGuide->AddPage("one", "One");
    PutPage("%%targetexists%%");
    for (const auto& [name, answer] : cases) {
        page->properties["qualifiedname"] = name;
        Build();
        EXPECT_EQ(Output("one.html"), answer) << name;
    }
}

TEST_F(CommonTagsTest, ReadTheCurrentItem) {
    mGuide->AddPage("intro", "A \"b\" & <c>")->properties["runtimenumber"] = "1.2";
    EXPECT_EQ(
        Rendered(
            "%%property:name=RuntimeNumber%%|%%property:name=Title%%|%%property:name=title,escape=html%%|"
            "%%htmltext:name=itemtitle%%|%%property:name=Nothing%%|%%htmltext:name=nothing%%"),
        "1.2|A \"b\" & <c>|A &quot;b&quot; &amp; &lt;c&gt;|A &quot;b&quot; &amp; &lt;c&gt;|!NO PROPERTY "
        "'Nothing'!|"
        "!NO PROPERTY 'nothing'!");
}

TEST_F(CommonTagsTest, WriteDatesOfTheItemAsAsked) {
    const auto page = mGuide->AddPage("intro", "Intro");
    page->properties["modifiedon"] = "2026-03-09 08:15:30";
    page->properties["never"] = "";
    EXPECT_EQ(Rendered("%%property:name=ModifiedOn%%|%%property:name=ModifiedOn,format=dd.mm.yyyy hh:nn%%|"
                       "%%property:name=Never,format=yyyy%%|%%property:name=Title,format=yyyy%%|"
                       "%%property:name=No,format=yyyy%%"),
              "2026-03-09 08:15:30|09.03.2026 08:15||!NO DATE 'Intro'!|!NO PROPERTY 'No'!");
}

TEST_F(CommonTagsTest, GiveAPageItsTitleOrItsName) {
    mGuide->AddPage("intro", "Salt & pepper");
    EXPECT_EQ(Rendered("<%%pagetitle%%>"), "<Salt &amp; pepper>");
    mGuide->children.front()->properties["title"] = "";
    EXPECT_EQ(Rendered("<%%pagetitle%%>"), "<intro>");
}

TEST_F(CommonTagsTest, GiveHtmlAsPlainText) {
    const auto plain = [&](const std::string& html) {
        mGuide->children.clear();
        mGuide->AddPage("intro", html);
        return Rendered("<%%plaintext:name=itemtitle%%>");
    };
    EXPECT_EQ(plain("<p>A <b>bold</b>\r\n  &amp; \"quoted\"<br/>text</p>\n<!-- no > -->"),
              "<A bold &amp; &quot;quoted&quot; text>");
    EXPECT_EQ(plain("a < b > c"), "<a &lt; b &gt; c>");
    EXPECT_EQ(plain("cut <b"), "<cut>");
    EXPECT_EQ(plain("<a title=\"x > y\">a link</a>"), "<a link>");
    EXPECT_EQ(plain(""), "<>");
    EXPECT_EQ(Rendered("%%plaintext:name=nothing%%"), "!NO PROPERTY 'nothing'!");
}

TEST_F(CommonTagsTest, LeaveOutOfMarkupWhatItCannotHold) {
    mGuide->AddPage("intro", "<a> & \"b\"\r\n\x01\x1F\tc");
    EXPECT_EQ(Rendered("%%htmltext:name=itemtitle%%"), "&lt;a&gt; &amp; &quot;b&quot; \tc");
}

TEST_F(CommonTagsTest, ATagWithNothingToSayDiscardsAndAForeignOneIsLeft) {
    Prepare(*mDocument);
    EXPECT_EQ(Common().ProvideData(Tag("Help2Namespace"), nullptr), "{Discard}");
    EXPECT_EQ(Common().ProvideData(Tag("nextpage"), nullptr), "{Discard}");
    EXPECT_EQ(Common().ProvideData(Tag("itemtitle"), nullptr), "");
    EXPECT_EQ(Common().GetProperty("help2namespace"), "");
    EXPECT_EQ(Common().GetProperty("VERSION"), "1.2.3");
    EXPECT_EQ(Common().GetProperty("itemtitle"), "!UNCRECOGNISED TAG 'itemtitle'!");
    EXPECT_EQ(Common().ParseForProperties("%%version%%|%%help2namespace%%|%%itemtitle%%"),
              "1.2.3||%%itemtitle%%");
}

TEST_F(CommonTagsTest, AProviderKeepsWhatItIsGivenAndGivesItToItsClone) {
    const auto page = mGuide->AddPage("one", "One");
    Common().SetCurrentItem(nullptr, page, "page", mGuide);
    Common().SetCurrentRootItem(mGuide);
    const auto clone = Common().Clone();
    const auto& copy = dynamic_cast<IDataProvider&>(*clone);
    EXPECT_EQ(copy.CurrentItem(), page);
    EXPECT_EQ(copy.CurrentItemType(), "page");
    EXPECT_EQ(copy.CurrentParentItem(), mGuide);
    EXPECT_EQ(copy.CurrentRootItem(), mGuide);
}

TEST_F(CommonTagsTest, StreamedContentNeedsAFile) {
    mGuide->streams["special"] = "<streamed>";
    EXPECT_EQ(Rendered("a%%streamcontent:name=special%%b"), "a<streamed>b");
    EXPECT_THAT(failureOf([&] { Common().ProvideData(Tag("streamcontent"), nullptr); }),
                HasSubstr("written to a file"));
}

TEST_F(CommonTagsTest, TheTitleOfATargetIsThatOfItsPage) {
    mGuide->AddPage("one", "First & foremost");
    auto link = mGuide->AddPage("two", "Two");
    link->properties["qualifiedname"] = "one";
    auto dead = mGuide->AddPage("three", "Three");
    dead->properties["qualifiedname"] = "nothing";
    PutPage("<%%targettitle%%>");
    Build();
    EXPECT_EQ(Output("two.html"), "<First &amp; foremost>");
    link->properties["qualifiedname"] = "three";
    dead->properties["title"] = "Written later";
    Build();
    EXPECT_EQ(Output("two.html"), "<Written later>");
    dead->properties["qualifiedname"] = "nothing";
    EXPECT_EQ(Output("three.html"), "<>");
}

TEST_F(CommonTagsTest, GoneWithTheirDocumentTheyFail) {
    auto document = mEngine->NewDocument();
    const auto common = document->NewCommonProvider(nullptr);
    document.reset();
    EXPECT_EQ(failureOf([&] { dynamic_cast<IDataProvider&>(*common).GetProperty("version"); }),
              "The document of these tags has gone");
}

TEST_F(CommonTagsTest, MembersAreIncludedUnlessAnExclusionNamesThem) {
    EXPECT_TRUE(mDocument->IsMemberIncluded("Any"));
    auto excluded = make<Collection>();
    excluded->Add("Hidden");
    mDocument->Objects->Add(Value(excluded), "NamespaceExclusions");
    EXPECT_FALSE(mDocument->IsMemberIncluded("hidden"));
    EXPECT_TRUE(mDocument->IsMemberIncluded("Any"));
}

}  // namespace
}  // namespace quillbox
