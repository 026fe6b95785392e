#pragma once

#include "adapters/files/Volume.h"

namespace quillbox::files {

class DiskVolume : public Volume {
  public:
    Status Look(const std::string& path) override;
    Status LookOrNothing(const std::string& path) override;
    bool CanRead(const std::string& path) override;
    std::string Read(const std::string& path) override;
    std::unique_ptr<Writer> Write(const std::string& path, WriteMode mode) override;
    void Copy(const std::string& from, const std::string& to) override;
    void Delete(const std::string& path) override;
    void MakeFolders(const std::string& path) override;
    std::vector<std::string> FileNames(const std::string& folder) override;
};

}  // namespace quillbox::files
