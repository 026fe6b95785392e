#include <gmock/gmock.h>

#include "build/BuildEvents.h"
#include "build/BuildResult.h"
#include "build/BuildTest.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BuildDriverTest : public BuildTest {
  protected:
    Ref<BuildResult> build(bool compile = true, bool cleanup = true) {
        auto passed = std::static_pointer_cast<Document>(document);
        return project->Build(passed, "", false, compile, cleanup);
    }

    Ref<FakeDocument> document = std::dynamic_pointer_cast<FakeDocument>(engine->NewDocument());
};

TEST_F(BuildDriverTest, PreparesTheDocumentAndBuildsItOnce) {
    project->SetHelp2Namespace("My.Help");
    project->SetHelp2FileID("myhelp");
    document->onBuild = [&](FakeDocument& d) {
        EXPECT_EQ(toObject(d.Objects->Item("CM.Quillbox")), project);
        EXPECT_EQ(d.Template(), helpTemplate);
        EXPECT_EQ(d.OutputPath, kFolder);
        EXPECT_EQ(d.OutputFileName, "/work/manual/Manual.chm");
        EXPECT_EQ(d.CompileType, "1");
        EXPECT_EQ(d.Help2Namespace, "My.Help");
        EXPECT_EQ(d.Help2FileID, "myhelp");
        EXPECT_EQ(d.Title, "Manual");
        EXPECT_TRUE(d.Compile);
        EXPECT_FALSE(d.SwitchA);
        EXPECT_TRUE(d.SwitchB);
        EXPECT_TRUE(d.SwitchC);
        EXPECT_EQ(d.TemplateHost, engine->SharedTemplateObject());
        EXPECT_EQ(project->IncrementingValues->Count(), 0);
    };
    const auto result = build();
    EXPECT_EQ(document->builds, 1);
    EXPECT_FALSE(result->Cancelled);
    EXPECT_EQ(document->Objects->Count(), 0);
}

TEST_F(BuildDriverTest, MakesADocumentOfItsOwnAndLetsItGo) {
    engine->made.clear();
    engine->onNew = [](FakeDocument& d) { d.log = "fine"; };
    Ref<Document> none;
    EXPECT_EQ(project->Build(none, "", false, true, true)->CompilerLog, "fine");
    EXPECT_EQ(none, nullptr);
    ASSERT_EQ(engine->made.size(), 1u);
    EXPECT_EQ(engine->made.front().use_count(), 1);
}

TEST_F(BuildDriverTest, ReplacesVariablesOfTheSameName) {
    const auto value = make<VariableValue>();
    value->Name = "Version";
    value->Value = "2.0";
    project->VariableValues->Add(value, value->Name);
    document->VariableValues->Add(make<VariableValue>(), "Leftover");
    build();
    EXPECT_EQ(document->VariableValues->Count(), 1);
    EXPECT_EQ(document->VariableValues->Item("Version")->Value, "2.0");
}

TEST_F(BuildDriverTest, NamesTheCompilerForHtmlHelpAlone) {
    auto passed = std::static_pointer_cast<Document>(document);
    project->Build(passed, "/tools/hhc", false, true, true);
    EXPECT_EQ(document->CompilerFileName, "/tools/hhc");
    document->CompilerFileName.clear();
    project->SetCompileType(CompileHelp2);
    project->Build(passed, "/tools/hhc", false, true, true);
    EXPECT_EQ(document->CompilerFileName, "");
    EXPECT_EQ(document->CompileType, "2");
}

TEST_F(BuildDriverTest, TellsTheDocumentWhichFilesAreTheProjectsOwn) {
    addFile("/work/manual/css/help.css");
    build();
    EXPECT_THAT(document->KeptFiles->Texts(), ElementsAre("css/help.css"));
}

TEST_F(BuildDriverTest, GoesOnWithoutARelatedProjectWhereNoneIsNamed) {
    auto passed = std::static_pointer_cast<Document>(document);
    EXPECT_FALSE(project->Build(passed, "", true, true, true)->Cancelled);
    EXPECT_EQ(document->builds, 1);
}

