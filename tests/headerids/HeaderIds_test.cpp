#include "headerids/HeaderIds.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HeaderIdsTest : public ProjectTest {
  protected:
    static constexpr const char* kHeader = "/work/manual/ids.h";

    // "NAME=VALUE comment" of each identifier.
    std::vector<std::string> load(const std::string& text) {
        outside.files->Put(kHeader, text);
        ids->Load(kHeader);
        return found();
    }
    std::vector<std::string> found() const {
        std::vector<std::string> lines;
        for (const auto& id : ids->Items()) {
            lines.push_back(id->Name + "=" + std::to_string(id->Value) +
                            (id->Comment.empty() ? "" : " " + id->Comment));
        }
        return lines;
    }
    int valueOf(const std::string& text) {
        load("#define X " + text + "\n");
        return ids->Count() == 1 ? ids->Item(1)->Value : -999;
    }
    void addThree() {
        for (const auto* name : {"A", "B", "C"}) ids->Add(name);
    }

    Ref<HeaderIds> ids = make<HeaderIds>();
};

TEST_F(HeaderIdsTest, DefinitionsAreReadWithValuesAndComments) {
    EXPECT_THAT(load("#pragma once\r\n"
                     "#define IDH_TOPIC1 100 // Main window\r\n"
                     "#define IDH_TOPIC2 0x00C8\n"
                     "\n"
                     "  int x;\n"
                     "#define IDH_TOPIC3 0d300 /* Third */"),
                ElementsAre("IDH_TOPIC1=100 Main window", "IDH_TOPIC2=200", "IDH_TOPIC3=300 Third */"));
}

TEST_F(HeaderIdsTest, OtherSpellingsOfADefinitionAreSkipped) {
    EXPECT_THAT(
        load("#DEFINE X 1\n# define X 1\n#define\tX 1\n#defineX 1\n#undef X\n#define \n// #define X 1\n"),
        IsEmpty());
}

TEST_F(HeaderIdsTest, AnIndentedDefinitionIsCutWrongly) {
    EXPECT_THAT(load("  #define NAME 7\n"), ElementsAre("e=0"));
    EXPECT_THAT(load(" #define NAME 7\n"), ElementsAre("NAME=7"));
}

TEST_F(HeaderIdsTest, ANameMayRepeatAndTheFirstIsFound) {
    EXPECT_THAT(load("#define X 1\n#define x 2\n"), ElementsAre("X=1", "x=2"));
    EXPECT_EQ(ids->ItemIndex("x"), 1);
    EXPECT_EQ(ids->Item("X")->Value, 1);
}

TEST_F(HeaderIdsTest, ValuesAreReadInTheirForms) {
    EXPECT_EQ(valueOf("100"), 100);
    EXPECT_EQ(valueOf("-5"), -5);
    EXPECT_EQ(valueOf("0x10L"), 16);
    EXPECT_EQ(valueOf("0xFFFF"), -1);
    EXPECT_EQ(valueOf("0x8000"), -32768);
    EXPECT_EQ(valueOf("0x7FFF"), 32767);
    EXPECT_EQ(valueOf("0x10000"), 65536);
    EXPECT_EQ(valueOf("0x0FFFF"), 65535);
    EXPECT_EQ(valueOf("0x00008000"), 32768);
    EXPECT_EQ(valueOf("0xFFFFFFFF"), -1);
    EXPECT_EQ(valueOf("0x"), 0);
    EXPECT_EQ(valueOf("0xg"), 0);
    EXPECT_EQ(valueOf("0X1F"), 0);
    EXPECT_EQ(valueOf("0d300L"), 300);
    EXPECT_EQ(valueOf("0D300"), 0);
    EXPECT_EQ(valueOf("&H1F"), 31);
    EXPECT_EQ(valueOf("&h1f"), 31);
    EXPECT_EQ(valueOf("&O17"), 15);
    EXPECT_EQ(valueOf("(1000)"), 0);
    EXPECT_EQ(valueOf("IDH_BASE + 1"), 0);
    EXPECT_EQ(valueOf("10ABC"), 10);
    EXPECT_EQ(valueOf("1.6"), 2);
    EXPECT_EQ(valueOf("2147483647"), 2147483647);
    EXPECT_EQ(valueOf("1e-400"), 0);
    EXPECT_EQ(valueOf("nan"), 0);
    EXPECT_EQ(valueOf("infinity"), 0);
}

