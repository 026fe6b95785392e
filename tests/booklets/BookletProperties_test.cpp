#include "booklets/BookletProperties.h"

#include <limits>

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// The attributes that a file has to have, as older versions wrote them.
const std::vector<std::pair<std::string, std::string>> kRequired = {
    {"TemplateName", "Print"}, {"PageBreaks", "1"},     {"UnPrintableLeft", "1"},
    {"UnPrintableRight", "2"}, {"UnPrintableTop", "3"}, {"UnPrintableBottom", "4"},
    {"MarginLeft", "0.75"},    {"MarginRight", "6"},    {"MarginTop", "7"},
    {"MarginBottom", "8.5"},   {"PaperSize", "1"},      {"OutputFileName", "o.pdf"},
    {"CoverpageTopicID", "t"}};

class BookletPropertiesTest : public ProjectTest {
  protected:
    static std::string element(const std::string& left = "", const std::string& more = "") {
        std::string text = "<bookletproperties";
        for (const auto& [name, value] : kRequired) {
            if (name != left) text += " " + name + "='" + value + "'";
        }
        return text + more + "</bookletproperties>";
    }
    void load(const std::string& xml) const {
        const auto document = platform().xml->NewDocument();
        document->Parse(xml);
        properties->Load(document->RootElement());
    }
    std::string saved() const {
        const auto document = platform().xml->NewDocument();
        document->RootElement()->SetName("bookletproperties");
        properties->Save(document->RootElement());
        return document->ToXml();
    }

    Ref<Manifest> manifest = addManifest("Book");
    Ref<BookletProperties> properties = manifest->BookletProperties;
};

TEST_F(BookletPropertiesTest, NewPropertiesHaveBareDefaults) {
    const auto fresh = make<BookletProperties>();
    EXPECT_EQ(fresh->PaperSize(), psA4);
    EXPECT_EQ(fresh->PageBreaks(), pbBeforeTopLevelEntries);
    EXPECT_EQ(fresh->EntryNumbering(), enNone);
    EXPECT_EQ(fresh->MarginLeft(), 0);
    EXPECT_FALSE(fresh->GenerateTOC());
    EXPECT_FALSE(fresh->RawCoverPage());
    EXPECT_EQ(fresh->Template(), nullptr);
    EXPECT_EQ(fresh->CoverPageTopic(), nullptr);
}

TEST_F(BookletPropertiesTest, EveryWriteIsToldThroughTheManifest) {
    settle();
    EventLog log(project);
    int written = 0;
    for (const auto& member : TypeLibrary::Get().ClassOf(*properties).members) {
        if (member.kind != MemberKind::Property || member.name == "Manifest") continue;
        Arguments none;
        const auto value = readMember(*properties, member, none);
        writeMember(*properties, member, none, value);
        EXPECT_EQ(readMember(*properties, member, none), value);
        EXPECT_THAT(log.Take(), ElementsAre("ManifestChanged(Book)", "DirtyStateChanged")) << member.name;
        ++written;
    }
    EXPECT_EQ(written, 24);
}

TEST_F(BookletPropertiesTest, AWriteWithoutAManifestFailsAndALoadDoesNot) {
    const auto alone = make<BookletProperties>();
    EXPECT_EQ(failureOf([&] { alone->SetTitle("x"); }), "These booklet properties have no manifest");
    EXPECT_EQ(alone->Title(), "x");
    const auto document = platform().xml->NewDocument();
    document->Parse(element("", ">"));
    alone->Load(document->RootElement());
    EXPECT_EQ(alone->TemplateName(), "Print");
}

TEST_F(BookletPropertiesTest, AnOlderFileLoadsAndWhatItLacksStays) {
    properties->SetEntryNumbering(enTopicTitles);
    properties->SetTitle("kept");
    properties->SetGenerateTOC(true);
    properties->SetLinkPreProcessCodemark("scrap");
    properties->SetHeaderHTML("<h/>");
    load(element("", ">"));
    EXPECT_EQ(properties->EntryNumbering(), enTopicTitles);
    EXPECT_EQ(properties->Title(), "kept");
    EXPECT_TRUE(properties->GenerateTOC());
    EXPECT_EQ(properties->LinkPreProcessCodemark(), "scrap");
    EXPECT_EQ(properties->HeaderHTML(), "<h/>");
    EXPECT_EQ(properties->MarginLeft(), 0.75f);
    EXPECT_EQ(properties->UnPrintableBottom(), 4);
    EXPECT_EQ(properties->PaperSize(), psLetter);
    EXPECT_EQ(properties->PageBreaks(), pbBeforeAllEntries);
}

TEST_F(BookletPropertiesTest, EachRequiredAttributeIsNeeded) {
    for (const auto& [name, value] : kRequired) {
        const auto failure = failureOf([&, left = name] { load(element(left, ">")); });
        EXPECT_THAT(lower(failure), HasSubstr(lower("'" + name + "'")));
    }
    EventLog log(project);
    properties->SetTitle("still loading");
    EXPECT_EQ(log.Count("ManifestChanged"), 0);
}

