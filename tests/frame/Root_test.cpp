#include "frame/Root.h"

#include "frame/Module.h"
#include "support/ProjectTest.h"
#include "topics/TopicSection.h"
#include "topics/TopicSectionDefs.h"
#include "topics/TopicStatuses.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kStatusFile = "/install/Configuration/statuscodes.xml";

class RootTest : public ProjectTest {
  protected:
    void putStatuses(const std::string& children) {
        outside.files->Put(kStatusFile, "<Any>" + children + "</Any>");
    }
};

TEST_F(RootTest, TheSharedListsLiveAsLongAsOneRootDoes) {
    auto first = make<Root>();
    auto second = make<Root>();
    const std::weak_ptr<TopicStatuses> statuses = first->TopicStatuses();
    const std::weak_ptr<TopicSectionDefs> defs = first->TopicSectionDefs();
    EXPECT_EQ(second->TopicStatuses(), statuses.lock());
    EXPECT_EQ(second->TopicSectionDefs(), defs.lock());
    first.reset();
    EXPECT_FALSE(statuses.expired());
    EXPECT_FALSE(defs.expired());
    second.reset();
    EXPECT_TRUE(statuses.expired());
    EXPECT_TRUE(defs.expired());
}

TEST_F(RootTest, TheNextRootReadsTheStatusFileAfresh) {
    putStatuses("<s Name='Old' Caption='' Icon=''/>");
    EXPECT_EQ(make<Root>()->TopicStatuses()->Item(1)->Name, "Old");
    putStatuses("<s Name='New' Caption='' Icon=''/>");
    EXPECT_EQ(make<Root>()->TopicStatuses()->Item(1)->Name, "New");
}

TEST_F(RootTest, AProjectThatOutlivesTheLastRootFindsTheListsRemade) {
    make<Root>()->TopicSectionDefs();
    const auto topic = addTopic("One", "<p>x</p>");
    EXPECT_EQ(topic->TopicSections->Item(1)->TopicSectionDef()->Caption, "Body Text");
}

TEST_F(RootTest, WithoutAStatusFileTheListIsEmptyAndIsNotTriedAgain) {
    const auto root = make<Root>();
    EXPECT_EQ(root->TopicStatuses()->Count(), 0);
    EXPECT_EQ(project->NewTopic()->Status(), "");
    putStatuses("<s Name='Late' Caption='' Icon=''/>");
    EXPECT_EQ(root->TopicStatuses()->Count(), 0);
}

TEST_F(RootTest, TheFirstStatusIsTheOneOfANewTopic) {
    putStatuses("<s Name='Draft' Caption='d' Icon='d.png'/><x Name='Done' Caption='e' Icon='e.png'/>");
    EXPECT_EQ(project->NewTopic()->Status(), "Draft");
    const auto statuses = make<Root>()->TopicStatuses();
    EXPECT_EQ(statuses->Count(), 2);
    EXPECT_EQ(statuses->Item("DONE")->Caption, "e");
    EXPECT_EQ(statuses->Item("Done")->Icon, "e.png");
}

TEST_F(RootTest, AStatusWithoutAnIconFailsForTheFirstCallerAloneAndKeepsThoseBefore) {
    putStatuses(
        "<s Name='One' Caption='' Icon=''/>\n<s Name='Two' Caption=''/><s Name='Three' Caption='' Icon=''/>");
    const auto root = make<Root>();
    const auto failure = failureOf([&] { root->TopicStatuses(); });
    EXPECT_THAT(failure, HasSubstr("statuscodes.xml: line 2"));
    EXPECT_THAT(failure, HasSubstr("'Icon'"));
    EXPECT_EQ(root->TopicStatuses()->Count(), 1);
    EXPECT_EQ(root->TopicStatuses()->Item(1)->Name, "One");
}

TEST_F(RootTest, ABrokenStatusFileFailsForTheFirstCallerAndNewTopicSwallowsIt) {
    outside.files->Put(kStatusFile, "<Any");
    EXPECT_EQ(project->NewTopic()->Status(), "");
    EXPECT_EQ(make<Root>()->TopicStatuses()->Count(), 0);
}

