#include "base/Encoding.h"

#include <gtest/gtest.h>

#include "base/AutomationError.h"
#include "base/Utf8.h"

namespace quillbox {
namespace {

using namespace std::string_literals;

std::string failureOf(const std::string& bytes) {
    try {
        decodeText(bytes);
    } catch (const AutomationError& error) {
        return error.Description();
    }
    return "no failure";
}

TEST(Encoding, AMarkDecides) {
    EXPECT_EQ(decodeText("\xEF\xBB\xBF<?xml encoding='windows-1252'?>\xC3\xA4"),
              "<?xml encoding='windows-1252'?>\u00E4");
    EXPECT_EQ(decodeText("\xFF\xFE\xE4\0=\xD8\0\xDE"s), "\u00E4\U0001F600");
    EXPECT_EQ(decodeText("\xFE\xFF\0\xE4\xD8=\xDE\0"s), "\u00E4\U0001F600");
    EXPECT_EQ(decodeText("\xFF\xFE"s), "");
    EXPECT_EQ(decodeText("\xEF\xBB\xBF"s), "");
}

TEST(Encoding, ADeclarationDecidesWithoutAMark) {
    EXPECT_EQ(decodeText("<?xml version=\"1.0\" encoding = \"ISO-8859-5\" ?>\xD0"),
              "<?xml version=\"1.0\" encoding = \"ISO-8859-5\" ?>\u0430");
    EXPECT_EQ(decodeText("<?xml version='1.0' encoding='Shift_JIS'?>\x82\xA0"),
              "<?xml version='1.0' encoding='Shift_JIS'?>\u3042");
    EXPECT_EQ(decodeText("<\0?\0x\0m\0l\0"s), "<?xml");
    EXPECT_EQ(decodeText("\0<\0?\0x\0m\0l"s), "<?xml");
}

TEST(Encoding, ADeclarationOfWideUnitsInBytesCountsForNothing) {
    EXPECT_EQ(decodeText("<?xml encoding='UTF-16'?>\xC3\xA4"), "<?xml encoding='UTF-16'?>\u00E4");
    EXPECT_EQ(decodeText("<?xml encoding='utf-16le'?>\xE4"), "<?xml encoding='utf-16le'?>\u00E4");
}

TEST(Encoding, ValidUtf8IsTakenAsItStandsAndAllElseIsWindows1252) {
    EXPECT_EQ(decodeText("caf\xC3\xA9"), "caf\u00E9");
    EXPECT_EQ(decodeText("caf\xE9 \x80\x93"), "caf\u00E9 \u20AC\u201C");
    EXPECT_EQ(decodeText("a\0b"s), "a\0b"s);
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(findInvalidUtf8(decodeText(all)), std::string::npos);
    EXPECT_EQ(decodeText(""), "");
}

TEST(Encoding, LongTextsAreConvertedWhole) {
    std::string bytes;
    std::string text;
    for (int i = 0; i < 100000; ++i) bytes += "x\xE4\x80", text += "x\u00E4\u20AC";
    EXPECT_EQ(decodeText(bytes), text);
}

TEST(Encoding, WhatAMarkOrADeclarationBeliesFails) {
    EXPECT_EQ(failureOf("\xEF\xBB\xBF"s + "a\xE4"s), "The text is not valid UTF-8, at byte 2");
    EXPECT_EQ(failureOf("<?xml encoding='utf-8'?>\xE4"), "The text is not valid UTF-8, at byte 25");
    EXPECT_EQ(failureOf("\xFF\xFE\0\xD8"s), "The text is not valid UTF-16LE");
    EXPECT_EQ(failureOf("\xFF\xFE\xE4"s), "The text is not valid UTF-16LE");
    EXPECT_EQ(failureOf("<?xml encoding='no-such'?>"), "The encoding 'no-such' is not known");
    EXPECT_EQ(failureOf("<?xml encoding=''?>"), "The encoding '' is not known");
}

TEST(Utf8, FindsTheFirstByteThatIsNoCharacter) {
    const std::string plain(200, 'a');
    for (const std::string bad :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC3(", "\xE2\x82(",
          "\xF0\x9F\x98("}) {
        EXPECT_EQ(findInvalidUtf8(plain + bad), plain.size());
        EXPECT_EQ(findNonXml(bad + plain), 0u);
    }
    for (const std::string good : {"\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                                   "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\x7F", "\t\r\n"}) {
        for (std::size_t before = 0; before < 130; ++before) {
            EXPECT_EQ(findNonXml(plain.substr(0, before) + good + plain), std::string::npos);
        }
    }
}

TEST(Utf8, XmlHoldsNoControlCharactersAndNoNoncharactersOfTheFirstPlane) {
    EXPECT_EQ(findNonXml("ab\x1F"), 2u);
    EXPECT_EQ(findNonXml("a\0"s), 1u);
    EXPECT_EQ(findNonXml("a\xEF\xBF\xBE"), 1u);
    EXPECT_EQ(findNonXml("a\xEF\xBF\xBF"), 1u);
    EXPECT_EQ(findNonXml("\U0001FFFE"), std::string::npos);
    EXPECT_EQ(findInvalidUtf8("\x01\xEF\xBF\xBE"), std::string::npos);
}

}  // namespace
}  // namespace quillbox