TEST_F(BuildDriverTest, GoesOnWithoutARelatedProjectWhereNothingCanLoadIt) {
    project->SetCMPFileName("/work/manual/missing.cmp");
    auto passed = std::static_pointer_cast<Document>(document);
    EXPECT_FALSE(project->Build(passed, "", true, true, true)->Cancelled);
    EXPECT_EQ(document->builds, 1);
    EXPECT_TRUE(outside.messages->shown.empty());
}

TEST_F(BuildDriverTest, BuildsAgainForAsLongAsTheLogTellsProblems) {
    document->logs = {"Error: no page", "x Warning: y", "All done"};
    int asked = 0;
    project->BuildErrorsOrWarnings.connect([&](Ref<Document>& d, Ref<BuildResult>& result, bool& cancel) {
        EXPECT_EQ(d, document);
        EXPECT_FALSE(cancel);
        EXPECT_EQ(result->CompilerLog, ++asked == 1 ? "Error: no page" : "x Warning: y");
    });
    const auto result = build();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(document->builds, 3);
    EXPECT_EQ(result->CompilerLog, "All done");
}

TEST_F(BuildDriverTest, BuildsAgainWhereNobodyHandlesTheEvent) {
    document->logs = {"Warning: one", "Warning: two", ""};
    build();
    EXPECT_EQ(document->builds, 3);
}

TEST_F(BuildDriverTest, TakesALogInLowerCaseAsClean) {
    document->log = "warning: nothing to worry about, error: neither";
    build();
    EXPECT_EQ(document->builds, 1);
}

TEST_F(BuildDriverTest, EndsWithTheLogWhenTheHostCancels) {
    document->log = "Error: gone";
    project->BuildErrorsOrWarnings.connect(
        [](Ref<Document>&, Ref<BuildResult>&, bool& cancel) { cancel = true; });
    const auto result = build();
    EXPECT_EQ(document->builds, 1);
    EXPECT_FALSE(result->Cancelled);
    EXPECT_EQ(result->CompilerLog, "Error: gone");
}

TEST_F(BuildDriverTest, TellsACancelInsideTheEngine) {
    document->cancelled = true;
    document->log = "Error: half done";
    const auto result = build();
    EXPECT_TRUE(result->Cancelled);
    EXPECT_EQ(result->CompilerLog, "");
}

TEST_F(BuildDriverTest, DeletesWhatWasOnlyNeededOnTheWay) {
    const auto written = {"Intro.html",     "Manual.hhp", "col_list.html",  "Manual.chm",
                          "COL_Manual.hxc", "Manual.hxf", "pages/Deep.HTML"};
    document->onBuild = [&](FakeDocument& d) {
        for (const auto* name : written) {
            outside.files->Put(kFolder + std::string(name), "written");
            d.ContentMade.emit(name);
        }
    };
    build();
    for (const auto* name : {"Intro.html", "Manual.hhp", "pages/Deep.HTML"})
        EXPECT_FALSE(has(std::string(kFolder) + name)) << name;
    for (const auto* name : {"col_list.html", "Manual.chm", "COL_Manual.hxc", "Manual.hxf"})
        EXPECT_TRUE(has(std::string(kFolder) + name)) << name;
}

TEST_F(BuildDriverTest, GoesOnWhereAFileCannotBeDeleted) {
    outside.files->Put("/work/manual/Last.html", "written");
    document->onBuild = [](FakeDocument& d) {
        d.ContentMade.emit("NeverWritten.html");
        d.ContentMade.emit("Last.html");
    };
    build();
    EXPECT_FALSE(has("/work/manual/Last.html"));
}

TEST_F(BuildDriverTest, DeletesBelowTheOutputRootWhereOneIsSet) {
    outside.files->Put("/site/Intro.html", "written");
    outside.files->Put("/work/manual/Intro.html", "the author's");
    document->OutputRoot = "/site";
    document->onBuild = [](FakeDocument& d) { d.ContentMade.emit("Intro.html"); };
    build();
    EXPECT_FALSE(has("/site/Intro.html"));
    EXPECT_TRUE(has("/work/manual/Intro.html"));
}

TEST_F(BuildDriverTest, DeletesNothingWithoutCompilingOrCleaningUp) {
    outside.files->Put("/work/manual/Intro.html", "written");
    document->onBuild = [](FakeDocument& d) { d.ContentMade.emit("Intro.html"); };
    build(false, true);
    EXPECT_TRUE(has("/work/manual/Intro.html"));
    EXPECT_FALSE(document->Compile);
    build(true, false);
    EXPECT_TRUE(has("/work/manual/Intro.html"));
}

