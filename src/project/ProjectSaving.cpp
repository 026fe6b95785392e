// How a project is saved to its file.

#include "content/OtherFiles.h"
#include "frame/Platform.h"
#include "project/ProjectWriter.h"
#include "project/QbProject.h"
#include "topics/Topic.h"
#include "topics/Topics.h"

namespace quillbox {

namespace {

// One generation is kept; the extension is replaced and not added to.
void makeBackup(const FileSystemObject& file) {
    const auto backup = newFile(file.Directory() + file.BaseName() + ".bak");
    if (backup->FullPath() == file.FullPath()) return;
    ignoringFailures([&] {
        if (backup->Exists()) backup->Delete();
    });
    ignoringFailures([&] { newFile(file.FullPath())->CopyTo(backup->FullPath()); });
}

void createDirectory(const std::string& path) {
    const auto folder = platform().files->NewFileSystemObject();
    folder->SetDirectory(path);
    folder->CreateDirectory();
}

// Sets a flag for as long as it lives.
class Raised {
  public:
    Raised(bool& flag, bool value) : mFlag(flag) { mFlag = value; }
    ~Raised() { mFlag = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

  private:
    bool& mFlag;
};

// Writes to a file that is open, and closes it also where what is to be written fails.
template <class MakeText>
void writeAndClose(FileSystemObject& file, MakeText&& makeText) {
    try {
        file.Write(makeText());
    } catch (...) {
        ignoringFailures([&] { file.Close(); });
        throw;
    }
    file.Close();
}

}  // namespace

bool QbProject::SaveToDisk(bool checkForNewOrDeletedSSItems) {
    const Raised converting(mConverting, mTypeOnDisk != ProjectType());
    ProjectWriter(*this).Check();
    const auto file = Filename;
    if (file->Exists()) makeBackup(*file);
    if (!ignoringFailures([&] { file->Open(kWriteProject); })) {
        platform().messages->Show("Could not save to '" + file->FullPath() +
                                      "'.  Please check that this file is accessible and is not read-only.",
                                  "Could not save", MessageButtons::bsOK, MessageIcon::biExclamation);
        return false;
    }
    // The file is empty by now; if this fails, the backup is the way back.
    at(file->FullPath(), [&] {
        writeAndClose(*file, [&] {
            if (SSActivated()) {
                createDirectory(ProjectDataPath());
                createDirectory(TopicDataPath());
            }
            return Save();
        });
    });
    mTypeOnDisk = ProjectType();
    SetDirty(false);
    if (checkForNewOrDeletedSSItems && SSActivated()) saveDeletions();
    return true;
}

// Takes elements that were removed since the last save out of source control.
void QbProject::saveDeletions() {
    const auto database = VSSDatabase();
    const auto markDeleted = [&](const std::string& spec) {
        Ref<quillbox::VSSItem> item;
        // An element that the database does not know is passed over.
        ignoringFailures([&] {
            if (database) item = database->VSSItem(spec, false);
        });
        if (item) item->SetDeleted(true);
        return item != nullptr;
    };
    for (const auto& value : Topics->DeletedTopics()->Items()) {
        const auto topic = std::dynamic_pointer_cast<Topic>(toObject(value));
        if (Topics->HasKey(topic->Key) || !markDeleted(topic->SSSpec())) continue;
        ignoringFailures([&] { newFile(topic->LocalSpec())->Delete(); });
    }
    Topics->ClearDeletedTopics();
    for (const auto& value : OtherFiles->DeletedFiles()->Items()) {
        markDeleted(std::dynamic_pointer_cast<OtherFile>(toObject(value))->SSSpec());
    }
    OtherFiles->ClearDeletedFiles();
}

}  // namespace quillbox
