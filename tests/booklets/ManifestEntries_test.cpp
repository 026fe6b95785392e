#include "booklets/ManifestEntries.h"

#include "booklets/ManifestEntry.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ManifestEntriesTest : public ProjectTest {
  protected:
    // 1 A with 1.1 B and 1.2 C, B with 1.1.1 D, then 2 E.
    ManifestEntriesTest() {
        a = addEntry(manifest, nullptr, "A");
        b = addEntry(manifest, topic, "B", a);
        d = addEntry(manifest, nullptr, "D", b);
        c = addEntry(manifest, nullptr, "C", a);
        e = addEntry(manifest, topic, "E");
        settle();
        log.Take();
        own.Take();
    }
    static std::vector<std::string> titles(const Ref<ManifestEntries>& entries) {
        std::vector<std::string> texts;
        for (const auto& entry : entries->Items()) texts.push_back(entry->Title());
        return texts;
    }

    Ref<Topic> topic = addTopic("Intro");
    Ref<Manifest> manifest = addManifest("Book");
    Ref<ManifestEntry> a, b, c, d, e;
    EventLog log{project};
    EventLog own{manifest};
};

const std::vector<std::string> kEntryChange = {"ManifestEntryChanged(Book, A)", "DirtyStateChanged",
                                               "DirtyStateChanged"};

