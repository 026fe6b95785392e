#include "engine/EngineTest.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

class ConditionsTest : public EngineTest {
  protected:
    void SetUp() override {
        mPage = mGuide->AddPage("intro", "It's here");
        mPage->properties["isdefault"] = "True";
        mPage->properties["count"] = "0";
        mPage->properties["body"] = "";
        auto variable = make<VariableValue>();
        variable->Name = "Edition";
        variable->Value = "Full";
        mDocument->VariableValues->Add(variable, "Edition");
        PutPage("page");
        Put("scraps/_IS_FULL.html", "variable 'Edition' is 'Full'\n");
        Prepare(*mDocument);
        mDef = mEngine->Templates().Namespaces("test.guide")->ByName("test.guide:page")->Item(1);
    }

    // "yes" and "no" for what the condition says, "invalid" for none, else the failure.
    std::string Answer(const std::string& text) {
        const auto condition = mDocument->NewCondition(text);
        if (!condition->IsValid()) return "invalid";
        std::string answer;
        const auto failure =
            failureOf([&] { answer = condition->Evaluate(mPage, mDef, mDocument, nullptr) ? "yes" : "no"; });
        return answer.empty() ? failure : answer;
    }

    Ref<GuideItem> mPage;
    Ref<NamespaceDef> mDef;
};

struct Row {
    const char* condition;
    const char* answer;
};

TEST_F(ConditionsTest, SayWhatTheLanguageSays) {
    const Row rows[] = {
        {"Name is 'intro'", "yes"},
        {"name is 'INTRO'", "yes"},
        {"Name isnot 'intro'", "no"},
        {"'intro' is Name", "yes"},
        {"Title is 'It''s here'", "yes"},
        {"Body is empty", "yes"},
        {"Body isnot empty", "no"},
        {"Title isnot empty", "yes"},
        {"'' is empty", "yes"},
        {"IsDefault", "yes"},
        {"Count", "no"},
        {"not Count", "yes"},
        {"not not Count", "no"},
        {"Body or IsDefault", "yes"},
        {"page 'intro.html'", "no"},
        {"page intro", "invalid"},
        {"Body or IsDefault and Count", "no"},
        {"(Body or IsDefault) and not Count", "yes"},
        {"IsDefault AND Name IS 'intro'", "yes"},
        {"itemtype is 'test.guide:page'", "yes"},
        {"itemtype is 'page'", "yes"},
        {"itemtype isnot 'guide'", "yes"},
        {"variable 'Edition' is 'full'", "yes"},
        {"variable 'Nothing' is empty", "yes"},
        {"@_IS_FULL", "yes"},
        {"itemtitle is 'It''s here'", "yes"},
        {"compiletype is empty", "yes"},
        {"language is 'en-US'", "yes"},
        // What decides ends the reading.
        {"IsDefault or NoSuchThing", "yes"},
        {"Count and NoSuchThing", "no"},
    };
    for (const auto& row : rows) EXPECT_EQ(Answer(row.condition), row.answer) << row.condition;
}

TEST_F(ConditionsTest, WhatMakesNoSenseIsNotValid) {
    for (const auto* text : {"", "   ", "is", "Name is", "Name is is", "Name 'x'", "and Name", "Name or",
                             "not", "(Name", "Name)", "()", "Name is 'open", "Name is not empty", "variable",
                             "variable Edition", "Name is 'a' 'b'", "@_NO_SUCH_SCRAP", "empty"}) {
        EXPECT_EQ(Answer(text), "invalid") << text;
    }
    EXPECT_EQ(Answer(std::string(5000, '(') + "Name" + std::string(5000, ')')), "invalid");
    EXPECT_EQ(Answer(std::string(50, '(') + "Name" + std::string(50, ')')), "yes");
}

TEST_F(ConditionsTest, AnUnknownPropertyIsTold) {
    EXPECT_EQ(Answer("NoSuchThing is empty"),
              "GuideItem has no property 'NoSuchThing', asked for in the condition 'NoSuchThing is empty'");
}

TEST_F(ConditionsTest, DecideOverTagsOfAPage) {
    EXPECT_EQ(
        Rendered(
            "%%literal:value=a,condition=IsDefault%%%%literal:value=b,condition=Count%%%%literal:value=c,"
            "condition=is%%"),
        "a!INVALID CONDITION TYPE!");
    PutPage("%%literal:value=x,condition=NoSuchThing%%");
    EXPECT_THAT(BuildFailure(),
                HasSubstr("page.html, line 1, writing intro.html: GuideItem has no property"));
}

TEST_F(ConditionsTest, FormatsComeFromAttributesOrScraps) {
    Put("scraps/_BOLD.html", "<b class=\"x\">%%itemtitle%%</b>");
    Put("scraps/_NONE.html", "a, b = c");
    EXPECT_EQ(Rendered("%%itemtitle:ValueFormat=@_BOLD%% %%variable:name=No,EmptyFormat=@_NONE%% "
                       "%%variable:name=No,EmptyFormat=none%%"),
              "<b class=\"x\">It's here</b> a, b = c none");
}

}  // namespace
}  // namespace quillbox
