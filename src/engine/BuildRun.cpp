#include "engine/BuildRun.h"

#include <filesystem>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "engine/Disk.h"
#include "engine/Expansion.h"
#include "engine/SupportFiles.h"

namespace quillbox {

namespace {

// Compilers come from a system whose lines end so.
std::string withBothLineEnds(const std::string& text) {
    std::string result;
    result.reserve(text.size() + text.size() / 16);
    std::size_t start = 0;
    for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        result.append(text, start, at - start);
        if (at == 0 || text[at - 1] != '\r') result += '\r';
        start = at;
    }
    return result.append(text, start);
}

// Puts down what was written, however the build ends.
class Recording {
  public:
    Recording(BuildRecord& record, const OutputFolder& output) : mRecord(record), mOutput(output) {}
    ~Recording() {
        if (!mWhole) ignoringFailures([&] { mRecord.SaveUnfinished(mOutput.Written()); });
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    void Whole() {
        mRecord.Save(mOutput.Written());
        mWhole = true;
    }

  private:
    BuildRecord& mRecord;
    const OutputFolder& mOutput;
    bool mWhole = false;
};

}  // namespace

void BuildRun::Run() {
    if (mDocument.mState) throw AutomationError("A build of this document is under way already");
    const TemplateLibrary::Hold hold(mDocument.Shared().templates);
    startClean();
    const auto own = ownTemplate();
    own->ReadAll();
    mDocument.mState =
        std::make_unique<BuildState>(OutputFolder(mDocument.OutputPath, mDocument.OutputRoot), own);
    mState = mDocument.mState.get();
    struct End {
        EngineDocument& document;
        ~End() { document.mState.reset(); }
    } const end{mDocument};
    build();
}

// What an earlier build of the document left behind counts for nothing; contents of related projects stay.
void BuildRun::startClean() {
    mDocument.mProviders.clear();
    mDocument.mLog.clear();
    mDocument.mCancelled = false;
    mDocument.DefaultTopic.clear();
    mDocument.CompilerInputFile.clear();
    for (const auto& name : {mDocument.mBuiltTemplate, mDocument.TemplateName}) {
        if (mDocument.TOCDefs->HasKey(name)) mDocument.TOCDefs->Remove(name);
    }
    mDocument.mBuiltTemplate = mDocument.TemplateName;
}

Ref<FolderTemplate> BuildRun::ownTemplate() {
    const auto found = mDocument.Template();
    if (!found) throw AutomationError("The document has no page template '" + mDocument.TemplateName + "'");
    const auto own = std::dynamic_pointer_cast<FolderTemplate>(found);
    if (!own)
        throw AutomationError("The page template '" + mDocument.TemplateName +
                              "' lies in no folder of templates");
    return own;
}

void BuildRun::build() {
    mSources = mDocument.Sources();
    if (mSources->empty()) {
        throw AutomationError("The page template '" + mState->pageTemplate->Name() +
                              "' lists no namespace that is known here");
    }
    for (const auto& source : *mSources) {
        source.provider->BeforeProcessRootItem(source.root);
        source.data->SetCurrentRootItem(source.root);
    }
    mPlan = makePlan(mDocument, *mSources);
    checkKeptFiles(mDocument, mPlan);
    for (const auto& name : mDocument.KeptFiles->Texts()) mKept.insert(disk::withSlashes(name));
    auto job = planCompiling();
    BuildRecord record(mState->output.Disk(), owner());
    generate(record);
    for (const auto& note : mState->notes.lines) mDocument.mLog += "Note: " + note + "\n";
    if (job && !mDocument.mCancelled) compileHelp(*std::move(job));
}

void BuildRun::generate(BuildRecord& record) {
    Recording recording(record, mState->output);
    copySupport();
    if (const auto& search = mState->pageTemplate->Search()) mSearchIndex.emplace(search->function);
    writePages();
    if (mDocument.mCancelled) return;
    writeSearchIndex();
    for (const auto& source : *mSources) source.provider->AfterProcessRootItem(source.root);
    removeStale(record);
    reportLocalFiles();
    writeInputs();
    if (!mDocument.mCancelled) recording.Whole();
}

std::string BuildRun::owner() const {
    const auto file = mDocument.ReadProperty(mSources->front().root, "QualifiedName").value_or("");
    const auto absolute = [](const std::string& path) { return std::filesystem::absolute(path); };
    const auto place = file.empty() ? file
                                    : absolute(disk::withSlashes(file))
                                          .lexically_relative(absolute(mState->output.Disk()))
                                          .generic_string();
    return place + ", " + mState->pageTemplate->Name();
}

// Whatever keeps the compiler from its work is told before the first page is written.
std::optional<CompileJob> BuildRun::planCompiling() {
    if (!mDocument.Compile || mPlan.inputs.empty()) return {};
    CompileJob job;
    job.compiler = findCompiler(mDocument.CompilerFileName, toInteger(leadingNumber(mDocument.CompileType)));
    job.folder = disk::asFolder(std::filesystem::absolute(mState->output.Disk()).string());
    job.compiledName = compiledFileName(mDocument);
    job.target = mState->output.OnDisk(mDocument.OutputFileName);
    checkTarget(job);
    return job;
}

void BuildRun::copySupport() {
    auto& provider = *mSources->front().provider;
    for (const auto& name : mPlan.support) {
        mState->output.Claim(name, "the support files of the template");
        copySupportFile(*mState->pageTemplate, name, mState->output);
        if (endsWithText(name, ".css"))
            mLocalFiles.ScanStyles(name, disk::read(mState->output.DiskName(name)));
        provider.ContentCreated(nullptr, nullptr, mState->output.FullName(name));
    }
}

void BuildRun::writePages() {
    for (const auto& page : mPlan.pages) {
        auto& known = mState->pages[page.name];
        if (known.offers++ == 0) known.item = page.item;
    }
    mTotal = static_cast<int>(mState->pages.size());
    if (!mPlan.pages.empty()) mState->firstPage = mPlan.pages.front().name;
    PageWork work(mState->output, mState->notes, mLocalFiles, mSearchIndex ? &*mSearchIndex : nullptr);
    for (const auto& page : mPlan.pages) {
        if (mDocument.mCancelled) break;
        offerPage(page, work);
    }
    work.Settle();
}

void BuildRun::offerPage(const PlannedPage& page, PageWork& work) {
    auto& provider = *page.source->provider;
    auto& known = mState->pages.at(page.name);
    provider.BeforeProcessItem(page.item, page.source->root);
    bool dontGenerate = false;
    if (page.layout->IsBound()) {
        mDocument.BeforeOutputNamespacePage.emit(page.layout, page.def, page.item, dontGenerate);
    }
    --known.offers;
    if (dontGenerate) {
        if (known.offers == 0 && !mState->output.IsClaimed(page.name)) --mTotal;
    } else if (!mDocument.mCancelled) {
        writePage(page, work);
    }
    provider.AfterProcessItem(page.item, page.source->root);
}

void BuildRun::writePage(const PlannedPage& page, PageWork& work) {
    const auto file = makePage(page);
    auto& finished = work.Next();
    finished.name = page.name;
    finished.isSearched = page.layout->isSearched;
    finished.encoding = page.layout->encoding;
    finished.language = &mDocument.Language();
    finished.raw = file->Raw();
    std::swap(finished.html, file->Text());
    mRoom = std::move(file->Text());
    work.Add();
    page.source->provider->ContentCreated(page.item, page.def, mState->output.FullName(page.name));
    mDocument.ContentMade.emit(page.name);
    // Whoever hears this may look at the file.
    if (!mDocument.ContentCreated.empty()) work.Settle();
    mDocument.ContentCreated.emit(page.name);
    ++mDone;
    report(page.name);
}

Ref<PageFile> BuildRun::makePage(const PlannedPage& page) {
    mState->output.Claim(page.name, page.layout->Name);
    mState->pageName = page.name;
    mState->readingPlace.reset();
    mState->layout = page.layout;
    auto& data = *page.source->data;
    data.SetCurrentItem(page.def, page.item, page.def ? page.def->Name : "", page.parent);
    const auto file = make<PageFile>(mState->output.FullName(page.name));
    file->Text() = std::move(mRoom);
    file->Text().clear();
    auto& pageTemplate = *mState->pageTemplate;
    expandThrough(data, pageTemplate.PageText(page.layout->Name), pageTemplate.Path() + page.layout->Name,
                  page.name, file, file->Text());
    mState->pageName.clear();
    mState->layout = nullptr;
    return file;
}

std::string BuildRun::bytesOf(const PlannedPage& page, PageFile& file) {
    auto& text = file.Text();
    const auto encoding = page.layout->encoding;
    if (isAsItStands(text, encoding)) return std::move(text);
    return encode(page.name, text, encoding, mDocument.Language(), file.Raw(), mState->notes);
}

void BuildRun::writeSearchIndex() {
    if (!mSearchIndex) return;
    const auto folder = disk::asFolder(mState->pageTemplate->Search()->folder);
    for (const auto& script : mSearchIndex->Scripts()) {
        const auto name = checkedOutputName(folder + script.name + ".js");
        mState->output.Claim(name, "the search index");
        mState->output.Write(name, script.text);
        mSources->front().provider->ContentCreated(nullptr, nullptr, mState->output.FullName(name));
        tell(name);
    }
}

void BuildRun::tell(const std::string& name) {
    mDocument.ContentMade.emit(name);
    mDocument.ContentCreated.emit(name);
}

bool BuildRun::isKept(const std::string& name) const { return mKept.contains(name); }

void BuildRun::removeStale(BuildRecord& record) {
    std::unordered_set<std::string> inputs;
    for (const auto& input : mPlan.inputs) inputs.insert(input.name);
    record.RemoveStale(mState->output, [&](const std::string& name) {
        return mState->output.IsClaimedFile(name) || inputs.contains(name) || isKept(name);
    });
}

void BuildRun::reportLocalFiles() {
    auto& provider = *mSources->front().provider;
    for (const auto& name : mLocalFiles.Closure(mState->output)) {
        if (!isKept(name)) provider.ContentCreated(nullptr, nullptr, mState->output.FullName(name));
    }
}

void BuildRun::writeInputs() {
    for (const auto& page : mPlan.inputs) {
        if (mDocument.mCancelled) return;
        mState->output.Write(page.name, withBothLineEnds(bytesOf(page, *makePage(page))));
        tell(page.name);
    }
}

std::string BuildRun::compilerInput() const {
    const auto& named = mDocument.CompilerInputFile;
    auto file =
        named.empty() ? mState->output.DiskName(mPlan.inputs.back().name) : mState->output.OnDisk(named);
    if (!disk::isFile(file)) {
        throw AutomationError("The template '" + mState->pageTemplate->Name() + "' wrote no compiler input " +
                              file);
    }
    return std::filesystem::absolute(file).string();
}

void BuildRun::compileHelp(CompileJob job) {
    job.inputFile = compilerInput();
    job.goOn = [this] {
        mDocument.Progress.emit("Compiling", mDone, mTotal);
        return !mDocument.mCancelled;
    };
    mDocument.mLog += compile(job);
}

void BuildRun::report(const std::string& name) {
    if (mDocument.Progress.empty()) return;
    const auto& verb = mDocument.ProgressVerb;
    mDocument.Progress.emit(mDocument.ProgressCaption + ": " + (verb.empty() ? "" : verb + " ") + name, mDone,
                            mTotal);
}

}  // namespace quillbox
