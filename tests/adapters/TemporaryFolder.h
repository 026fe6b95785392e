#pragma once

#include <filesystem>
#include <string>

#include <stdlib.h>

namespace quillbox {

// A folder that goes with the test that made it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        auto pattern = (std::filesystem::temp_directory_path() / "quillbox-XXXXXX").string();
        mPath = std::string(mkdtemp(pattern.data())) + "/";
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // With its trailing separator.
    const std::string& Path() const { return mPath; }

  private:
    std::string mPath;
};

}  // namespace quillbox