TEST_F(ManifestEntriesTest, TheWalkGivesParentsBeforeChildren) {
    EXPECT_THAT(titles(manifest->Entries()->AllEntries()), ElementsAre("A", "B", "D", "C", "E"));
    EXPECT_EQ(manifest->Entries()->AllEntries()->Parent(), nullptr);
    auto col = make<ManifestEntries>();
    col->Add(make<ManifestEntry>());
    EXPECT_EQ(manifest->Entries()->AllEntries(col), col);
    EXPECT_EQ(col->Count(), 6);
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(ManifestEntriesTest, AllEntriesIsAPropertyWithAnOptionalArgument) {
    EXPECT_EQ(getMember(*toObject(getMember(*manifest->Entries(), "AllEntries")), "Count"), Value(5));
}

TEST_F(ManifestEntriesTest, ItemSearchesBelowAndRemoveDoesNot) {
    EXPECT_EQ(manifest->Entries()->Item(d->Key), d);
    EXPECT_EQ(manifest->Entries()->Item("none"), nullptr);
    EXPECT_EQ(manifest->Entries()->Item(3), nullptr);
    const auto third = addEntry(manifest, nullptr, "F", a);
    EXPECT_EQ(manifest->Entries()->Item(3), third);
    EXPECT_NE(failureOf([&] { manifest->Entries()->Remove(d->Key); }), "no failure");
}

TEST_F(ManifestEntriesTest, AnAdditionAtTheTopIsToldAndMarks) {
    const auto entry = manifest->NewManifestEntry(nullptr, "F");
    settle();
    log.Take();
    own.Take();
    manifest->Entries()->Add(entry, entry->Key);
    EXPECT_THAT(own.Take(), ElementsAre("ManifestEntryAdded(F)"));
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    EXPECT_TRUE(project->Manifests()->Dirty());
}

TEST_F(ManifestEntriesTest, AnAdditionBelowAnEntryTellsNobody) {
    const auto entry = manifest->NewManifestEntry(nullptr, "F");
    settle();
    log.Take();
    own.Take();
    a->ChildEntries->Add(entry, entry->Key);
    EXPECT_THAT(own.Take(), IsEmpty());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(project->Dirty());
}

TEST_F(ManifestEntriesTest, AFailureOfAHandlerOfAnAdditionIsPassedOver) {
    manifest->ManifestEntryAdded.connect([](const Ref<ManifestEntry>&) { throw AutomationError("not now"); });
    manifest->Entries()->Add(make<ManifestEntry>());
    EXPECT_EQ(manifest->Entries()->Count(), 3);
}

TEST_F(ManifestEntriesTest, ARemovalAtAnyLevelIsToldAndMarks) {
    a->ChildEntries->Remove(b->Key);
    EXPECT_THAT(own.Take(), ElementsAre("ManifestEntryRemoved(B)"));
    EXPECT_THAT(log.Take(), ElementsAre("DirtyStateChanged"));
    settle();
    manifest->Entries()->Remove(1);
    EXPECT_THAT(own.Take(), ElementsAre("ManifestEntryRemoved(A)"));
    EXPECT_TRUE(project->Manifests()->Dirty());
}

TEST_F(ManifestEntriesTest, ARemovalWhereNoManifestHearsOfItFailsWhenTheEntryIsGone) {
    const auto all = manifest->Entries()->AllEntries();
    EXPECT_EQ(failureOf([&] { all->Remove(1); }), "These manifest entries have no manifest");
    EXPECT_EQ(all->Count(), 4);
}

TEST_F(ManifestEntriesTest, EachSetterTellsManifestAndProjectAndMarksTwice) {
    for (const auto& [property, value] : std::vector<std::pair<const char*, Value>>{{"PageBreakAfter", 1},
                                                                                    {"PageBreakBefore", 2},
                                                                                    {"ParentEntry", b},
                                                                                    {"Title", "A"},
                                                                                    {"Topic", topic}}) {
        settle();
        log.Take();
        putMember(*a, property, value);
        EXPECT_EQ(getMember(*a, property), value);
        EXPECT_THAT(own.Take(), ElementsAre("ManifestEntryChanged(A)")) << property;
        EXPECT_EQ(log.Take(), kEntryChange) << property;
        EXPECT_FALSE(project->ProjectDirty());
    }
}

TEST_F(ManifestEntriesTest, KeyAndRunTimeMembersTellNobody) {
    a->Key = "k";
    a->SetRuntimeEntryNumber("7");
    a->SetRuntimePageNumberStart(1);
    a->SetRuntimePageNumberEnd(2);
    a->RuntimePageBreak = true;
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_THAT(own.Take(), IsEmpty());
}

TEST_F(ManifestEntriesTest, AnEntryWithoutAManifestStoresAndFails) {
    const auto alone = make<ManifestEntry>();
    EXPECT_EQ(failureOf([&] { alone->SetTitle("x"); }), "This manifest entry has no manifest");
    EXPECT_EQ(alone->Title(), "x");
    EXPECT_EQ(alone->Topic(), nullptr);
}

TEST_F(ManifestEntriesTest, TheRunTimeTitleFallsBackOnTheTopics) {
    EXPECT_EQ(b->RuntimeTitle(), "B");
    b->SetTitle("");
    EXPECT_EQ(b->RuntimeTitle(), "Intro title");
    a->SetTitle("");
    EXPECT_EQ(a->RuntimeTitle(), "");
}

TEST_F(ManifestEntriesTest, ADanglingKeyIsNoTopicAndIsSavedBack) {
    const auto document = platform().xml->NewDocument();
    document->Parse("<me k='k' t='' tid='gone'/>");
    const auto entry = make<ManifestEntry>();
    entry->SetManifest(manifest);
    entry->Load(document->RootElement());
    EXPECT_EQ(entry->Topic(), nullptr);
    EXPECT_EQ(entry->RuntimeTitle(), "");
    const auto saved = platform().xml->NewDocument();
    entry->Save(saved->RootElement());
    EXPECT_THAT(saved->ToXml(), HasSubstr("<me k=\"k\" t=\"\" tid=\"gone\" pbb=\"0\"/>"));
}

TEST_F(ManifestEntriesTest, TheFirstEntryOfATopicIsFoundDepthFirst) {
    EXPECT_EQ(manifest->EntryByTopic(topic), b);
    EXPECT_EQ(manifest->EntryByTopic(addTopic("Other")), nullptr);
    b->SetTopic(nullptr);
    EXPECT_EQ(manifest->EntryByTopic(topic), e);
}

TEST_F(ManifestEntriesTest, NumbersFollowTheTree) {
    e->SetTopic(nullptr);
    a->RuntimePageBreak = true;
    manifest->AssignEntryNumbers();
    EXPECT_FALSE(a->RuntimePageBreak);
    std::vector<std::string> numbers;
    for (const auto& entry : manifest->Entries()->AllEntries()->Items())
        numbers.push_back(entry->RuntimeEntryNumber());
    EXPECT_THAT(numbers, ElementsAre("1", "1.1", "1.1.1", "1.2", "2"));
}

TEST_F(ManifestEntriesTest, ATopicInTwoEntriesHasOneNumberTheLaterOne) {
    manifest->AssignEntryNumbers();
    EXPECT_EQ(e->RuntimeEntryNumber(), "2");
    EXPECT_EQ(b->RuntimeEntryNumber(), "2");
    EXPECT_EQ(topic->RuntimeEntryNumber, "2");
    EXPECT_EQ(d->RuntimeEntryNumber(), "1.1.1");
    b->SetRuntimePageNumberStart(5);
    b->SetRuntimePageNumberEnd(6);
    EXPECT_EQ(e->RuntimePageNumberStart(), 5);
    EXPECT_EQ(topic->RuntimePageNumberEnd, 6);
    b->SetTopic(nullptr);
    EXPECT_EQ(b->RuntimeEntryNumber(), "");
    EXPECT_EQ(b->RuntimePageNumberStart(), 0);
}

TEST_F(ManifestEntriesTest, ANewEntryTellsOfItsTopicAndTitleAndIsInNoList) {
    const auto entry = manifest->NewManifestEntry(topic, "new");
    EXPECT_EQ(entry->Key.size(), 38u);
    EXPECT_EQ(entry->Manifest(), manifest);
    EXPECT_EQ(entry->Topic(), topic);
    EXPECT_EQ(own.Count("ManifestEntryChanged"), 2);
    EXPECT_EQ(manifest->Entries()->Item(entry->Key), nullptr);
    EXPECT_EQ(entry->ChildEntries->Parent(), entry);
}

}  // namespace
}  // namespace quillbox