TEST_F(BookletPropertiesTest, ALoadTellsNothing) {
    EventLog log(project);
    load(element(
        "",
        " Title='x' EntryNumbering='2' GenerateTOC='True' RawCoverPage='true' LinkPPURLNoCaption='{None}'>"
        "<HeaderHTML>h</HeaderHTML><FooterHTML>f</FooterHTML><headerhtml>not this</headerhtml>"));
    EXPECT_TRUE(log.Take().empty());
    EXPECT_EQ(properties->Title(), "x");
    EXPECT_EQ(properties->EntryNumbering(), enTopicTitlesAndHTMLHeadings);
    EXPECT_TRUE(properties->GenerateTOC());
    EXPECT_FALSE(properties->RawCoverPage());
    EXPECT_EQ(properties->LinkPreProcessURLNoCaption(), "{None}");
    EXPECT_EQ(properties->HeaderHTML(), "h");
    EXPECT_EQ(properties->FooterHTML(), "f");
}

TEST_F(BookletPropertiesTest, ANumberingThatIsNoNumberStays) {
    properties->SetEntryNumbering(enTopicTitles);
    load(element("", " EntryNumbering='x'>"));
    EXPECT_EQ(properties->EntryNumbering(), enTopicTitles);
}

TEST_F(BookletPropertiesTest, NumbersAreReadUpToTheFirstOtherCharacter) {
    const auto margin = [&](const std::string& text) {
        load(element("MarginLeft", " MarginLeft='" + text + "'>"));
        return properties->MarginLeft();
    };
    EXPECT_EQ(margin("12.5mm"), 12.5f);
    EXPECT_EQ(margin("0,75"), 0);
    EXPECT_EQ(margin(""), 0);
    EXPECT_EQ(margin("x1"), 0);
    EXPECT_EQ(margin("-3.5"), -3.5f);
    EXPECT_EQ(margin(".5"), 0.5f);
    EXPECT_EQ(margin("nan"), 0);
    EXPECT_EQ(margin("inf"), 0);
    EXPECT_EQ(margin("1e-400"), 0);
}

TEST_F(BookletPropertiesTest, ANumberThatDoesNotFitFails) {
    for (const auto& [name, value] : {std::pair{"PaperSize", "99999999999"},
                                      {"PageBreaks", "-99999999999"},
                                      {"MarginLeft", "1e39"},
                                      {"UnPrintableTop", "-1e400"}}) {
        EXPECT_THAT(failureOf([&, left = name, number = value] {
                        load(element(left, std::string(" ") + left + "='" + number + "'>"));
                    }),
                    HasSubstr("fit"));
    }
}

TEST_F(BookletPropertiesTest, ALengthThatIsNoNumberFailsAndLeavesTheOldOne) {
    properties->SetMarginTop(2.5f);
    settle();
    for (const double length : {1e39, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT(failureOf([&] { putMember(*properties, "MarginTop", length); }), HasSubstr("fit"));
    }
    EXPECT_EQ(properties->MarginTop(), 2.5f);
    EXPECT_FALSE(project->Dirty());
}

TEST_F(BookletPropertiesTest, WhatWasSavedLoadsAgain) {
    load(element("",
                 " Title='x &amp; y' LinkPPCodemark='a' LinkPPTopicInBooklet='b' LinkPPTopicNotInBooklet='c' "
                 "LinkPPURLWithCaption='d' LinkPPURLNoCaption='e'><FooterHTML> f\n</FooterHTML>"));
    properties->SetMarginTop(0.1f);
    const auto text = saved();
    EXPECT_THAT(text,
                HasSubstr(" MarginLeft=\"0.75\" MarginRight=\"6\" MarginTop=\"0.1\" MarginBottom=\"8.5\""));
    EXPECT_THAT(text, HasSubstr(" UnPrintableLeft=\"1\" UnPrintableRight=\"2\""));
    properties = make<BookletProperties>();
    load(text);
    EXPECT_EQ(saved(), text);
    EXPECT_EQ(properties->LinkPreProcessTopicNotInBooklet(), "c");
    EXPECT_EQ(properties->FooterHTML(), " f\n");
}

TEST_F(BookletPropertiesTest, TheTemplateIsTheInstalledOneOfThatName) {
    outside.engine->AddTemplate("Print", "p", {"CM.Quillbox"});
    properties->SetTemplateName("print");
    EXPECT_EQ(properties->Template(), outside.engine->templates->Item(1));
    properties->SetTemplateName("other");
    EXPECT_EQ(properties->Template(), nullptr);
    properties->SetTemplateName("");
    EXPECT_EQ(properties->Template(), nullptr);
}

TEST_F(BookletPropertiesTest, TheCoverPageIsTheTopicOfThatKey) {
    const auto topic = addTopic("Cover");
    EXPECT_EQ(properties->CoverPageTopic(), nullptr);
    properties->SetCoverpageTopicID(topic->Key);
    EXPECT_EQ(properties->CoverPageTopic(), topic);
    properties->SetCoverpageTopicID("gone");
    EXPECT_EQ(properties->CoverPageTopic(), nullptr);
}

}  // namespace
}  // namespace quillbox
