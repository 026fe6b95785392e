#pragma once

#include "support/FakeSourceSafe.h"
#include "support/ProjectTest.h"

namespace quillbox {

// A test on a project of separate files on a machine that has the source-control client.
class SourceControlTest : public ProjectTest {
  protected:
    SourceControlTest() {
        platform().sourceSafe = safe;
        resetSourceSafe();
        project->SetProjectType(ProjectTypeSeparateFiles);
        project->SetSSProject("$/help/manual");
        topic = addTopic("Intro", "<p>x</p>");
        addTerm("API");
        addNode("Node");
        addTask("Work");
        addEntry(addManifest("Book"), topic, "");
        outside.files->Put("/work/manual/img/a.png", "picture");
        file = addFile("/work/manual/img/a.png");
        project->SaveToDisk();
    }

    // Brings everything under source control, checked in.
    void import() {
        ASSERT_TRUE(project->AddToSourceSafe());
        project->SetSSActivated(true);
        project->SaveToDisk();
        safe->At("$/help/manual/Manual.qbp").text = bytes(kFile);
        for (auto& [spec, entry] : safe->entries) entry.user.clear();
        topic->ResetReadOnlyCache();
        file->ResetReadOnlyCache();
        safe->Take();
    }

    std::shared_ptr<FakeSourceSafe> safe = std::make_shared<FakeSourceSafe>();
    Ref<Topic> topic;
    Ref<OtherFile> file;
};

}  // namespace quillbox