TEST_F(HeaderIdsTest, AValueThatDoesNotFitEndsTheLoadWithItsLine) {
    for (const auto& value :
         {std::string("2147483648"), std::string("-2147483649"), std::string("0d2147483648"),
          std::string("0x100000000"), std::string("&H100000000"), std::string("1e10"), std::string("1e400"),
          std::string(400, '9'), "0x" + std::string(20, 'F')}) {
        EXPECT_THAT(failureOf([&] { load("#define A 1\n#define B " + value + "\n"); }),
                    HasSubstr("ids.h:2: Overflow"))
            << value;
        EXPECT_THAT(found(), ElementsAre("A=1"));
    }
}

TEST_F(HeaderIdsTest, ASlashInTheValueBeginsTheComment) {
    EXPECT_THAT(load("#define X 1/2\n#define Y 3 // see a/b\n#define Z 4 /\n"),
                ElementsAre("X=1", "Y=3 see a/b", "Z=4"));
}

TEST_F(HeaderIdsTest, ADefinitionWithoutAValueEndsTheLoadAndKeepsThoseBefore) {
    for (const auto* line : {"#define NAME", "#define NAME\t1", "#define NAME// comment", "#define /x"}) {
        EXPECT_THAT(failureOf([&] { load("#define A 1\n" + std::string(line) + "\n#define B 2\n"); }),
                    HasSubstr("ids.h:2: Invalid argument"))
            << line;
        EXPECT_THAT(found(), ElementsAre("A=1"));
    }
}

TEST_F(HeaderIdsTest, AnEmptyFileGivesAnEmptyList) {
    EXPECT_THAT(load(""), IsEmpty());
    EXPECT_THAT(load("\n\n"), IsEmpty());
}

TEST_F(HeaderIdsTest, LinesEndAsOnAnySystemAndTheLastNeedsNoEnd) {
    EXPECT_THAT(load("#define A 1\r\n#define B 2\r#define C 3\n\n#define D 4"),
                ElementsAre("A=1", "B=2", "C=3", "D=4"));
}

TEST_F(HeaderIdsTest, AHeaderIsReadInItsEncoding) {
    using namespace std::string_literals;
    EXPECT_THAT(load("\xEF\xBB\xBF#define A 1 // \u00E4"), ElementsAre("A=1 \u00E4"));
    EXPECT_THAT(load("#define A 1 // \xE4"), ElementsAre("A=1 \u00E4"));
    std::string wide = "\xFF\xFE"s;
    for (const char c : "#define A 1\r\n#define B 2"s) wide += {c, '\0'};
    EXPECT_THAT(load(wide), ElementsAre("A=1", "B=2"));
    EXPECT_THAT(failureOf([&] { load("\xFF\xFE#"); }), HasSubstr("/work/manual/ids.h: "));
    EXPECT_THAT(found(), IsEmpty());
}

TEST_F(HeaderIdsTest, BytesThatAreNoTextAreLinesWithoutDefinitions) {
    using namespace std::string_literals;
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
    EXPECT_THAT(load("MZ\x90\0"s + bytes + bytes), IsEmpty());
    EXPECT_THAT(load(bytes + "\n#define A 1\n" + bytes), ElementsAre("A=1"));
    EXPECT_THAT(load("#define A\0B 1\0"s), ElementsAre("A\0B=1"s));
}

