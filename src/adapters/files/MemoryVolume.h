#pragma once

#include <map>
#include <set>

#include "adapters/files/Volume.h"

namespace quillbox::files {

class MemoryVolume : public Volume, public std::enable_shared_from_this<MemoryVolume> {
  public:
    struct Content {
        std::string bytes;
        bool isReadOnly = false;
        bool isLocked = false;
        Date modifiedOn;
    };

    Status Look(const std::string& path) override;
    Status LookOrNothing(const std::string& path) override;
    bool CanRead(const std::string& path) override;
    std::string Read(const std::string& path) override;
    std::unique_ptr<Writer> Write(const std::string& path, WriteMode mode) override;
    void Copy(const std::string& from, const std::string& to) override;
    void Delete(const std::string& path) override;
    void MakeFolders(const std::string& path) override;
    std::vector<std::string> FileNames(const std::string& folder) override;

    // None where the file is not there.
    Content* Find(const std::string& path);
    void Put(const std::string& path, std::string bytes);
    void AddFolders(const std::string& path);

    std::vector<std::string> calls;  // what was done, in order

  private:
    Content& needed(const std::string& path);
    bool isFolder(const std::string& path) const;
    void requireWritable(const std::string& path);

    std::map<std::string, Content> mFiles;
    std::set<std::string> mFolders;
    int mWrites = 0;
};

}  // namespace quillbox::files
