#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/engine/Document.h"

namespace quillbox {

class BuildResult;
class QbProject;
class RelatedProject;

struct BuildOrder {
    Ref<PageTemplate> pageTemplate;
    // Empty means that one is looked for.
    std::string compilerFileName;
    bool buildRelatedCMP = false;
    bool compile = true;
    bool cleanupAfterBuild = true;
};

// One build of a project: prepares the document engine, has it generate and compile until the log is clean or
// somebody gives up, and removes what was only needed on the way.
class BuildDriver {
  public:
    BuildDriver(const Ref<QbProject>& project, BuildOrder order);
    ~BuildDriver();
    BuildDriver(const BuildDriver&) = delete;
    BuildDriver& operator=(const BuildDriver&) = delete;

    // Works on the document that is passed, or on one of its own where that is none. After a failure the
    // project goes on hearing the document until its next build.
    Ref<BuildResult> Run(const Ref<Document>& passedDoc);

  private:
    void takeDocument(const Ref<Document>& passedDoc);
    bool prepareRelatedProject();
    bool loadRelatedProject(const std::string& file);
    void handOverProject();
    bool prepareOutputFolder();
    void chooseCompiler();
    void copyVariables();
    void handOverSettings();
    Ref<BuildResult> generate();
    void letGo();
    void cleanUp();

    Ref<QbProject> mProject;
    BuildOrder mOrder;
    Ref<Document> mDocument;
    // None where no related project is built.
    std::unique_ptr<RelatedProject> mRelated;
};

}  // namespace quillbox
