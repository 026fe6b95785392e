#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/FoldedMap.h"
#include "engine/BuildPlan.h"
#include "engine/Compiler.h"
#include "engine/EngineDocument.h"
#include "engine/LocalFiles.h"
#include "engine/PageFile.h"
#include "engine/PageWork.h"
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
    void generate(BuildRecord& record);
    std::optional<CompileJob> planCompiling();

    // Who writes into the folder: the project, by its place from there, and the template.
    std::string owner() const;

    void copySupport();
    void writePages();
    void offerPage(const PlannedPage& page, PageWork& work);
    void writePage(const PlannedPage& page, PageWork& work);
    void writeSearchIndex();
    bool isKept(const std::string& name) const;
    // What earlier builds wrote and this one does not.
    void removeStale(BuildRecord& record);
    void reportLocalFiles();
    void writeInputs();
    Ref<PageFile> makePage(const PlannedPage& page);
    std::string bytesOf(const PlannedPage& page, PageFile& file);
    void compileHelp(CompileJob job);
    // Of a file that is on disk.
    void tell(const std::string& name);
    void report(const std::string& name);
    std::string compilerInput() const;

    EngineDocument& mDocument;
    BuildState* mState = nullptr;
    std::shared_ptr<const std::vector<ItemSource>> mSources;
    BuildPlan mPlan;
    LocalFiles mLocalFiles;
    std::optional<SearchIndex> mSearchIndex;
    // The files of the project.
    FoldedSet mKept;
    int mDone = 0, mTotal = 0;
    // An old page, whose room serves the next.
    std::string mRoom;
};

}  // namespace quillbox
