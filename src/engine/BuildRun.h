#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/BuildPlan.h"
#include "engine/Compiler.h"
#include "engine/EngineDocument.h"
#include "engine/LocalFiles.h"
#include "engine/PageFile.h"
#include "engine/SearchIndex.h"

namespace quillbox {

// One build of a document, from the support files to the compiled help.
class BuildRun {
  public:
    explicit BuildRun(EngineDocument& document) : mDocument(document) {}

    void Run();

  private:
    void startClean();
    Ref<FolderTemplate> ownTemplate();
    void build();
    std::optional<CompileJob> planCompiling();

    void copySupport();
    void writePages();
    void offerPage(const PlannedPage& page);
    void writePage(const PlannedPage& page);
    void writeSearchIndex();
    void reportLocalFiles();
    void writeInputs();
    // Makes the page's text and puts it on disk.
    void makePage(const PlannedPage& page);
    std::string bytesOf(const PlannedPage& page, PageFile& file);
    void compileHelp(CompileJob job);
    void report(const std::string& name);
    std::string compilerInput() const;

    EngineDocument& mDocument;
    BuildState* mState = nullptr;
    std::shared_ptr<const std::vector<ItemSource>> mSources;
    BuildPlan mPlan;
    LocalFiles mLocalFiles;
    std::optional<SearchIndex> mSearchIndex;
    int mDone = 0, mTotal = 0;
};

}  // namespace quillbox
