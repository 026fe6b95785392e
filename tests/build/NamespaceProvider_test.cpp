#include <gmock/gmock.h>

#include "build/BuildTest.h"
#include "build/CompilerInputs.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NamespaceProviderTest : public ProviderTest {
  protected:
    // The items of a list by the text of one of their properties.
    static std::vector<std::string> texts(const std::vector<Ref<Object>>& items,
                                          const char* property = "Name") {
        std::vector<std::string> result;
        for (const auto& item : items) result.push_back(toText(getMember(*item, property)));
        return result;
    }
    Ref<RelatedTopic> addLink(const Ref<Topic>& topic, const std::string& category) const {
        const auto link = make<RelatedTopic>();
        link->SetParentTopic(topic);
        link->SetCategory(category);
        topic->RelatedTopics()->Add(link);
        return link;
    }
    static Ref<Object> letter(const std::string& name) {
        auto pair = make<VariableValue>();
        pair->Name = name;
        return pair;
    }
};

TEST_F(NamespaceProviderTest, IsKnownByItsName) { EXPECT_EQ(provider->Name(), "CM.Quillbox"); }

TEST_F(NamespaceProviderTest, GivesTheProjectForItsTwoTypes) {
    EXPECT_THAT(items("qbproject"), ElementsAre(project));
    EXPECT_THAT(items("topicset"), ElementsAre(project));
}

TEST_F(NamespaceProviderTest, GivesTheTopicsOfTheHelpFileInOrder) {
    addTopic("Zebra");
    addTopic("Draft")->SetIncludeInHelpFile(false);
    addTopic("Ant");
    EXPECT_THAT(texts(items("topic")), ElementsAre("Zebra", "Ant"));
}

TEST_F(NamespaceProviderTest, GivesTheTopicsOfAParentProject) {
    addTopic("Mine");
    const auto other = newProject();
    const auto topic = other->NewTopic();
    topic->SetName("Theirs");
    other->Topics->Add(topic, topic->Key);
    EXPECT_THAT(texts(items("topic", other)), ElementsAre("Theirs"));
    EXPECT_THAT(texts(items("topic", topic)), ElementsAre("Mine"));
}

TEST_F(NamespaceProviderTest, GivesTheOneBookletThatIsBeingBuilt) {
    addManifest("First");
    EXPECT_THAT(items("manifest"), IsEmpty());
    addManifest("Second")->BuildIncludeFlag = true;
    addManifest("Third")->BuildIncludeFlag = true;
    EXPECT_THAT(texts(items("manifest")), ElementsAre("Second"));
}

TEST_F(NamespaceProviderTest, GivesEntriesOfManifestsAndOfEntries) {
    const auto manifest = addManifest("Book");
    const auto part = addEntry(manifest, nullptr, "Part");
    addEntry(manifest, nullptr, "Chapter", part);
    EXPECT_THAT(texts(items("manifestentry", manifest), "Title"), ElementsAre("Part"));
    EXPECT_THAT(texts(items("manifestentry", part), "Title"), ElementsAre("Chapter"));
    EXPECT_THAT(items("manifestentry", project), IsEmpty());
    EXPECT_THAT(items("manifestentry"), IsEmpty());
}

TEST_F(NamespaceProviderTest, MergesCategoriesThatDifferInCase) {
    const auto topic = addTopic("Intro");
    for (const auto* category : {"See Also", "Tools", "tools", ""}) addLink(topic, category);
    const auto categories = items("linkcategory", topic);
    EXPECT_THAT(texts(categories), ElementsAre("See Also", "Tools", ""));
    EXPECT_EQ(items("link", categories[1]).size(), 2u);
}

TEST_F(NamespaceProviderTest, SelectsCategoriesByTheFilter) {
    const auto topic = addTopic("Intro");
    for (const auto* category : {"", "Tools"}) addLink(topic, category);
    EXPECT_THAT(texts(items("linkcategory", topic, "type=notblank")), ElementsAre("Tools"));
    EXPECT_THAT(texts(items("linkcategory", topic, "type=Blank")), ElementsAre(""));
    EXPECT_THAT(items("linkcategory", topic, "type=other"), IsEmpty());
}

TEST_F(NamespaceProviderTest, GivesNothingForAParentOfAnotherKind) {
    for (const auto* kind : {"linkcategory", "link", "manifestentry", "glossaryitem"}) {
        EXPECT_THAT(items(kind, project), IsEmpty()) << kind;
        EXPECT_THAT(items(kind), IsEmpty()) << kind;
    }
}