TEST_F(HeaderIdsTest, ALineMayBeAMegabyteLong) {
    const std::string much(1 << 20, 'x');
    EXPECT_THAT(
        load("// " + much + "\n#define A 1 // " + much + "\n#define " + much + " 2\n#define B 3" + much),
        ElementsAre("A=1 " + much, much + "=2", "B=3"));
    EXPECT_LT(failureOf([&] { load("#define A 1\n#define " + much); }).size(), 200u);
    EXPECT_THAT(found(), ElementsAre("A=1"));
}

TEST_F(HeaderIdsTest, ALoadBeginsWithAnEmptyList) {
    ids->Add("old");
    EXPECT_THAT(load("#define A 1"), ElementsAre("A=1"));
}

TEST_F(HeaderIdsTest, AFileThatCannotBeOpenedFailsAndIsNamed) {
    EXPECT_THAT(failureOf([&] { ids->Load("/work/manual/none.h"); }), HasSubstr("/work/manual/none.h"));
    EXPECT_THAT(failureOf([&] { ids->Load("/work/manual/"); }), HasSubstr("/work/manual"));
    EXPECT_NE(failureOf([&] { ids->Load(""); }), "no failure");
}

TEST_F(HeaderIdsTest, AnIndexIsAPositionOrAName) {
    addThree();
    EXPECT_EQ(ids->ItemIndex(2), 2);
    EXPECT_EQ(ids->ItemIndex("2"), 2);
    EXPECT_EQ(ids->ItemIndex("2nd"), 2);
    EXPECT_EQ(ids->ItemIndex("b"), 2);
    for (const Value& index : {Value(0), Value(4), Value(-1), Value("0"), Value("5"), Value("x"), Value(""),
                               Value::None(), Value(), Value(1e20), Value(Ref<Object>(project))}) {
        EXPECT_EQ(ids->ItemIndex(index), 0);
        EXPECT_FALSE(ids->ValidIndex(index));
        EXPECT_FALSE(ids->Exists(index));
        EXPECT_EQ(ids->Item(index), nullptr);
        ids->Remove(index);
    }
    EXPECT_EQ(ids->Count(), 3);
    EXPECT_TRUE(ids->Exists("c"));
}

TEST_F(HeaderIdsTest, ANameThatBeginsWithADigitCannotBeLookedUp) {
    ids->Add("10ABC");
    EXPECT_EQ(ids->ItemIndex("10ABC"), 0);
}

TEST_F(HeaderIdsTest, APositionAsTextPassesTheTestAndFailsAsAKey) {
    addThree();
    EXPECT_EQ(ids->Item(2)->Name, "B");
    EXPECT_NE(failureOf([&] { ids->Item("2"); }), "no failure");
    EXPECT_EQ(ids->Item("5"), nullptr);
}

TEST_F(HeaderIdsTest, AnAdditionGoesBeforeOrBehindAValidIndexOrToTheEnd) {
    addThree();
    const auto added = ids->Add("D", 7, "comment", "B");
    EXPECT_EQ(added->Value, 7);
    EXPECT_EQ(added->Comment, "comment");
    ids->Add("E", 0, "", "", "B");
    ids->Add("F", 0, "", "none", "none");
    ids->Add("G", 0, "", 1, 1);
    std::string order;
    for (const auto& id : ids->Items()) order += id->Name;
    EXPECT_EQ(order, "GADBECF");
    ids->Remove("d");
    ids->Remove(1);
    EXPECT_EQ(ids->Count(), 5);
    ids->Clear();
    EXPECT_EQ(ids->Count(), 0);
}

TEST_F(HeaderIdsTest, AScriptMayLeaveOutEveryArgumentOfAnAddition) {
    Arguments none;
    const auto added = toObject(callMember(*ids, "Add", none));
    EXPECT_EQ(getMember(*added, "Name"), Value(""));
    EXPECT_EQ(getMember(*added, "Value"), Value(0));
}

}  // namespace
}  // namespace quillbox
