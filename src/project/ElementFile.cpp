#include "project/ElementFile.h"

#include "base/AutomationError.h"
#include "frame/Platform.h"
#include "project/QbProject.h"

namespace quillbox {

void ElementFile::requirePlainName() const {
    if (mName.find_first_of("/\\") != std::string::npos || mName.find('\0') != std::string::npos) {
        throw AutomationError("'" + mName + "' is no plain file name");
    }
}

void ElementFile::Load(Ref<XMLElement>& e, const Use& read) const {
    if (mProject.ProjectType() != ProjectTypeSeparateFiles) {
        if (!e) throw AutomationError("There is no element to load from");
        return read(e);
    }
    at(mPath, [&] {
        requirePlainName();
        const auto file = newFile(mPath);
        const auto document = platform().xml->NewDocument();
        file->Open(kReadWhole);
        if (file->Exists()) document->Parse(file->ReadAll());
        file->Close();
        e = document->RootElement();
        read(e);
    });
}

bool ElementFile::Save(Ref<XMLElement>& e, bool dirty, const std::function<bool()>& isCheckedOut,
                       const Use& fill) const {
    if (mProject.ProjectType() != ProjectTypeSeparateFiles) {
        if (!e) throw AutomationError("There is no element to save to");
        fill(e);
        return true;
    }
    at(mPath, [&] { requirePlainName(); });
    const auto file = newFile(mPath);
    const bool there = file->Exists();
    if (there && !dirty && !mProject.IsConverting()) return false;
    const auto document = platform().xml->NewDocument();
    e = document->RootElement();
    e->SetName(mRootName);
    fill(e);
    if (there && mProject.SSActivated() && !isCheckedOut()) return true;
    at(mPath, [&] {
        const auto text = document->ToXml();
        file->CreateDirectory();
        file->Open(kWriteElement);
        file->Write(text);
        file->Close();
    });
    return true;
}

}  // namespace quillbox