TEST_F(NamespaceProviderTest, GivesTheIndexAsATree) {
    const auto topicWith = [&](const char* name, std::vector<const char*> keywords) {
        const auto topic = addTopic(name);
        topic->SetTitle(name);
        topic->SetAutoGenerateIndexEntry(false);
        for (const auto* keyword : keywords) topic->AddKeyword(keyword);
        return topic;
    };
    topicWith("Intro", {"tools | Options", "Zoo", "Tools|Colours|Dark", "|", "zoo"});
    topicWith("More", {"Tools|options", "Ape"})->SetAutoGenerateIndexEntry(true);
    topicWith("Draft", {"Secret"})->SetIncludeInHelpFile(false);
    const auto letters = items("indexletter");
    EXPECT_THAT(texts(letters), ElementsAre("A", "M", "T", "Z"));
    EXPECT_THAT(texts(letters, "Value"), testing::Each("1"));
    const auto tools = items("indexterm", letters[2]);
    ASSERT_THAT(texts(tools), ElementsAre("tools"));
    EXPECT_THAT(items("indexpage", tools[0]), IsEmpty());
    EXPECT_THAT(texts(tools, "QualifiedName"), ElementsAre(""));
    const auto below = items("indexterm", tools[0]);
    EXPECT_THAT(texts(below), ElementsAre("Colours", "Options"));
    EXPECT_THAT(texts(items("indexterm", below[0]), "QualifiedName"), ElementsAre("Intro"));
    EXPECT_THAT(texts(items("indexpage", below[1])), ElementsAre("Intro", "More"));
    EXPECT_THAT(texts(below, "QualifiedName"), ElementsAre("", ""));
    EXPECT_THAT(texts(items("indexterm", letters[3]), "QualifiedName"), ElementsAre("Intro"));
}

TEST_F(NamespaceProviderTest, GivesTheIndexTermsOfATopic) {
    const auto topic = addTopic("Intro");
    topic->SetTitle("Introduction");
    for (const auto* keyword : {"Tools|Options", "Zoo", "zoo"}) topic->AddKeyword(keyword);
    topic->SetAutoGenerateIndexEntry(true);
    EXPECT_THAT(texts(items("indexterm", topic)), ElementsAre("Tools Options", "Zoo", "Introduction"));
    EXPECT_THAT(items("indexterm", project), IsEmpty());
    EXPECT_THAT(items("indexterm"), IsEmpty());
    EXPECT_THAT(items("indexpage", topic), IsEmpty());
}

TEST_F(NamespaceProviderTest, GivesLettersInUseSortedWithTheirCounts) {
    for (const auto* term : {"zoom", "  alpha", "9 lives", "Anchor", "", "\u00e9cole"}) addTerm(term);
    const auto letters = items("glossaryletter");
    EXPECT_THAT(texts(letters), ElementsAre("9", "A", "\u00c9", "Z"));
    EXPECT_THAT(texts(letters, "Value"), ElementsAre("1", "2", "1", "1"));
}

TEST_F(NamespaceProviderTest, GivesAllLettersWhereTheFilterAsksForThem) {
    const auto letters = items("glossaryletter", nullptr, "type=all");
    ASSERT_EQ(letters.size(), 26u);
    EXPECT_EQ(texts(letters).front(), "A");
    EXPECT_EQ(texts(letters).back(), "Z");
    EXPECT_THAT(texts(letters, "Value"), testing::Each("0"));
    EXPECT_THAT(items("glossaryletter"), IsEmpty());
    addTerm("beta");
    addTerm("1st");
    EXPECT_EQ(items("glossaryletter", nullptr, "type=ALL").size(), 27u);
    EXPECT_EQ(texts(items("glossaryletter", nullptr, "type=all"), "Value")[2], "1");
}

TEST_F(NamespaceProviderTest, GivesTheItemsOfALetterSortedByTerm) {
    for (const auto* term : {"beta", "axle", "  alpha", "Apple"}) addTerm(term);
    EXPECT_THAT(texts(items("glossaryitem", letter("A")), "Term"), ElementsAre("  alpha", "Apple", "axle"));
    EXPECT_THAT(items("glossaryitem", letter("")), IsEmpty());
}