TEST_F(BuildDriverTest, PutsPagesBesideTheProjectAndTheHelpFileWhereItIsWanted) {
    outside.files->Put("/out/readme.txt", "so that the folder is there");
    project->SetOutputFileName("/out/Manual.chm");
    build();
    EXPECT_EQ(document->OutputPath, kFolder);
    EXPECT_EQ(document->OutputFileName, "/out/Manual.chm");
    EXPECT_TRUE(outside.messages->shown.empty());
}

TEST_F(BuildDriverTest, TakesARelativeOutputFileFromTheProjectsFolder) {
    project->SetOutputFileName("Manual.chm");
    build();
    EXPECT_EQ(document->OutputFileName, "/work/manual/Manual.chm");
}

TEST_F(BuildDriverTest, CreatesTheOutputFolderOnYes) {
    project->SetOutputFileName("/new/place/Manual.chm");
    outside.messages->answers = {MessageAnswer::mbYes};
    EXPECT_FALSE(build()->Cancelled);
    ASSERT_EQ(outside.messages->shown.size(), 1u);
    const auto& box = outside.messages->shown.front();
    EXPECT_EQ(box.text,
              "The specified output path '/new/place/' doesn't exist.  Would you like to create it?");
    EXPECT_EQ(box.title, "Codemark path does not exist");
    EXPECT_EQ(box.buttons, MessageButtons::bsYesNo);
    EXPECT_EQ(box.icon, MessageIcon::biQuestion);
    EXPECT_THAT(outside.files->Calls(), testing::Contains(HasSubstr("make folder /new/place")));
}

TEST_F(BuildDriverTest, FailsOnNoAsThereIsNothingToUnload) {
    project->SetOutputFileName("/new/place/Manual.chm");
    outside.messages->answers = {MessageAnswer::mbNo, MessageAnswer::mbOK};
    EXPECT_EQ(failureOf([&] { build(); }), "There is no related project to unload");
    ASSERT_EQ(outside.messages->shown.size(), 2u);
    EXPECT_EQ(outside.messages->shown[1].text, "Could not access output path, build cancelled");
    EXPECT_EQ(outside.messages->shown[1].icon, MessageIcon::biInformation);
    EXPECT_EQ(document->builds, 0);
}

TEST_F(BuildDriverTest, FailsWithoutAnyTemplate) {
    engine->templates->Remove("Help");
    EXPECT_EQ(failureOf([&] { build(); }), "There is no page template for this project");
    EXPECT_EQ(document->builds, 0);
}

TEST_F(BuildDriverTest, BuildsAgainInTheSameDocumentAfterAFailure) {
    document->onBuild = [](FakeDocument&) { throw AutomationError("The disk is full"); };
    EXPECT_EQ(failureOf([&] { build(); }), "The disk is full");
    document->onBuild = nullptr;
    EXPECT_FALSE(build()->Cancelled);
}

TEST_F(BuildDriverTest, LeavesNothingAliveAfterAFailure) {
    engine->onNew = [](FakeDocument& d) {
        d.onBuild = [](FakeDocument&) { throw AutomationError("The disk is full"); };
    };
    const auto aliveAfterBuild = [&] {
        Ref<Document> none;
        EXPECT_EQ(failureOf([&] { project->Build(none, "", false, true, true); }), "The disk is full");
        engine->made.clear();
        return Object::Alive();
    };
    const auto first = aliveAfterBuild();
    EXPECT_EQ(aliveAfterBuild(), first);
}

TEST_F(BuildDriverTest, RefusesABuildInsideABuild) {
    std::string failure;
    document->onBuild = [&](FakeDocument&) {
        Ref<Document> none;
        failure = failureOf([&] { project->Build(none, "", false, true, true); });
    };
    build();
    EXPECT_EQ(failure, "A build of this project is under way already");
}

struct LayoutCase {
    const char *layoutName, *page;
    bool generated;
};
class LayoutTest : public BuildDriverTest, public testing::WithParamInterface<LayoutCase> {};

