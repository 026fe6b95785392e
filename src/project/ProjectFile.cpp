// The project's XML text: what `Load` reads and `Save` writes.

#include "frame/Platform.h"
#include "project/ProjectReader.h"
#include "project/ProjectWriter.h"
#include "project/QbProject.h"

namespace quillbox {

void QbProject::Load(const std::string& source) {
    const auto document = platform().xml->NewDocument();
    document->Parse(source);
    mLoading = true;
    ProjectReader(*this).Read(document->RootElement());
    mTypeOnDisk = ProjectType();
    mLoading = true;  // a migration of old keys loads once more
    SetDirty(false);
    SetTopicsDirty(false);
    mLoading = false;
}

std::string QbProject::Save() {
    const auto document = platform().xml->NewDocument();
    ProjectWriter(*this).Write(document->RootElement());
    return document->ToXml();
}

void QbProject::LoadFromFile(const std::string& filename) {
    const auto file = newFile(filename);
    if (!file->Exists()) {
        SetName("{Could not find file '" + filename + "'}");
        return;
    }
    at(filename, [&] {
        file->Open(kReadWhole);
        const auto text = file->ReadAll();
        Load(text);
        file->Close();
    });
    mLoading = true;
    Filename->SetPath(filename);
    SetDirty(false);
    mLoading = false;
}

}  // namespace quillbox
