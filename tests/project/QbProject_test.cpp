#include "project/QbProject.h"

#include "platform/engine/Variables.h"
#include "support/ProjectTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class QbProjectTest : public ProjectTest {
  protected:
    EventLog log{project};
};

TEST_F(QbProjectTest, ANewProjectIsEmptyCleanAndHasRaisedNothing) {
    const auto fresh = make<QbProject>();
    EXPECT_FALSE(fresh->Dirty());
    EXPECT_FALSE(fresh->ProjectDirty());
    EXPECT_FALSE(fresh->TopicsDirty());
    EXPECT_EQ(fresh->Filename->FullPath(), "");
    EXPECT_EQ(fresh->Topics->Count(), 0);
    EXPECT_EQ(fresh->Topics->QbProject(), fresh);
    EXPECT_EQ(fresh->TopicCategories->QbProject(), fresh);
    EXPECT_EQ(fresh->OtherFiles->QbProject(), fresh);
    EXPECT_EQ(fresh->Tasks->QbProject(), fresh);
    EXPECT_EQ(fresh->QbNodes()->QbProject(), fresh);
    EXPECT_EQ(fresh->Manifests()->QbProject(), fresh);
    EXPECT_EQ(fresh->GlossaryItems()->QbProject(), fresh);
    EXPECT_EQ(fresh->SpellIgnoreAllWordList->Count(), 0);
    EXPECT_EQ(fresh->VariableValues->Count(), 0);
    EXPECT_EQ(fresh->IncrementingValues, nullptr);
    EXPECT_EQ(fresh->HeaderIds(), nullptr);
    EXPECT_EQ(fresh->ProjectType(), ProjectTypeSingleFile);
    EXPECT_TRUE(fresh->SpellLastCheckDateTime().IsZero());
}

TEST_F(QbProjectTest, TheGlossaryIsMadeOnceOnFirstRead) {
    EXPECT_EQ(project->GlossaryItems(), project->GlossaryItems());
}

TEST_F(QbProjectTest, AProjectGoesWhenItsCallerLetsItGo) {
    addTopicNode(addTopic("One", "<p>x</p>"));
    addTerm("Term");
    addTask("Task");
    addCategory("Category");
    addFile("/work/manual/pic.png");
    addEntry(addManifest("Booklet"), project->Topics->Item(1), "");
    project->TopicByName("one");
    project->GlossaryItems()->ItemByTerm("term");
    project->OtherFiles->Exists("x");
    const std::weak_ptr<QbProject> watched = project;
    const std::weak_ptr<Topic> topic = project->Topics->Item(1);
    project.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_TRUE(topic.expired());
}

struct Setter {
    const char* property;
    Value value;
    std::vector<std::string> events;
    bool marks;
};
void PrintTo(const Setter& setter, std::ostream* out) { *out << setter.property; }

class QbProjectSetter : public QbProjectTest, public testing::WithParamInterface<Setter> {};

TEST_P(QbProjectSetter, TellsAndMarksInThisOrder) {
    const auto& setter = GetParam();
    putMember(*project, setter.property, setter.value);
    EXPECT_EQ(log.Take(), setter.events);
    EXPECT_EQ(project->ProjectDirty(), setter.marks);
    EXPECT_EQ(project->Dirty(), setter.marks);
    EXPECT_FALSE(project->TopicsDirty());
}

TEST_P(QbProjectSetter, TellsAgainForTheSameValue) {
    const auto& setter = GetParam();
    putMember(*project, setter.property, setter.value);
    log.Take();
    putMember(*project, setter.property, setter.value);
    EXPECT_EQ(log.Take(), setter.events);
}

const std::vector<std::string> kToldAndMarked = {"Changed", "DirtyStateChanged"};
const std::vector<std::string> kMarked = {"DirtyStateChanged"};

