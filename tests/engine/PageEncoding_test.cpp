#include "engine/PageEncoding.h"

#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct Encoded {
    std::string bytes;
    std::vector<std::string> notes;
};

Encoded encoded(const std::string& text, PageEncoding encoding, const std::string& language = "en",
                const std::vector<RawRange>& raw = {}) {
    EncodingNotes notes;
    return {encode("a.html", text, encoding, languageOf(language), raw, notes), notes.lines};
}

TEST(PageEncodingTest, Utf8StaysAsItIs) { EXPECT_EQ(encoded("äж😀", PageEncoding::Utf8).bytes, "äж😀"); }

TEST(PageEncodingTest, AnsiHoldsWhatTheCodePageHolds) {
    const auto western = encoded("ü € ж ж я", PageEncoding::Ansi);
    EXPECT_EQ(western.bytes, "\xFC \x80 &#1078; &#1078; &#1103;");
    EXPECT_THAT(western.notes, ElementsAre("a.html: U+0436 is not in code page 1252 and stands as a "
                                           "character reference, first in: ü € ж ж я",
                                           "a.html: U+044F is not in code page 1252 and stands as a "
                                           "character reference, first in: ü € ж ж я"));
    EXPECT_EQ(encoded("ü ж", PageEncoding::Ansi, "ru").bytes, "&#252; \xE6");
    EXPECT_EQ(encoded("日本😀", PageEncoding::Ansi, "ja").bytes, "\x93\xFA\x96\x7B&#128512;");
}

TEST(PageEncodingTest, AsciiHasReferencesForTheRestAndTellsNothing) {
    const auto ascii = encoded("<title>ü</title>ж😀", PageEncoding::Ascii);
    EXPECT_EQ(ascii.bytes, "<title>&#252;</title>&#1078;&#128512;");
    EXPECT_TRUE(ascii.notes.empty());
}

TEST(PageEncodingTest, TheTitleMayBeInTheCodePage) {
    const auto page = encoded("ü<TITLE>ü ж</Title>ü", PageEncoding::AsciiButTitle);
    EXPECT_EQ(page.bytes, "&#252;<TITLE>\xFC &#1078;</Title>&#252;");
    EXPECT_EQ(page.notes.size(), 1u);
    EXPECT_EQ(encoded("ü<title>ü", PageEncoding::AsciiButTitle).bytes, "&#252;<title>&#252;");
}

TEST(PageEncodingTest, SomeBytesMayBeKept) {
    EXPECT_EQ(encoded("ü\nübersicht.html\nü", PageEncoding::Ansi, "en", {{3, 18}}).bytes,
              "\xFC\nübersicht.html\n\xFC");
}

TEST(PageEncodingTest, ANoteNeverReadsLikeAnErrorOfTheCompiler) {
    const auto notes = encoded("Error: ж", PageEncoding::Ansi).notes;
    EXPECT_THAT(notes,
                ElementsAre("a.html: U+0436 is not in code page 1252 and stands as a character reference"));
}

TEST(PageEncodingTest, ALanguageHasItsCodePage) {
    struct Row {
        const char *tag, *full, *id, *codePage;
    };
    const Row rows[] = {
        {"en", "en-US", "0x0409", "1252"},
        {"de-AT", "de-AT", "0x0c07", "1252"},
        {"pl", "pl-PL", "0x0415", "1250"},
        {"ru", "ru-RU", "0x0419", "1251"},
        {"el", "el-GR", "0x0408", "1253"},
        {"tr", "tr-TR", "0x041f", "1254"},
        {"he", "he-IL", "0x040d", "1255"},
        {"lt", "lt-LT", "0x0427", "1257"},
        {"vi", "vi-VN", "0x042a", "1258"},
        {"th", "th-TH", "0x041e", "874"},
        {"ja", "ja-JP", "0x0411", "932"},
        {"zh-CN", "zh-CN", "0x0804", "936"},
        {"ko", "ko-KR", "0x0412", "949"},
        {"zh_TW", "zh-TW", "0x0404", "950"},
        {"pt_BR.UTF-8", "pt-BR", "0x0416", "1252"},
        {"C.UTF-8", "en-US", "0x0409", "1252"},
        {"", "en-US", "0x0409", "1252"},
        {"rubbish", "en-US", "0x0409", "1252"},
    };
    for (const auto& row : rows) {
        const auto language = languageOf(row.tag);
        EXPECT_EQ(language.tag, row.full) << row.tag;
        EXPECT_EQ(language.id, row.id) << row.tag;
        EXPECT_EQ(language.codePage, row.codePage) << row.tag;
    }
}

class EncodedBuildTest : public EngineTest {};

TEST_F(EncodedBuildTest, TellsEachCharacterOnceInTheLog) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page' Encoding='ascii-but-title'/>"
        "<Page File='in.hhc' CompileType='1' Encoding='ansi'/>");
    Put("page.html", "<title>%%itemtitle%%</title>\n%%itemtitle%%");
    Put("in.hhc", "%%tableofcontents%%\nü");
    mGuide->AddPage("one", "жü");
    mGuide->AddPage("two", "жя");
    mGuide->contents = {{"ж", "one.html"}};
    mDocument->CompileType = "1";
    Build();
    EXPECT_EQ(Output("one.html"), "<title>&#1078;\xFC</title>\n&#1078;&#252;");
    EXPECT_THAT(Output("in.hhc"), HasSubstr("value=\"&#1078;\">\r\n"));
    EXPECT_THAT(Output("in.hhc"), testing::EndsWith("\r\n\xFC"));
    EXPECT_EQ(
        mDocument->CompilerLog(),
        "Note: one.html: U+0436 is not in code page 1252 and stands as a character reference, first in: "
        "<title>жü</title>\n"
        "Note: two.html: U+044F is not in code page 1252 and stands as a character reference, first in: "
        "<title>жя</title>\n");
}

TEST_F(EncodedBuildTest, NamesOfFilesKeepTheirBytesInAnInput) {
    PutTemplate(
        "<Page File='page.html' ItemType='test.guide:page'/><Page File='in.hhp' CompileType='1' "
        "Encoding='ansi'/>");
    Put("page.html", "x");
    Put("in.hhp", "ü\n%%streamcontent:name=files%%\nü");
    mGuide->AddPage("übersicht", "x");
    mDocument->CompileType = "1";
    Build();
    EXPECT_EQ(Output("in.hhp"), "\xFC\r\nübersicht.html\r\n\xFC");
}

}  // namespace
}  // namespace quillbox
