#include "content/GlossaryItems.h"

#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kGlossary = "/work/manual/ProjectData/Glossary.xml";

class GlossaryItemsTest : public ProjectTest {
  protected:
    Ref<GlossaryItems> items = project->GlossaryItems();
    EventLog log{project};
};

TEST_F(GlossaryItemsTest, ANewItemMarksTheGlossaryBeforeItIsInIt) {
    const auto item = project->NewGlossaryItem("API", "An interface");
    EXPECT_EQ(item->Key.size(), 38u);
    EXPECT_EQ(item->QbProject(), project);
    EXPECT_THAT(log.Take(), ElementsAre("GlossaryItemChanged(API)", "DirtyStateChanged",
                                        "GlossaryItemChanged(API)", "DirtyStateChanged"));
    EXPECT_TRUE(items->Dirty());
    EXPECT_EQ(items->Count(), 0);
}

TEST_F(GlossaryItemsTest, AdditionsChangesAndRemovalsAreToldAndMark) {
    const auto item = project->NewGlossaryItem("API", "");
    settle();
    log.Take();
    items->Add(item, item->Key);
    EXPECT_THAT(log.Take(), ElementsAre("GlossaryItemAdded(API)", "DirtyStateChanged", "DirtyStateChanged"));
    settle();
    log.Take();
    item->SetDefinition("x");
    EXPECT_THAT(log.Take(), ElementsAre("GlossaryItemChanged(API)", "DirtyStateChanged"));
    EXPECT_TRUE(items->Dirty());
    EXPECT_FALSE(project->ProjectDirty());
    settle();
    log.Take();
    items->Remove(item->Key);
    EXPECT_THAT(log.Take(),
                ElementsAre("GlossaryItemRemoved(API)", "DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(GlossaryItemsTest, APauseHoldsTheEventsBackAndNotTheMarks) {
    items->PauseEvents = true;
    const auto item = addTerm("API");
    item->SetTerm("x");
    items->Remove(1);
    EXPECT_EQ(log.Count("DirtyStateChanged"), 7);
    EXPECT_EQ(log.Take().size(), 7u);
    EXPECT_TRUE(items->Dirty());
}

TEST_F(GlossaryItemsTest, WithoutAProjectAnAdditionFailsWhenTheItemIsIn) {
    const auto alone = make<GlossaryItems>();
    EXPECT_EQ(failureOf([&] { alone->Add(make<GlossaryItem>(), "k"); }), "This object has no project");
    EXPECT_EQ(alone->Count(), 1);
    EXPECT_EQ(failureOf([&] { alone->Remove("k"); }), "This object has no project");
    EXPECT_EQ(alone->Count(), 0);
}

TEST_F(GlossaryItemsTest, ATermIsFoundInAnyCaseUntrimmedAndTheFirstWins) {
    const auto first = addTerm("api");
    addTerm("API");
    EXPECT_EQ(items->ItemByTerm("API"), first);
    EXPECT_EQ(items->ItemByTerm(" API"), nullptr);
    EXPECT_EQ(items->ItemByTerm("none"), nullptr);
    first->SetTerm("SDK");
    EXPECT_EQ(items->ItemByTerm("api"), items->Item(2));
    EXPECT_EQ(items->ItemByTerm("sdk"), first);
}

TEST_F(GlossaryItemsTest, AnUnknownKeyGivesNoneAndCannotBeRemoved) {
    addTerm("API");
    settle();
    log.Take();
    for (const Value& key : {Value("none"), Value(""), Value(0), Value(2), Value(-1), Value(1e10)}) {
        EXPECT_EQ(items->Item(key), nullptr);
        EXPECT_NE(failureOf([&] { items->Remove(key); }), "no failure");
    }
    EXPECT_EQ(items->Count(), 1);
    EXPECT_FALSE(items->Dirty());
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(GlossaryItemsTest, ALoadAddsWithoutEventsAndEndsClean) {
    addTerm("first");
    log.Take();
    const auto document = platform().xml->NewDocument();
    document->Parse(
        "<Any><glossaryitem Key='a' Term='API'>&lt;b&gt;x&lt;/b&gt;</glossaryitem>"
        "<other KEY='b' TERM='SDK'> y\r\n</other></Any>");
    items->Load(document->RootElement());
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_FALSE(items->Dirty());
    EXPECT_EQ(items->Count(), 3);
    EXPECT_EQ(items->Item("a")->Definition(), "<b>x</b>");
    EXPECT_EQ(items->Item("b")->Definition(), " y\r\n");
    EXPECT_EQ(items->ItemByTerm("sdk"), items->Item("b"));
    EXPECT_EQ(items->Item("a")->QbProject(), project);
}

TEST_F(GlossaryItemsTest, AnItemWithoutKeyOrTermEndsTheLoadAndKeepsThoseBefore) {
    const auto document = platform().xml->NewDocument();
    document->Parse("<Any>\n<g Key='a' Term='t'/>\n<g Key='b'/>\n</Any>");
    EXPECT_EQ(failureOf([&] { items->Load(document->RootElement()); }),
              "line 3, element 'g': The element 'g' has no attribute 'term'");
    EXPECT_EQ(items->Count(), 1);
    document->Parse("<Any>\n<g Term='t'/></Any>");
    EXPECT_THAT(failureOf([&] { items->Load(document->RootElement()); }), HasSubstr("'Key'"));
    document->Parse("<Any>\n<g Key='A' Term='t'/></Any>");
    EXPECT_THAT(failureOf([&] { items->Load(document->RootElement()); }),
                HasSubstr("line 2, element 'g': The key 'A'"));
}

TEST_F(GlossaryItemsTest, ASavedGlossaryHasThisText) {
    addTerm("API", "An <interface> & more\r\n");
    addTerm("Empty");
    project->SetProjectType(ProjectTypeSeparateFiles);
    items->Save(nullptr);
    EXPECT_EQ(bytes(kGlossary),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Glossary>
  <glossaryitem Key="{00000000-0000-0000-0000-000000000001}" Term="API">An &lt;interface&gt; &amp; more&#13;
</glossaryitem>
  <glossaryitem Key="{00000000-0000-0000-0000-000000000002}" Term="Empty"/>
</Glossary>
)");
    EXPECT_TRUE(items->Dirty());
}

TEST_F(GlossaryItemsTest, ACleanGlossaryLeavesItsFileAloneAndAMissingOneIsWritten) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    items->SetDirty(false);
    items->Save(nullptr);
    EXPECT_THAT(bytes(kGlossary), HasSubstr("<Glossary/>"));
    outside.files->Put(kGlossary, "mine");
    items->Save(nullptr);
    EXPECT_EQ(bytes(kGlossary), "mine");
}

}  // namespace
}  // namespace quillbox
