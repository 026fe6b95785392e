#include "frame/Platform.h"

#include "base/AutomationError.h"

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

Ref<XMLDocument> parseFile(const std::string& path) {
    return at(path, [&] {
        const auto document = platform().xml->NewDocument();
        document->Parse(newFile(path)->ReadAll());
        return document;
    });
}

}  // namespace quillbox
