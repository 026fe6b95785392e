#include "content/OtherFiles.h"

#include <array>

#include "base/Text.h"
#include "frame/Platform.h"
#include "frame/XmlAccess.h"
#include "project/QbProject.h"

namespace quillbox {

namespace {

// Two spellings of one place: both separators count the same.
std::string placeOf(const std::string& path) { return replaceAll(path, "\\", "/"); }

// Measures a file's path from the project file while it lives; the base must not stay set.
class RelativeToProject {
  public:
    RelativeToProject(FileSystemObject& file, const Ref<FileSystemObject>& base) : mFile(file) {
        mFile.SetRelativeTo(base);
    }
    ~RelativeToProject() { mFile.SetRelativeTo(nullptr); }
    RelativeToProject(const RelativeToProject&) = delete;
    RelativeToProject& operator=(const RelativeToProject&) = delete;

  private:
    FileSystemObject& mFile;
};

}  // namespace

OtherFile::OtherFile() : mFilename(platform().files->NewFileSystemObject()) {}

void OtherFile::SetFilename(const Ref<FileSystemObject>& file) {
    if (!file) throw AutomationError("An other file needs a file object");
    mFilename = file;
    FileSystemObject::WatchedPaths().Changed();
}

const ElementTraits& OtherFile::traits() const {
    static constexpr ElementTraits row{"Checked Out by Quillbox", false, false, true, false, true};
    return row;
}

void OtherFile::raiseStatusChanged() {
    CheckoutStatusChanged();
    mQbProject.Need()->FireOtherFileCheckoutStatusChanged(self(this));
}

std::string OtherFile::RelativeFileName() const {
    const RelativeToProject relative(*mFilename, mQbProject.Need()->Filename);
    return mFilename->RelativePath();
}

std::string OtherFile::SSSpec() const {
    return mQbProject.Need()->SSProject() + replaceAll(RelativeFileName(), "\\", "/");
}

void OtherFile::WriteContent(const Ref<XMLElement>& e) const {
    e->AddAttribute("FileName", RelativeFileName());
}

void OtherFile::Save(const Ref<XMLElement>& e) {
    WriteContent(e);
    if (NewFlag && mQbProject.Need()->SSActivated()) AddToSourceSafe();
    NewFlag = false;
}

void OtherFile::Load(const Ref<XMLElement>& e) {
    std::string full;
    {
        const RelativeToProject relative(*mFilename, mQbProject.Need()->Filename);
        mFilename->SetPath(required(e, "FileName"));
        full = mFilename->FullPath();
    }
    mFilename->SetPath(full);
    NewFlag = false;
}

bool OtherFile::IsImage() const {
    static constexpr std::array<std::string_view, 5> kinds{"png", "bmp", "gif", "jpg", "pcx"};
    const auto extension = lower(mFilename->Extension());
    return std::find(kinds.begin(), kinds.end(), extension) != kinds.end();
}

bool OtherFile::IsStyleSheet() const { return sameText(mFilename->Extension(), "css"); }

bool OtherFile::AddToSourceSafe() {
    const auto project = mQbProject.Need();
    if (project->DoesSSItemExist(SSSpec())) return true;
    auto folder = project->VSSItem(project->SSProject());
    const auto needFolder = [&] {
        if (!folder) throw AutomationError("The source control folder of '" + LocalSpec() + "' is not there");
    };
    auto parts = split(placeOf(RelativeFileName()), "/");
    parts.pop_back();
    auto spec = project->SSProject();
    for (const auto& part : parts) {
        spec += part + "/";
        if (project->DoesSSProjectExist(spec)) {
            folder = project->VSSItem(spec);
        } else {
            needFolder();
            folder = folder->NewSubproject(part, kCreateComment);
        }
    }
    needFolder();
    folder->Add(LocalSpec(), kAddComment, 0);
    CheckOut("Checked out by Quillbox");
    return true;
}

Ref<OtherFile> OtherFiles::byName(const std::string& filename) const {
    return mNames.Find(
        placeOf(filename), FileSystemObject::WatchedPaths().Count(), [&] { return Items(); },
        [](const OtherFile& file) {
            file.Filename()->Watch();
            return placeOf(file.Filename()->FullPath());
        });
}

void OtherFiles::forgetNames() {
    mNames.Forget();
    mStyleSheets = {};
}

const std::vector<std::string>& OtherFiles::StyleSheetNames() const {
    const auto base = mQbProject.Need()->Filename;
    const auto& state = FileSystemObject::WatchedPaths();
    if (mStyleSheets.base != base || mStyleSheets.state != state.Count()) {
        base->Watch();
        mStyleSheets = {{}, base, 0};
        for (const auto& file : Items()) {
            file->Filename()->Watch();
            if (file->IsStyleSheet()) mStyleSheets.names.push_back(file->RelativeFileName());
        }
        mStyleSheets.state = state.Count();
    }
    return mStyleSheets.names;
}

Ref<OtherFile> OtherFiles::Item(const Value& key) const {
    if (auto file = find(key)) return file;
    const auto* name = key.If<std::string>();
    return name ? byName(*name) : nullptr;
}

void OtherFiles::Add(const Ref<OtherFile>& item, const Value& key, const Value& before, const Value& after) {
    mCol.Add(item, key, before, after);
    forgetNames();
    const auto project = QbProject();
    if (project && !PauseEvents) project->FireOtherFileAdded(item);
    // A file that was taken out and put back before the save is not deleted.
    ignoringFailures([&] { mDeletedFiles->Remove(toText(key)); });
}

void OtherFiles::Remove(const Value& key) {
    const auto file = mCol.Remove(key);
    forgetNames();
    const auto project = QbProject();
    if (!project || PauseEvents) return;
    project->FireOtherFileRemoved(file);
    mDeletedFiles->Add(file, file->LocalSpec());
}

}  // namespace quillbox
