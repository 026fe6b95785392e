#include "adapters/files/DiskFiles.h"

#include "adapters/files/DiskVolume.h"
#include "adapters/files/File.h"
#include "adapters/files/Paths.h"

namespace quillbox {

namespace {

class DiskFiles : public FileSystem {
  public:
    Ref<FileSystemObject> NewFileSystemObject() override { return make<files::File>(mVolume); }
    char Separator() const override { return files::kSeparator; }

  private:
    std::shared_ptr<files::Volume> mVolume = std::make_shared<files::DiskVolume>();
};

}  // namespace

std::shared_ptr<FileSystem> makeDiskFiles() { return std::make_shared<DiskFiles>(); }

}  // namespace quillbox
