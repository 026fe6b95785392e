#include "support/ProjectTest.h"
#include "topics/RelatedTopics.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LoadFromFile : public ProjectTest {
  protected:
    void put(const std::string& text) { outside.files->Put(kFile, text); }
};

TEST_F(LoadFromFile, AMissingFileChangesNothingAndTellsNothing) {
    project->SetTitle("Mine");
    addTopic("One");
    EventLog log(project);
    project->LoadFromFile("/work/manual/none.qbp");
    EXPECT_THAT(log.Take(), IsEmpty());
    EXPECT_EQ(project->Title(), "Mine");
    EXPECT_EQ(project->Filename->FullPath(), kFile);
    EXPECT_EQ(project->Topics->Count(), 1);
    EXPECT_TRUE(project->Dirty());
}

TEST_F(LoadFromFile, TheNameIsTakenOverOnlyWhenAllIsRead) {
    outside.files->Put("/work/other/Other.qbp", "<QbProject><file FileName='a.css'/></QbProject>");
    std::string during;
    project->LoadProgress.connect([&](const std::string&) { during = project->Filename->FullPath(); });
    project->LoadFromFile("/work/other/Other.qbp");
    EXPECT_EQ(during, kFile);
    EXPECT_EQ(project->Filename->FullPath(), "/work/other/Other.qbp");
    EXPECT_EQ(project->OtherFiles->Item(1)->LocalSpec(), "/work/manual/a.css");
    EXPECT_FALSE(project->Dirty());
}

TEST_F(LoadFromFile, SeparateFilesAreReadFromTheFolderThatTheNameHeldBefore) {
    outside.files->Put("/work/other/Other.qbp", "<QbProject ProjectType='1'><Topic Key='k'/></QbProject>");
    outside.files->Put("/work/other/TopicData/k.xml", "<Topic Name='There'/>");
    outside.files->Put("/work/manual/TopicData/k.xml", "<Topic Name='Here'/>");
    project->LoadFromFile("/work/other/Other.qbp");
    EXPECT_EQ(project->Topics->Item(1)->Name(), "Here");
    const auto again = make<QbProject>();
    again->Filename->SetPath("/work/other/Other.qbp");
    again->LoadFromFile("/work/other/Other.qbp");
    EXPECT_EQ(again->Topics->Item(1)->Name(), "There");
}

TEST_F(LoadFromFile, AReadOnlyFileLoads) {
    put("<QbProject Title='x'/>");
    outside.files->SetReadOnly(kFile, true);
    project->LoadFromFile(kFile);
    EXPECT_EQ(project->Title(), "x");
}

TEST_F(LoadFromFile, AFolderCannotBeLoadedAndIsNamed) {
    EXPECT_THAT(failureOf([&] { project->LoadFromFile("/work/manual"); }), HasSubstr("/work/manual"));
}

TEST_F(LoadFromFile, OtherEncodingsAreRead) {
    put("\xEF\xBB\xBF<QbProject Title='\u00E4'/>");
    project->LoadFromFile(kFile);
    EXPECT_EQ(project->Title(), "\u00E4");
    put("<?xml version='1.0' encoding='windows-1252'?><QbProject Title='\x80'/>");
    project->LoadFromFile(kFile);
    EXPECT_EQ(project->Title(), "\u20AC");
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("<QbProject Title='x'/>")) wide += std::string{c, '\0'};
    put(wide);
    project->LoadFromFile(kFile);
    EXPECT_EQ(project->Title(), "x");
}

TEST_F(LoadFromFile, CaptionsAndItemEventsComeInTheOrderOfTheFile) {
    EventLog log(project);
    project->Load(R"(<QbProject TemplateName="Web">
        <Tasks/>
        <SpellIgnoreAllWordList>a</SpellIgnoreAllWordList>
        <cat Name="Class" Key="c"/>
        <VariableValue Name="v">1</VariableValue>
        <file FileName="a.css"/><file FileName="b.css"/>
        <Topic Key="k" Name="One"><r t="k" cat="c"/></Topic>
        <GlossaryItems/><Manifests/><Nodes/><other/>
      </QbProject>)");
    EXPECT_THAT(
        log.Take(),
        ElementsAre("TopicTemplateChanged(Web)", "TopicCategoryChanged(Class)", "TopicCategoryAdded(Class)",
                    "TopicAdded(One)", "LoadProgress(Loading Tasks)",
                    "LoadProgress(Loading Spelling Settings)", "LoadProgress(Loading Other Files List)",
                    "OtherFileAdded(/work/manual/a.css)", "LoadProgress(Loading Other Files List)",
                    "OtherFileAdded(/work/manual/b.css)", "LoadProgress(Loading Glossary)",
                    "LoadProgress(Loading Booklets)", "LoadProgress(Loading Table of Contents)"));
    EXPECT_FALSE(project->Dirty());
}

