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

}  // namespace

bool QbProject::SaveToDisk(bool checkForNewOrDeletedSSItems) {
    ProjectWriter(*this).Check();
    if (Filename->Exists()) makeBackup(*Filename);
    if (!ignoringFailures([&] { Filename->Open(kWriteProject); })) {
        platform().messages->Show("Could not save to '" + Filename->FullPath() +
                                      "'.  Please check that this file is accessible and is not read-only.",
                                  "Could not save", MessageButtons::bsOK, MessageIcon::biExclamation);
        return false;
    }
    if (SSActivated()) {
        createDirectory(ProjectDataPath());
        createDirectory(TopicDataPath());
    }
    // The file is empty by now; if this fails, the backup is the way back.
    Filename->Write(Save());
    Filename->Close();
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
