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
    void generate(BuildRecord& record);
    std::optional<CompileJob> planCompiling();

    // Who writes into the folder: the project, by its place from there, and the template.
    std::string owner() const;

    void copySupport();
    void writePages();
    void offerPage(const PlannedPage& page);
    void writePage(const PlannedPage& page);
    void writeSearchIndex();
    bool isKept(const std::string& name) const;
    // What earlier builds wrote and this one does not.
    void removeStale(BuildRecord& record);
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
    // The files of the project, in folded names.
    std::unordered_set<std::string> mKept;
    int mDone = 0, mTotal = 0;
    // What a page is likely to need, from the one before.
    std::size_t mUsualSize = 0;
};

}  // namespace quillbox
