#include <gmock/gmock.h>

#include "build/BuildTest.h"
#include "build/LateBoundDouble.h"
#include "topics/Keyword.h"

namespace quillbox {
namespace {

class ItemPropertiesTest : public ProviderTest {
  protected:
    std::string property(const std::string& name, const Ref<Object>& item,
                         const Ref<Object>& parent = nullptr) const {
        makeCurrent(item, parent);
        return data->GetProperty(name);
    }
    Ref<RelatedTopic> link(const Ref<Topic>& to, const std::string& title = "") const {
        const auto related = make<RelatedTopic>();
        related->SetParentTopic(project->Topics->Item(1));
        if (to) related->ChildTopicKey = to->Key;
        related->SetTitle(title);
        return related;
    }
    Ref<RelatedTopic> url(const std::string& address, const std::string& title) const {
        const auto related = link(nullptr, title);
        related->SetRelatedTopicType(rttURL);
        related->SetURL(address);
        return related;
    }
    static Ref<VariableValue> letter(const std::string& name, const std::string& count) {
        auto pair = make<VariableValue>();
        pair->Name = name;
        pair->Value = count;
        return pair;
    }
    Ref<LateBoundDouble> menuLink() const {
        auto item = make<LateBoundDouble>("MenuLink");
        item->values = {{"Name", "Home"}, {"Target", "index.html"}};
        return item;
    }
    Ref<Keyword> keyword() const {
        auto item = make<Keyword>();
        item->Name = "Options";
        item->QualifiedName = "Setup";
        return item;
    }
};

TEST_F(ItemPropertiesTest, TitlesGoByTheKindOfItem) {
    const auto topic = addTopic("Intro");
    const auto manifest = addManifest("Book");
    for (const auto* name : {"itemtitle", "Item_Title", "TITLE", "topictitle"}) {
        EXPECT_EQ(property(name, topic), "Intro title");
        EXPECT_EQ(property(name, manifest), "Book");
        EXPECT_EQ(property(name, keyword()), "Options");
        EXPECT_EQ(property(name, menuLink()), "Home");
        EXPECT_EQ(property(name, addEntry(manifest, topic, "")), "Intro title");
        EXPECT_EQ(property(name, addEntry(manifest, topic, "Own")), "Own");
        EXPECT_EQ(property(name, project), "Manual");
    }
}

TEST_F(ItemPropertiesTest, AnItemWithoutTheMemberFails) {
    EXPECT_EQ(failureOf([&] { property("title", letter("A", "1")); }),
              "'VariableValue' has no member 'Title'");
}

TEST_F(ItemPropertiesTest, NothingIsEmptyAndUnknownNamesGoOn) {
    data->SetCurrentItem(nullptr, nullptr, "", nullptr);
    for (const auto* name : {"title", "itemqualifiedname", "projecttitle", "crlf", "helpfiletitle",
                             "linktarget", "glossaryletter", "entrynumber", "booklettitle"}) {
        EXPECT_EQ(data->GetProperty(name), "") << name;
    }
    document->common->properties["pagename"] = "Intro";
    EXPECT_EQ(data->GetProperty("PageName"), "Intro");
    EXPECT_EQ(data->GetProperty("nonsense"), "!UNCRECOGNISED TAG 'nonsense'!");
}

TEST_F(ItemPropertiesTest, ProjectAndHelpFileHaveTheirTitles) {
    document->Title = "Help Title";
    const auto topic = addTopic("Intro");
    EXPECT_EQ(property("projecttitle", topic), "Manual");
    EXPECT_EQ(property("helpfiletitle", topic), "Help Title");
    EXPECT_EQ(property("projectgroupdescription", topic), "Help Title");
    EXPECT_EQ(property("crlf", topic), "\r\n");
}

TEST_F(ItemPropertiesTest, QualifiedNamesLeadToPages) {
    const auto topic = addTopic("Intro");
    EXPECT_EQ(property("itemqualifiedname", topic), "Intro");
    EXPECT_EQ(property("itemqualifiedname", addManifest("Book")), "Book_Manifest");
    EXPECT_EQ(property("itemqualifiedname", menuLink()), "index.html");
    EXPECT_EQ(property("linktarget", topic), "Intro.html");
    EXPECT_EQ(property("linktarget", keyword()), "Setup.html");
    EXPECT_EQ(property("linktarget", menuLink()), "index.html");
}

TEST_F(ItemPropertiesTest, SeeAlsoLinksHaveTargetsAndTitles) {
    const auto from = addTopic("From");
    const auto to = addTopic("To");
    EXPECT_EQ(property("linktarget", link(to)), "To.html");
    EXPECT_EQ(property("linktitle", link(to)), "To title");
    EXPECT_EQ(property("linktitle", link(to, "Own")), "Own");
    EXPECT_EQ(property("linktitle", link(to, "{Could not find it}")), "To title");
    EXPECT_EQ(property("linktarget", url("http://x", "X")), "http://x");
    EXPECT_EQ(property("linktitle", url("http://x", "")), "");
    EXPECT_EQ(property("linktitle", url("http://x", "{X}")), "{X}");
    EXPECT_EQ(property("linktitle", from), "");
}

TEST_F(ItemPropertiesTest, SeeAlsoLinksToNowhereSaySo) {
    addTopic("From");
    const auto broken = link(nullptr);
    broken->ChildTopicKey = "{gone}";
    EXPECT_EQ(property("linktarget", broken), "#");
    EXPECT_EQ(property("linktitle", broken), "{No Child Topic}");
    broken->ChildTopicKey = "Glossary.html";
    EXPECT_EQ(property("linktarget", broken), "Glossary.html");
    EXPECT_EQ(property("linktitle", broken), "Glossary");
}

TEST_F(ItemPropertiesTest, LettersLinkWhereThereIsSomething) {
    EXPECT_EQ(property("glossaryletter", letter("A", "0")), "A");
    EXPECT_EQ(property("glossaryletterlink", letter("A", "0")), "A");
    EXPECT_EQ(property("glossaryletterlink", letter("A", "2")), "<a href=\"#A\">A</a>");
}

TEST_F(ItemPropertiesTest, GlossaryTextsStandOnOneLine) {
    const auto item = addTerm("long\r\nterm", "first\r\nsecond\nthird");
    EXPECT_EQ(property("glossaryitemterm", item), "longterm");
    EXPECT_EQ(property("glossaryitemdefinition", item), "first second\nthird");
    EXPECT_EQ(expanded("%%glossaryitemterm%%: %%glossaryitemdefinition%%"), "longterm: first second\nthird");
}

TEST_F(ItemPropertiesTest, EntryNumbersShowWhereTheBookletNumbers) {
    const auto manifest = addManifest("Book");
    const auto topic = addTopic("Intro");
    const auto entry = addEntry(manifest, topic, "");
    manifest->AssignEntryNumbers();
    EXPECT_EQ(property("entrynumber", entry), "");
    manifest->BookletProperties->SetEntryNumbering(enTopicTitles);
    EXPECT_EQ(property("entrynumber", entry), "1");
    EXPECT_EQ(property("entrynumber", topic, manifest), "1");
    EXPECT_EQ(property("entrynumber", topic), "");
    EXPECT_EQ(property("entrynumber", manifest), "");
}

TEST_F(ItemPropertiesTest, ManifestTitlesAreThoseOfTheBookletAtWork) {
    const auto manifest = addManifest("Book");
    manifest->BookletProperties->SetTitle("The Book");
    const auto entry = addEntry(manifest, nullptr, "Part");
    EXPECT_EQ(property("manifesttitle", manifest), "The Book");
    EXPECT_EQ(property("manifesttitle", entry), "The Book");
    EXPECT_EQ(property("booklettitle", addTopic("Intro"), manifest), "The Book");
    EXPECT_EQ(property("manifesttitle", addTopic("Other")), "");
}

struct BreakCase {
    EntryPageBreakEnum entry;
    PageBreaksEnum booklet;
    bool isChild, expected;
};
class PageBreakTest : public ItemPropertiesTest, public testing::WithParamInterface<BreakCase> {};

constexpr const char* kBreak = "<p style=\"page-break-after: always\">&nbsp;</p>";

TEST_P(PageBreakTest, GoesByTheEntryAndTheBooklet) {
    const auto manifest = addManifest("Book");
    manifest->BookletProperties->SetPageBreaks(GetParam().booklet);
    const auto part = addEntry(manifest, addTopic("Part"), "");
    const auto chapter = addEntry(manifest, addTopic("Chapter"), "", part);
    const auto& entry = GetParam().isChild ? chapter : part;
    entry->SetPageBreakBefore(GetParam().entry);
    EXPECT_EQ(property("manifestentrypagebreakbefore", entry), GetParam().expected ? kBreak : "");
    EXPECT_EQ(property("bookletentrypagebreakbefore", entry), GetParam().expected ? kBreak : "");
    EXPECT_EQ(property("bookletentrypagebreakafter", entry), "");
}

INSTANTIATE_TEST_SUITE_P(Breaks, PageBreakTest,
                         testing::Values(BreakCase{epbNever, pbBeforeAllEntries, false, false},
                                         BreakCase{epbAlways, pbBeforeTopLevelEntries, true, true},
                                         BreakCase{epbDefault, pbBeforeAllEntries, true, true},
                                         BreakCase{epbDefault, pbBeforeTopLevelEntries, false, true},
                                         BreakCase{epbDefault, pbBeforeTopLevelEntries, true, false}));

TEST_F(ItemPropertiesTest, PageBreaksDoNotFollowEachOther) {
    const auto manifest = addManifest("Book");
    const auto topic = addTopic("Intro");
    const auto first = addEntry(manifest, topic, "First");
    const auto last = addEntry(manifest, topic, "Last", addEntry(manifest, topic, "Inner", first));
    const auto second = addEntry(manifest, topic, "Second");
    EXPECT_EQ(property("manifestentrypagebreakbefore", second), kBreak);
    last->RuntimePageBreak = true;
    EXPECT_EQ(property("manifestentrypagebreakbefore", second), "");
    last->RuntimePageBreak = false;
    last->SetTopic(nullptr);
    EXPECT_EQ(property("manifestentrypagebreakbefore", second), "");
}

TEST_F(ItemPropertiesTest, PageBreaksAreForEntriesAlone) {
    EXPECT_EQ(property("manifestentrypagebreakbefore", addTopic("Intro"), addManifest("Book")), "");
}

}  // namespace
}  // namespace quillbox
