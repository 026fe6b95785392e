#include "support/Expected.h"
#include "support/ProjectTest.h"
#include "support/SampleProject.h"

namespace quillbox {
namespace {

using testing::HasSubstr;

// The exact text of a project that has one of everything, in both types.
class ProjectFormat : public ProjectTest {
  protected:
    ProjectFormat() { fillSample(*project); }

    void expectFile(const std::string& name, const std::string& path) {
        expectData("project/" + name, withoutVersion(bytes(path)));
    }
};

TEST_F(ProjectFormat, ASingleFileHoldsEverything) {
    project->SaveToDisk();
    expectFile("SingleFile.qbp", kFile);
}

TEST_F(ProjectFormat, SeparateFilesHoldTopicsAndCollections) {
    project->SetProjectType(ProjectTypeSeparateFiles);
    project->SaveToDisk();
    expectFile("SeparateFiles/Manual.qbp", kFile);
    int number = 0;
    for (const auto& topic : project->Topics->Items()) {
        expectFile("SeparateFiles/Topic" + std::to_string(++number) + ".xml",
                   "/work/manual/TopicData/" + topic->Key + ".xml");
    }
    for (const std::string name : {"Glossary.xml", "Manifests.xml", "TableOfContents.xml", "Tasks.xml"}) {
        expectFile("SeparateFiles/" + name, "/work/manual/ProjectData/" + name);
    }
}

TEST_F(ProjectFormat, ALoadedProjectIsSavedAsTheSameText) {
    for (const auto type : {ProjectTypeSingleFile, ProjectTypeSeparateFiles}) {
        project->SetProjectType(type);
        project->SaveToDisk();
        const auto other = newProject();
        other->LoadFromFile(kFile);
        const auto before = bytes(kFile);
        other->SaveToDisk();
        // Times of topics are days: the hours are lost by the load.
        const auto days = [](std::string text) { return replaceAll(text, " 15:09\"", " 00:00\""); };
        EXPECT_EQ(bytes(kFile), days(before));
        project = newProject();
        fillSample(*project);
    }
}

TEST_F(ProjectFormat, WhatWasSavedIsLoaded) {
    project->SaveToDisk();
    const auto other = newProject();
    other->LoadFromFile(kFile);
    EXPECT_EQ(other->Title(), "Manual & <more>");
    EXPECT_EQ(other->CMPFileName(), "C:\\Related\\Api.cmp");
    EXPECT_EQ(other->TemplateName(), "Web Help");
    EXPECT_EQ(other->SpellLastCheckDateTime(), project->SpellLastCheckDateTime());
    EXPECT_EQ(other->OutputFileName(), "/out/manual.chm");
    EXPECT_EQ(other->CompileType(), CompileHelp2);
    EXPECT_EQ(other->Help2Namespace(), "MS.Manual.1");
    EXPECT_EQ(other->Help2FileID(), "manual");
    EXPECT_EQ(other->SSProject(), "$/help/manual/");
    EXPECT_EQ(other->HelpContextIDHeaderFile(), "ids.h");
    EXPECT_EQ(other->VariableValues->Count(), 2);
    EXPECT_EQ(other->VariableValues->Item("company")->Value, "Pen & Ink");
    const auto intro = other->TopicByName("intro");
    ASSERT_NE(intro, nullptr);
    EXPECT_EQ(intro->TopicCategory(), other->TopicCategories->Item(1));
    EXPECT_EQ(intro->TopicSectionData("BodyText"), project->Topics->Item(1)->TopicSectionData("BodyText"));
    const auto usage = other->TopicByName("usage");
    EXPECT_EQ(usage->RelatedTopics()->Item(1)->ChildTopic(), intro);
    EXPECT_EQ(usage->RelatedTopics()->Item(2)->URL(), "https://example.org/?a=1&b=2");
    EXPECT_EQ(other->QbNodes()->Item(1)->ChildNodes->Item(1)->Topic(), intro);
    EXPECT_EQ(other->Tasks->Item(1)->CreatedOn(), project->Tasks->Item(1)->CreatedOn());
    EXPECT_EQ(other->Manifests()->Item(1)->Entries()->Item(1)->Topic(), intro);
    EXPECT_EQ(other->Manifests()->Item(1)->BookletProperties->MarginLeft(), 20.5f);
}

TEST_F(ProjectFormat, AnEmptyProjectSavesItsDefaults) {
    const auto empty = newProject();
    const auto text = empty->Save();
    EXPECT_THAT(text, HasSubstr(" Title=\"\" "));
    EXPECT_THAT(text, HasSubstr(" CompileType=\"1\" "));
    EXPECT_THAT(text, HasSubstr(" SSActivated=\"False\" SSProject=\"\" "));
    EXPECT_THAT(text, HasSubstr(" SaveDateTime=\"14/03/2026 15:09:26\" "));
    EXPECT_THAT(text, HasSubstr(" SpellLastCheckDateTime=\"30/12/1899 00:00:00\" "));
    EXPECT_THAT(text,
                HasSubstr("  <SpellIgnoreAllWordList/>\n  <GlossaryItems/>\n  <Manifests/>\n  <Nodes/>\n"
                          "  <Tasks/>\n</QbProject>\n"));
}

TEST_F(ProjectFormat, DatesOfOlderFilesAreReadInTheFashionOfTheirMachines) {
    const auto read = [&](const std::string& text) {
        project->SetSpellLastCheckDateTime({});
        project->Load("<QbProject SpellLastCheckDateTime='" + text + "'/>");
        return project->SpellLastCheckDateTime().Format("yyyy-mm-dd hh:nn:ss");
    };
    EXPECT_EQ(read("03/02/2025 04:05:06"), "2025-02-03 04:05:06");
    EXPECT_EQ(read("2/3/2025 4:05:06 PM"), "2025-02-03 16:05:06");
    EXPECT_EQ(read("2/3/2025 12:05:06 AM"), "2025-02-03 00:05:06");
    EXPECT_EQ(read("03.02.2025 04:05"), "2025-02-03 04:05:00");
    EXPECT_EQ(read("2025-02-03"), "2025-02-03 00:00:00");
    EXPECT_EQ(read("2/28/2025"), "2025-02-28 00:00:00");
    EXPECT_EQ(read("3/2/99"), "1999-02-03 00:00:00");
    EXPECT_EQ(read("3/2/29"), "2029-02-03 00:00:00");
    for (const auto* bad : {"", "soon", "1/2", "31/02/2025", "257/1/2025", "1/257/2025", "1/2/3/4/5/6/7",
                            "99999/1/1", "1/1/2025 25:00:00"}) {
        EXPECT_EQ(read(bad), "1899-12-30 00:00:00") << bad;
    }
}

}  // namespace
}  // namespace quillbox