TEST_F(LoadFromFile, ALoadReplacesTheCollectionsAndKeepsTheWordsItHasNoElementFor) {
    addTopic("Old");
    addNode("Old");
    addTask("Old");
    project->SpellAddIgnoreAllWord("word");
    const auto topics = project->Topics;
    const auto nodes = project->QbNodes();
    project->Load("<QbProject/>");
    EXPECT_NE(project->Topics, topics);
    EXPECT_EQ(topics->Count(), 1);
    EXPECT_EQ(project->Topics->Count(), 0);
    EXPECT_EQ(project->Topics->QbProject(), project);
    EXPECT_THAT(project->SpellIgnoreAllWordList->Texts(), ElementsAre("word"));
    nodes->ItemAdded(nullptr);
    EXPECT_FALSE(project->Dirty());
    project->Load("<QbProject><SpellIgnoreAllWordList/></QbProject>");
    EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 0);
}

TEST_F(LoadFromFile, AnAttributeThatIsAbsentOrUnreadableLeavesItsProperty) {
    project->SetTitle("kept");
    project->SetCompileType(CompileHelp2);
    project->SetSpellLastCheckDateTime(*Date::From({2020, 1, 2, 0, 0, 0, 0}));
    project->SetSSProject("$/kept");
    for (const auto* attributes : {"", "CompileType='x' ProjectType='' SpellLastCheckDateTime='soon'",
                                   "CompileType='1.5' ProjectType='99999999999'"}) {
        project->Load(std::string("<QbProject ") + attributes + "/>");
        EXPECT_EQ(project->Title(), "kept");
        EXPECT_EQ(project->CompileType(), CompileHelp2);
        EXPECT_EQ(project->ProjectType(), ProjectTypeSingleFile);
        EXPECT_EQ(project->SpellLastCheckDateTime(), *Date::From({2020, 1, 2, 0, 0, 0, 0}));
        EXPECT_EQ(project->SSProject(), "$/kept/");
    }
    project->Load("<QbProject Title='' CompileType='0' ProjectType='7' SSActivated='true'/>");
    EXPECT_EQ(project->Title(), "");
    EXPECT_EQ(project->CompileType(), CompileHTMLHelp1);
    EXPECT_EQ(project->ProjectType(), 7);
}

TEST_F(LoadFromFile, AttributesAreReadInAnyCase) {
    project->Load(
        "<QbProject TITLE='t' outputfilename='o' HELP2FILEID='i' help2namespace='n' cmpFILEname='c' "
        "ssproject='$/' helpcontextidheaderfile='h' templatename='w'/>");
    EXPECT_EQ(project->Title() + project->OutputFileName() + project->Help2FileID() +
                  project->Help2Namespace() + project->CMPFileName() + project->SSProject() +
                  project->HelpContextIDHeaderFile() + project->TemplateName(),
              "toinc$/hw");
}

TEST_F(LoadFromFile, ElementsOfTheProjectAreReadInAnyCaseAndTheRootIsNot) {
    const auto count = [&](const std::string& root) {
        project->Load("<" + root + " Title='" + root +
                      "'><TOPIC Key='1'/><topic Key='2'/><FILE FileName='a'/>" +
                      "<GLOSSARYITEMS><x Key='' Term=''/></GLOSSARYITEMS></" + root + ">");
        EXPECT_EQ(project->Title(), root);
        return project->Topics->Count() * 100 + project->OtherFiles->Count() * 10 +
               project->GlossaryItems()->Count();
    };
    EXPECT_EQ(count("QbProject"), 211);
    EXPECT_EQ(count("TopicSet"), 211);
    EXPECT_EQ(count("qbproject"), 0);
    EXPECT_EQ(count("TOPICSET"), 0);
    EXPECT_EQ(count("Other"), 0);
}

TEST_F(LoadFromFile, ALoadOfTextThatDoesNotParseChangesNothing) {
    project->SetTitle("kept");
    addTopic("One");
    EventLog log(project);
    EXPECT_THAT(failureOf([&] { project->Load("<QbProject Title='new'><Topic></QbProject>"); }),
                HasSubstr("ine 1"));
    EXPECT_EQ(project->Title(), "kept");
    EXPECT_EQ(project->Topics->Count(), 1);
    project->SetTitle("told");
    EXPECT_EQ(log.Count("Changed"), 1);
}

TEST_F(LoadFromFile, ALoadThatFailsLeavesTheProjectLoadingUntilTheNextOne) {
    EXPECT_NE(failureOf([&] { project->Load("<QbProject><cat Name='a' Key='1'/><cat/></QbProject>"); }),
              "no failure");
    EXPECT_EQ(project->TopicCategories->Count(), 1);
    EventLog log(project);
    project->SetTitle("silent");
    EXPECT_THAT(log.Take(), IsEmpty());
    project->Load("<QbProject/>");
    log.Take();
    project->SetTitle("told");
    EXPECT_THAT(log.Take(), ElementsAre("Changed", "DirtyStateChanged"));
}

TEST_F(LoadFromFile, AFailureOfAHandlerLeavesAsItWasRaised) {
    project->LoadProgress.connect([](const std::string&) {
        throw AutomationError("stop", 7, std::make_exception_ptr(std::runtime_error("cause")));
    });
    put("<QbProject><Tasks/></QbProject>");
    try {
        project->LoadFromFile(kFile);
        FAIL();
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Description(), "stop");
        EXPECT_EQ(error.Number(), 7);
        EXPECT_NE(error.Cause(), nullptr);
    }
}

}  // namespace
}  // namespace quillbox