TEST_F(NamespaceProviderTest, LettersThatWereListedGiveTheTermsThatThereAreNow) {
    for (const auto* term : {"beta", "axle", "Apple"}) addTerm(term);
    const auto letters = items("glossaryletter");
    const auto a = letters.front();
    const auto terms = [&] { return texts(items("glossaryitem", a), "Term"); };
    EXPECT_THAT(terms(), ElementsAre("Apple", "axle"));
    EXPECT_THAT(texts(items("glossaryitem", letters.back()), "Term"), ElementsAre("beta"));
    addTerm("ant");
    EXPECT_THAT(terms(), ElementsAre("ant", "Apple", "axle"));
    project->GlossaryItems()->ItemByTerm("axle")->SetTerm("wheel");
    EXPECT_THAT(terms(), ElementsAre("ant", "Apple"));
    project->GlossaryItems()->Remove(3);
    EXPECT_THAT(terms(), ElementsAre("ant"));
    putMember(*a, "Name", "B");
    EXPECT_THAT(terms(), ElementsAre("beta"));
}

TEST_F(NamespaceProviderTest, LettersOfAnotherProjectGiveTheTermsOfThisOne) {
    addTerm("Apple");
    const auto a = items("glossaryletter").front();
    EXPECT_THAT(texts(items("glossaryitem", a), "Term"), ElementsAre("Apple"));
    const auto other = newProject();
    document->Objects->Remove("CM.Quillbox");
    document->Objects->Add(other, "CM.Quillbox");
    EXPECT_THAT(items("glossaryitem", a), IsEmpty());
}

TEST_F(NamespaceProviderTest, GivesNothingWhereTheDefinitionIsSwitchedOff) {
    addTopic("Intro");
    const auto off = make<NamespaceDef>();
    off->Name = "CM.QUILLBOX:TOPIC";
    off->ProvideIncludeFlag = true;
    EXPECT_EQ(provider->GetItems(off, nullptr, "").size(), 1u);
    off->IncludeFlag = false;
    EXPECT_THAT(provider->GetItems(off, nullptr, ""), IsEmpty());
    EXPECT_EQ(provider->GetItems(off, nullptr, "includeall=x").size(), 1u);
    off->ProvideIncludeFlag = false;
    EXPECT_EQ(provider->GetItems(off, nullptr, "").size(), 1u);
}

TEST_F(NamespaceProviderTest, GivesNothingForAnUnknownType) {
    EXPECT_THAT(provider->GetItems(nullptr, project, ""), IsEmpty());
    const auto unknown = make<NamespaceDef>();
    unknown->Name = "cm.quillbox:nonsense";
    EXPECT_THAT(provider->GetItems(unknown, project, ""), IsEmpty());
}

TEST_F(NamespaceProviderTest, FindsTheProjectAndTopicsByQualifiedName) {
    const auto topic = addTopic("Intro");
    EXPECT_EQ(provider->GetObjectFromQualifiedName(kFile), project);
    EXPECT_EQ(provider->GetObjectFromQualifiedName(topic->Key), topic);
    EXPECT_EQ(provider->GetObjectFromQualifiedName("Intro"), nullptr);
}

TEST_F(NamespaceProviderTest, StartsWithTheFirstTopicEvenOneThatIsLeftOut) {
    addTopic("Draft")->SetIncludeInHelpFile(false);
    addTopic("Intro");
    provider->BeforeProcessRootItem(project);
    EXPECT_EQ(document->DefaultTopic, "Draft.html");
    EXPECT_EQ(document->ProgressVerb, "writing");
    EXPECT_EQ(document->ProgressCaption, "Generating content");
}

TEST_F(NamespaceProviderTest, StartsWithTheLastTopicThatIsMarked) {
    for (const auto* name : {"One", "Two", "Three", "Four"}) addTopic(name);
    project->TopicByName("Two")->SetIsDefault(true);
    project->TopicByName("Three")->SetIsDefault(true);
    project->TopicByName("Four")->SetIsDefault(true);
    project->TopicByName("Four")->SetIncludeInHelpFile(false);
    provider->BeforeProcessRootItem(project);
    EXPECT_EQ(document->DefaultTopic, "Three.html");
    project->TopicByName("Three")->SetIsDefault(false);
    provider->AfterProcessRootItem(project);
    EXPECT_EQ(document->DefaultTopic, "Two.html");
}

TEST_F(NamespaceProviderTest, StartsNowhereWithoutTopics) {
    provider->BeforeProcessRootItem(project);
    EXPECT_EQ(document->DefaultTopic, "");
}