TEST_F(RootTest, StatusesAreNotWrittenBack) {
    putStatuses("<s Name='One' Caption='c' Icon='i'/><s Name='Two' Caption='' Icon=''/>");
    const auto document = platform().xml->NewDocument();
    document->RootElement()->SetName("Any");
    make<Root>()->TopicStatuses()->Save(document->RootElement());
    EXPECT_THAT(document->ToXml(), HasSubstr("<Any>\n  <Status/>\n  <Status/>\n</Any>"));
}

TEST_F(RootTest, TheConfigurationFolderIsTheSameWithAndWithoutASeparatorAtTheEnd) {
    const auto path = [&](const char* installed) {
        outside.settings->Write(Hive::LocalMachine, TestPlatform::kProductKey, "InstallDir", installed);
        return make<Root>()->ahConfigPath();
    };
    EXPECT_EQ(path("/opt/quillbox"), "/opt/quillbox/Configuration/");
    EXPECT_EQ(path("/opt/quillbox/"), "/opt/quillbox/Configuration/");
    EXPECT_EQ(path(""), "/Configuration/");
}

TEST_F(RootTest, StripQuotesTestsBothEndsByThemselves) {
    const auto stripped = [](std::string text) {
        EXPECT_EQ(StripQuotes(text), text);
        return text;
    };
    EXPECT_EQ(stripped("\"a b\""), "a b");
    EXPECT_EQ(stripped("\"a"), "a");
    EXPECT_EQ(stripped("a\""), "a");
    EXPECT_EQ(stripped("\""), "");
    EXPECT_EQ(stripped("\"\""), "");
    EXPECT_EQ(stripped(""), "");
    EXPECT_EQ(stripped("\"\"a\"\""), "\"a\"");
}

TEST_F(RootTest, TheSiblingProductIsLookedForOnce) {
    const auto root = make<Root>();
    EXPECT_FALSE(root->IsCodemarkInstalled());
    outside.classes->classes["Codemark.Root"] = [] { return make<Collection>(); };
    EXPECT_FALSE(root->IsCodemarkInstalled());
    EXPECT_EQ(outside.classes->asked, 1);
    resetModule();
    EXPECT_TRUE(root->IsCodemarkInstalled());
    EXPECT_TRUE(IsCodemarkInstalled());
    EXPECT_EQ(outside.classes->asked, 2);
}

TEST_F(RootTest, TemplatesAreThoseOfTheProductThatHaveTheFlag) {
    outside.engine->AddTemplate("Web", "hw", {"CM.Other", "CM.Quillbox"});
    outside.engine->AddTemplate("Print", "p", {"CM.Quillbox"});
    outside.engine->AddTemplate("Other", "p", {"CM.Other", "cm.quillbox"});
    const auto names = [](const Value& flag) {
        std::vector<std::string> found;
        const auto list = toObject(getMember(*make<Root>(), "QuillboxPageTemplates", {flag}));
        for (const auto& one : std::dynamic_pointer_cast<PageTemplates>(list)->Items())
            found.push_back(one->Name());
        return found;
    };
    EXPECT_THAT(names({}), ElementsAre("Web", "Print"));
    EXPECT_THAT(names("p"), ElementsAre("Print"));
    EXPECT_THAT(names("P"), IsEmpty());
    EXPECT_THAT(names("hw"), ElementsAre("Web"));
    EXPECT_NE(make<Root>()->QuillboxPageTemplates()->Item("print"), nullptr);
}

TEST_F(RootTest, ATemplateThatListsTheProductTwiceFails) {
    outside.engine->AddTemplate("Twice", "", {"CM.Quillbox", "CM.Quillbox"});
    EXPECT_THAT(failureOf([] { make<Root>()->QuillboxPageTemplates(); }), HasSubstr("'Twice'"));
}

TEST_F(RootTest, WhereTheSystemMakesNoKeysThingsHaveNone) {
    outside.system->makesGuids = false;
    EXPECT_EQ(project->NewTopic()->Key, "");
    EXPECT_EQ(project->QbNodes()->NewNode(nullptr)->Key, "");
}

}  // namespace
}  // namespace quillbox
