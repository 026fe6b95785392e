#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbox {

class OutputFolder;

// A file as a build wrote it, by its name in the output folder.
struct WrittenFile {
    std::string name;
    // Tells its content from others.
    std::uint64_t sum = 0;

    bool operator==(const WrittenFile&) const = default;
};

std::uint64_t contentSum(std::string_view bytes);

// What builds left in an output folder, so that a later one can take away what nothing makes any more. It
// stands in the folder itself, in ".quillbox-build". Several projects and templates may write to one folder;
// each is an owner of its own.
class BuildRecord {
  public:
    // `folder` is the place on disk.
    BuildRecord(const std::string& folder, std::string owner);

    // Removes the files of the owner's earlier builds that are not wanted any more. A file that is not as it
    // was written stays, and so does one that another owner wrote too.
    void RemoveStale(const OutputFolder& output, const std::function<bool(const std::string&)>& isWanted);
    // Puts down what a whole build wrote.
    void Save(std::vector<WrittenFile> written);
    // The same for a build that ended early: what earlier ones wrote stays the owner's.
    void SaveUnfinished(const std::vector<WrittenFile>& written);

  private:
    struct Section {
        std::string owner;
        std::vector<WrittenFile> files;
    };

    void read();
    Section& section(const std::string& owner);
    std::string text() const;

    std::string mFile, mOwner;
    std::vector<Section> mSections;
};

}  // namespace quillbox
