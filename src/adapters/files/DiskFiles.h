#pragma once

#include <memory>

#include "platform/FileSystemObject.h"

namespace quillbox {

// The files of this machine.
std::shared_ptr<FileSystem> makeDiskFiles();

}  // namespace quillbox
