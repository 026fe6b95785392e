#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystemObject.h"

namespace quillbox {

namespace files {
class MemoryVolume;
}

// Files that nobody else sees, for tests and for work that must leave no trace. They keep the contract of
// files on disk, and remember what was done to them.
class MemoryFiles : public FileSystem {
  public:
    MemoryFiles();
    Ref<FileSystemObject> NewFileSystemObject() override;
    char Separator() const override;

    // Makes a file, its folders too, without a record.
    void Put(const std::string& path, const std::string& bytes);
    // What a file holds; none where it is not there.
    std::optional<std::string> Bytes(const std::string& path) const;
    void SetReadOnly(const std::string& path, bool isReadOnly);

    // What was done, in order: "read P", "write P" and "finish P", "copy P to Q", "delete P", "make folder
    // P".
    const std::vector<std::string>& Calls() const;
    void ForgetCalls();

  private:
    std::shared_ptr<files::MemoryVolume> mVolume;
};

std::shared_ptr<MemoryFiles> makeMemoryFiles();

}  // namespace quillbox
