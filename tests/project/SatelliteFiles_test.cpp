#include "support/ProjectTest.h"
#include "support/SampleProject.h"

namespace quillbox {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// The files beside the project file of a separate-files project, when they are not as they should be.
class SatelliteFiles : public ProjectTest, public testing::WithParamInterface<const char*> {
  protected:
    SatelliteFiles() {
        fillSample(*project);
        project->SetProjectType(ProjectTypeSeparateFiles);
        project->SaveToDisk();
        path = std::string(GetParam()) == "Topic" ? project->Topics->Item(1)->LocalSpec()
                                                  : std::string(kFolder) + "ProjectData/" + GetParam();
        text = bytes(path);
    }
    std::string load() {
        project = newProject();
        return failureOf([&] { project->LoadFromFile(kFile); });
    }
    // How much of what the file holds was read.
    int count() const {
        const std::string name = GetParam();
        if (name == "Glossary.xml") return project->GlossaryItems()->Count();
        if (name == "Tasks.xml") return project->Tasks->Count();
        if (name == "Manifests.xml") return project->Manifests()->Count();
        if (name == "TableOfContents.xml") return project->QbNodes()->Count();
        return static_cast<int>(project->Topics->Item(1)->Name().size());
    }

    std::string path, text;
};

TEST_P(SatelliteFiles, WholeFilesLoad) {
    EXPECT_EQ(load(), "no failure");
    EXPECT_GT(count(), 0);
    EXPECT_FALSE(project->Dirty());
}

TEST_P(SatelliteFiles, AMissingFileIsNoFailure) {
    newFile(path)->Delete();
    EXPECT_EQ(load(), "no failure");
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(project->Topics->Count(), 2);
}

TEST_P(SatelliteFiles, AFileThatIsCutOffFailsAndIsNamedItself) {
    for (std::size_t size = 0; size < text.find_last_of('>'); size += 97) {
        outside.files->Put(path, text.substr(0, size));
        EXPECT_THAT(load(), AllOf(StartsWith(path + ": "), HasSubstr("ine "))) << size;
    }
}

TEST_P(SatelliteFiles, TheRootMayHaveAnyName) {
    const auto end = text.find_first_of(" />", text.find('<', 5) + 1);
    const auto name = text.substr(text.find('<', 5) + 1, end - text.find('<', 5) - 1);
    auto renamed = replaceAll(text, "<" + name + ">", "<Any>");
    renamed = replaceAll(renamed, "<" + name + " ", "<Any ");
    renamed = replaceAll(renamed, "</" + name + ">", "</Any>");
    ASSERT_NE(renamed, text);
    outside.files->Put(path, renamed);
    EXPECT_EQ(load(), "no failure");
    EXPECT_GT(count(), 0);
}

TEST_P(SatelliteFiles, AnItemThatLacksSomethingFailsWithTheLineOfItsOwnFile) {
    const std::string name = GetParam();
    const std::string bad = name == "Topic" ? "<Any>\n\n<s k='Unknown'/></Any>" : "<Any>\n\n<x/></Any>";
    outside.files->Put(path, bad);
    EXPECT_THAT(load(), StartsWith(path + ": line 3, element '" + (name == "Topic" ? "s" : "x") + "': "));
}

TEST_P(SatelliteFiles, AFolderInItsPlaceFailsAndIsNamed) {
    newFile(path)->Delete();
    outside.files->Put(path + "/inside", "");
    EXPECT_THAT(load(), HasSubstr(path));
}

TEST_P(SatelliteFiles, NoFileIsTouchedByALoad) {
    outside.files->ForgetCalls();
    load();
    EXPECT_THAT(outside.files->Calls(), testing::Each(StartsWith("read ")));
}

TEST_P(SatelliteFiles, AFileThatIsReadOnlyFailsTheSaveAndKeepsItsText) {
    load();
    for (const auto& topic : project->Topics->Items()) topic->SetDirty(true);
    project->GlossaryItems()->SetDirty(true);
    project->Tasks->SetDirty(true);
    project->Manifests()->SetDirty(true);
    project->QbNodes()->SetDirty(true);
    outside.files->SetReadOnly(path, true);
    EXPECT_THAT(failureOf([&] { project->SaveToDisk(); }),
                AllOf(HasSubstr(path), Not(HasSubstr("Manual.qbp"))));
    EXPECT_EQ(bytes(path), text);
    EXPECT_TRUE(project->Dirty());
}

class CollectionFiles : public SatelliteFiles {
  protected:
    // The file with more behind its items.
    void putBehindItems(const std::string& more) const {
        outside.files->Put(path, std::string(text).insert(text.rfind("</"), more));
        outside.files->ForgetCalls();
    }

    int before = count();
};

TEST_P(CollectionFiles, ADamagedItemFailsAndKeepsThoseBeforeIt) {
    putBehindItems("<x/><y/>");
    EXPECT_THAT(load(), AllOf(StartsWith(path + ": line "), HasSubstr("element 'x'")));
    EXPECT_EQ(count(), before);
    EXPECT_THAT(outside.files->Calls(), testing::Each(StartsWith("read ")));
}

TEST_P(CollectionFiles, AKeyThatStandsTwiceFailsAtTheSecondAndKeepsTheFirst) {
    const auto items = text.find("\n  <");
    putBehindItems(text.substr(items, text.rfind("</") - items));
    EXPECT_THAT(load(), AllOf(StartsWith(path + ": line "), HasSubstr("already")));
    EXPECT_EQ(count(), before);
    EXPECT_THAT(outside.files->Calls(), testing::Each(StartsWith("read ")));
}

std::string plainName(const testing::TestParamInfo<const char*>& info) {
    const std::string name = info.param;
    return name.substr(0, name.find('.'));
}

INSTANTIATE_TEST_SUITE_P(Each, SatelliteFiles,
                         testing::Values("Topic", "Glossary.xml", "Tasks.xml", "Manifests.xml",
                                         "TableOfContents.xml"),
                         plainName);
INSTANTIATE_TEST_SUITE_P(Each, CollectionFiles,
                         testing::Values("Glossary.xml", "Tasks.xml", "Manifests.xml", "TableOfContents.xml"),
                         plainName);

}  // namespace
}  // namespace quillbox
