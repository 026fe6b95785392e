#include "engine/SupportFiles.h"

#include "engine/Disk.h"

namespace quillbox {

namespace {

std::string supportFolder(PageTemplate& pageTemplate) {
    return disk::asFolder(pageTemplate.Path()) + "support/";
}

}  // namespace

std::vector<std::string> supportFiles(PageTemplate& pageTemplate) {
    return disk::filesBelow(supportFolder(pageTemplate));
}

bool replacesFile(PageTemplate& pageTemplate, const std::string& name, const OutputFolder& output) {
    const auto path = output.DiskName(name);
    return disk::isFile(path) && !disk::isEqual(path, disk::read(supportFolder(pageTemplate) + name));
}

void copySupportFile(PageTemplate& pageTemplate, const std::string& name, OutputFolder& output) {
    output.Write(name, disk::read(supportFolder(pageTemplate) + name));
}

}  // namespace quillbox