INSTANTIATE_TEST_SUITE_P(
    All, QbProjectSetter,
    testing::Values(
        Setter{"Title", "x", kToldAndMarked, true}, Setter{"CMPFileName", "x", kToldAndMarked, true},
        Setter{"OutputFileName", "x", kToldAndMarked, true},
        Setter{"Help2Namespace", "x", kToldAndMarked, true}, Setter{"Help2FileID", "x", kToldAndMarked, true},
        Setter{"HelpContextIDHeaderFile", "x", kToldAndMarked, true},
        Setter{"ProjectType", 1, kToldAndMarked, true}, Setter{"SSProject", "$/x", kToldAndMarked, true},
        Setter{"SSActivated", true, kToldAndMarked, true}, Setter{"CompileType", 2, kMarked, true},
        Setter{"SpellLastCheckDateTime", *Date::From({2020, 1, 2, 3, 4, 5, 0}), kMarked, true},
        Setter{"TemplateName", "x", {"Changed", "TopicTemplateChanged(x)"}, false},
        Setter{"Name", "x", {}, false}),
    [](const auto& info) { return std::string(info.param.property); });

TEST_F(QbProjectTest, ASetterTellsBeforeItMarks) {
    bool wasDirty = true;
    project->Changed.connect([&] { wasDirty = project->Dirty(); });
    project->SetTitle("x");
    EXPECT_FALSE(wasDirty);
    EXPECT_TRUE(project->Dirty());
}