TEST_F(NamespaceProviderTest, ListsAFileOnceHoweverOftenItIsReported) {
    for (const auto* name : {"/work/manual/A.html", "/work/manual/A.html", "/work/manual/B.html"}) {
        provider->ContentCreated(nullptr, nullptr, name);
    }
    const auto file = newFile("/work/manual/list.txt");
    file->Open(kWriteElement);
    provider->StreamContent(file, "files");
    file->Close();
    EXPECT_EQ(bytes("/work/manual/list.txt"), "A.html\r\nB.html\r\n");
}

TEST_F(NamespaceProviderTest, ListsNoCompilerInputs) {
    for (const auto* name : {"M.hhp", "M.HHC", "M.hhk", "M.hxc", "M.hxf", "M.hxt", "M.hxk", "NoExtension"}) {
        provider->ContentCreated(nullptr, nullptr, std::string(kFolder) + name);
    }
    for (const auto* name : {"image.png", "page.htm"})
        provider->ContentCreated(nullptr, nullptr, std::string(kFolder) + name);
    const auto file = newFile("/work/manual/list.txt");
    file->Open(kWriteElement);
    provider->StreamContent(file, "files");
    file->Close();
    EXPECT_EQ(bytes("/work/manual/list.txt"), "image.png\r\npage.htm\r\n");
}

TEST_F(NamespaceProviderTest, MakesADocumentWithAProjectWhereItGetsNone) {
    engine->made.clear();
    const auto own = make<QbNamespaceProvider>();
    own->Initialise(nullptr);
    ASSERT_EQ(engine->made.size(), 1u);
    const auto made =
        std::dynamic_pointer_cast<QbProject>(toObject(engine->made.front()->Objects->Item(kProviderName)));
    ASSERT_NE(made, nullptr);
    EXPECT_THAT(own->GetItems(def("cm.quillbox:qbproject"), nullptr, ""), ElementsAre(made));
    EXPECT_EQ(std::dynamic_pointer_cast<QbDataProvider>(own->DocumentDataProvider())->Document(), nullptr);
}

TEST_F(NamespaceProviderTest, DoesNotKeepTheDocumentAlive) {
    data.reset();
    engine->made.clear();
    std::weak_ptr<Document> watched = document;
    document.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(failureOf([&] { items("topic"); }), "There is no project to take items from");
    EXPECT_THAT(items("link"), IsEmpty());
}

TEST_F(NamespaceProviderTest, HasNothingToSayToTheRest) {
    std::string message;
    EXPECT_EQ(provider->GetRootItem(nullptr, ""), nullptr);
    EXPECT_EQ(provider->GetNamespaceDefFromObject(nullptr, project), nullptr);
    EXPECT_EQ(provider->GetModuleItems()->Count(), 0);
    EXPECT_EQ(provider->BrowseForMoniker("x", 0), "");
    EXPECT_FALSE(provider->VerifyMoniker("x", message));
}

TEST_F(NamespaceProviderTest, IsReachedByTheNamesOfItsInterface) {
    addTopic("Intro");
    Arguments arguments{def(kTopicItems), Value(Ref<Object>()), ""};
    const auto list = toObject(callMember(*provider, "GetItems", arguments));
    EXPECT_EQ(toInteger(getMember(*list, "Count")), 1);
    EXPECT_EQ(toObject(getMember(*provider, "DocumentDataProvider")), data);
}

TEST(ItemFamily, HangsEachKindUnderItsParent) {
    TestPlatform outside;
    const auto engine = std::make_shared<FakeEngine>();
    platform().engine = engine;
    documentEngine();
    EXPECT_EQ(engine->family.name, "cm.quillbox");
    EXPECT_EQ(engine->family.providerName, "CM.Quillbox");
    EXPECT_EQ(engine->family.defs->Item(1)->Name, "cm.quillbox:qbproject");
    for (const auto& def : engine->family.defs->Items()) {
        EXPECT_EQ(def->NamespaceProvider, "CM.Quillbox");
        if (def->ParentName.empty()) continue;
        EXPECT_EQ(engine->family.defs->ByName(def->ParentName)->Count(), 1) << def->Name;
    }
}

TEST(ItemFamily, NeedsAnEngine) {
    TestPlatform outside;
    platform().engine = nullptr;
    EXPECT_EQ(failureOf([] { documentEngine(); }), "There is no document engine");
}

}  // namespace
}  // namespace quillbox