TEST_P(LayoutTest, KeepsATopicToItsLayout) {
    const auto topic = addTopic("Intro");
    topic->SetLayoutName(GetParam().layoutName);
    bool dontGenerate = false;
    document->onBuild = [&](FakeDocument& d) {
        const auto page = make<TemplatePage>();
        page->Name = GetParam().page;
        d.BeforeOutputNamespacePage.emit(page, nullptr, topic, dontGenerate);
    };
    build();
    EXPECT_EQ(dontGenerate, !GetParam().generated);
}

INSTANTIATE_TEST_SUITE_P(Layouts, LayoutTest,
                         testing::Values(LayoutCase{"Wide", "Wide.html", true},
                                         LayoutCase{"Wide", "WIDE.HTML", true},
                                         LayoutCase{"Wide", "Topic.html", false},
                                         LayoutCase{"", "topic.html", true},
                                         LayoutCase{"", "Wide.html", false}));

TEST_F(BuildDriverTest, PutsOtherItemsOnEveryPage) {
    bool dontGenerate = false;
    document->onBuild = [&](FakeDocument& d) {
        d.BeforeOutputNamespacePage.emit(make<TemplatePage>(), nullptr, project, dontGenerate);
        d.BeforeOutputNamespacePage.emit(make<TemplatePage>(), nullptr, nullptr, dontGenerate);
    };
    build();
    EXPECT_FALSE(dontGenerate);
}

TEST_F(BuildDriverTest, HearsTheDocumentNoMoreAfterTheBuild) {
    build();
    bool dontGenerate = false;
    const auto page = make<TemplatePage>();
    page->Name = "Other.html";
    document->BeforeOutputNamespacePage.emit(page, nullptr, addTopic("Intro"), dontGenerate);
    EXPECT_FALSE(dontGenerate);
}

TEST(IntermediateFiles, AreKnownByTheirNames) {
    for (const auto* name : {"a.html", "A.HTML", "m.hhc", "m.HHK", "m.hhp", "m.hxc", "m.hxt", "m.hxk",
                             "col_m.hxc", "COL_a.html", "COL_m.hhp"}) {
        EXPECT_TRUE(isIntermediate(name)) << name;
    }
    for (const auto* name :
         {"m.hxf", "m.chm", "COL_m.hxc", "COL_m.hxt", "COL_m.hxk", "a.htm", "a.png", "", "h"}) {
        EXPECT_FALSE(isIntermediate(name)) << name;
    }
}

class ProjectTemplateTest : public BuildTest {};

TEST_F(ProjectTemplateTest, IsTheOneThatTheProjectNames) {
    const auto other = engine->AddTemplate("Other", "p");
    project->SetTemplateName("OTHER");
    EXPECT_EQ(project->Template(), other);
}

TEST_F(ProjectTemplateTest, FallsBackToTheFirstForHelp) {
    engine->templates->Remove("Help");
    engine->AddTemplate("Print", "xp");
    engine->AddTemplate("Foreign")->namespaces = make<Collection>();
    const auto second = engine->AddTemplate("Second", "x");
    engine->AddTemplate("Third");
    project->SetTemplateName("No longer there");
    EXPECT_EQ(project->Template(), second);
    EXPECT_EQ(project->TemplateName(), "No longer there");
}

TEST_F(ProjectTemplateTest, IsNoneWhereNothingFits) {
    engine->templates->Remove("Help");
    EXPECT_EQ(project->Template(), nullptr);
    EXPECT_EQ(project->DefaultTopicLayout(), "");
}

TEST_F(ProjectTemplateTest, GivesItsFirstTopicPageAsDefaultLayout) {
    engine->templates->Remove("Help");
    const auto pageTemplate = engine->AddTemplate("Pages");
    pageTemplate->AddPage("Index.html", "");
    EXPECT_EQ(project->DefaultTopicLayout(), "");
    pageTemplate->AddPage("Narrow.html", "CM.Quillbox:TOPIC");
    pageTemplate->AddPage("Wide.html", "cm.quillbox:topic");
    EXPECT_EQ(project->DefaultTopicLayout(), "Narrow.html");
}

TEST_F(ProjectTemplateTest, CopiesItsSupportFilesBesideTheProject) {
    engine->made.clear();
    project->CopySupportFiles();
    ASSERT_EQ(engine->made.size(), 1u);
    EXPECT_THAT(engine->made.front()->copied, ElementsAre("Help to /work/manual/"));
}

}  // namespace
}  // namespace quillbox