TEST_F(QbProjectTest, AHandlerMayReEnterTheObject) {
    project->Changed.connect([&] {
        if (project->CMPFileName().empty()) project->SetCMPFileName(project->Title());
    });
    project->SetTitle("x");
    EXPECT_EQ(project->CMPFileName(), "x");
    EXPECT_THAT(log.Take(), ElementsAre("Changed", "Changed", "DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(QbProjectTest, AFailureOfAHandlerReachesTheSetterAndNothingIsMarked) {
    project->Changed.connect([] { throw AutomationError("not now"); });
    EXPECT_EQ(failureOf([&] { project->SetTitle("x"); }), "not now");
    EXPECT_EQ(project->Title(), "x");
    EXPECT_FALSE(project->Dirty());
}

TEST_F(QbProjectTest, TheNameIsDiscardedAndReadsTheTitle) {
    project->SetName("name");
    EXPECT_EQ(project->Name(), "");
    EXPECT_EQ(project->Title(), "");
    project->SetTitle("title");
    project->SetName("name");
    EXPECT_EQ(project->Name(), "title");
    EXPECT_EQ(project->Title(), "title");
}

TEST_F(QbProjectTest, ACompileTypeBelowOneIsStoredAndReadsAsHtmlHelp) {
    EXPECT_EQ(project->CompileType(), CompileHTMLHelp1);
    project->SetCompileType(CompileHelp2);
    EXPECT_EQ(project->CompileType(), CompileHelp2);
    for (const int type : {0, -7}) {
        project->SetCompileType(static_cast<CompileTypeEnum>(type));
        EXPECT_EQ(project->CompileType(), CompileHTMLHelp1);
    }
    project->SetCompileType(static_cast<CompileTypeEnum>(9));
    EXPECT_EQ(project->CompileType(), 9);
}

TEST_F(QbProjectTest, TheTemplateNameIsNotToldToTopicsThatArePaused) {
    project->Topics->PauseEvents = true;
    project->SetTemplateName("x");
    EXPECT_THAT(log.Take(), ElementsAre("Changed"));
    EXPECT_FALSE(project->Dirty());
}

TEST_F(QbProjectTest, TheSourceControlFolderReadsWithAFinalSlash) {
    EXPECT_EQ(project->SSProject(), "");
    project->SetSSProject("$/help/manual");
    EXPECT_EQ(project->SSProject(), "$/help/manual/");
    project->SetSSProject("$/help/manual/");
    EXPECT_EQ(project->SSProject(), "$/help/manual/");
}

TEST_F(QbProjectTest, WithoutTheClientSourceControlReadsAsOff) {
    project->SetSSActivated(true);
    EXPECT_FALSE(project->SSActivated());
    EXPECT_EQ(project->ProjectType(), ProjectTypeSingleFile);
}

TEST_F(QbProjectTest, TheQualifiedNameIsTheFullPathOfTheFile) { EXPECT_EQ(project->QualifiedName(), kFile); }

TEST_F(QbProjectTest, ChangedAndDirtyStateChangedAreSilentDuringALoadAndTheLoadEndsClean) {
    project->LoadProgress.connect([&](const std::string&) {
        EXPECT_EQ(project->Title(), "Loaded");
        EXPECT_TRUE(project->ProjectDirty());
        project->SetTitle("Set while loading");
    });
    project->Load("<QbProject Title='Loaded'><Tasks/></QbProject>");
    EXPECT_THAT(log.Take(), ElementsAre("LoadProgress(Loading Tasks)"));
    EXPECT_EQ(project->Title(), "Set while loading");
    EXPECT_FALSE(project->Dirty());
}

TEST_F(QbProjectTest, AHeaderFileIsReadAnewAtEachRead) {
    outside.files->Put("/work/manual/ids.h", "#define IDH_A 1\n");
    project->SetHelpContextIDHeaderFile("/work/manual/ids.h");
    const auto ids = getMember(*project, "HeaderIds");
    EXPECT_NE(ids, getMember(*project, "HeaderIds"));
    EXPECT_EQ(getMember(*toObject(ids), "Count"), Value(1));
    project->SetHelpContextIDHeaderFile("/work/manual/none.h");
    EXPECT_THAT(failureOf([&] { project->HeaderIds(); }), testing::HasSubstr("none.h"));
}

TEST_F(QbProjectTest, ATopicIsFoundByItsNameInAnyCaseAndTheFirstWins) {
    const auto first = addTopic("Über");
    addTopic("über");
    EXPECT_EQ(project->TopicByName("ÜBER"), first);
    EXPECT_EQ(project->TopicByName("unknown"), nullptr);
    first->SetName("Other");
    EXPECT_EQ(project->TopicByName("ÜBER"), project->Topics->Item(2));
    EXPECT_EQ(project->TopicByName("OTHER"), first);
    project->Topics->Remove(first->Key);
    EXPECT_EQ(project->TopicByName("other"), nullptr);
}

TEST_F(QbProjectTest, SortedTopicsAreAFreshListByNameWithoutAProject) {
    for (const auto* name : {"b", "C", "a", "b"}) addTopic(name);
    const auto second = project->Topics->Item(4);
    log.Take();
    const auto sorted = project->SortedTopics();
    std::vector<std::string> names;
    for (const auto& topic : sorted->Items()) names.push_back(topic->Name());
    EXPECT_THAT(names, ElementsAre("a", "b", "b", "C"));
    EXPECT_EQ(sorted->Item(3), second);
    EXPECT_EQ(sorted->Item(second->Key), second);
    EXPECT_EQ(sorted->QbProject(), nullptr);
    EXPECT_NE(sorted, project->SortedTopics());
    sorted->Remove(1);
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_EQ(project->Topics->Count(), 4);
}

TEST_F(QbProjectTest, AWordToIgnoreIsAddedOnceAndDoesNotMark) {
    project->SpellAddIgnoreAllWord("Quillbox");
    project->SpellAddIgnoreAllWord("quillbox");
    project->SpellAddIgnoreAllWord("help");
    EXPECT_THAT(project->SpellIgnoreAllWordList->Texts(), ElementsAre("Quillbox", "help"));
    EXPECT_FALSE(project->Dirty());
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(QbProjectTest, AWordToIgnoreIsKnownAgainAfterALoad) {
    project->Load("<QbProject><SpellIgnoreAllWordList>one|two|one||</SpellIgnoreAllWordList></QbProject>");
    EXPECT_THAT(project->SpellIgnoreAllWordList->Texts(), ElementsAre("one", "two", "one", "", ""));
    project->SpellAddIgnoreAllWord("TWO");
    EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 5);
}

TEST_F(QbProjectTest, APartThatIsAlwaysThereCannotBeNone) {
    for (const auto* part : {"Filename", "VariableValues", "Topics", "TopicCategories", "OtherFiles", "Tasks",
                             "SpellIgnoreAllWordList", "QbNodes", "Manifests"}) {
        EXPECT_THAT(failureOf([&] { putMember(*project, part, Value::None()); }), testing::HasSubstr("none"))
            << part;
        EXPECT_NE(toObject(getMember(*project, part)), nullptr) << part;
    }
}

}  // namespace
}  // namespace quillbox
