#include "frame/Platform.h"

namespace quillbox {

Platform& platform() {
    static Platform current = makeDefaultPlatform();
    return current;
}

Ref<FileSystemObject> newFile(const std::string& path) {
    auto file = platform().files->NewFileSystemObject();
    file->SetPath(path);
    return file;
}

}  // namespace quillbox
