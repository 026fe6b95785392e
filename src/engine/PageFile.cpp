#include "engine/PageFile.h"

#include "base/AutomationError.h"

namespace quillbox {

std::string PageFile::Directory() const { return mFullName.substr(0, mFullName.rfind('/') + 1); }

std::string PageFile::FileName() const { return mFullName.substr(mFullName.rfind('/') + 1); }

std::string PageFile::BaseName() const {
    const auto name = FileName();
    return name.substr(0, name.rfind('.'));
}

std::string PageFile::Extension() const {
    const auto name = FileName();
    const auto dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

void PageFile::refuse() const {
    throw AutomationError(mFullName + ": a page in the making takes text and nothing else");
}

}  // namespace quillbox
