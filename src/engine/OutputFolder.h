#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/FoldedMap.h"
#include "base/Object.h"
#include "engine/BuildRecord.h"

namespace quillbox {

// The name of an output file as it may be used: relative, with "/". Fails for a name that is empty, leaves
// the output folder, names a device or holds a control character.
std::string checkedOutputName(const std::string& name);

// The folder that a build writes to. Callers name everything as it lies under the output path; where a root
// is set, the disk sees it there.
class OutputFolder {
  public:
    OutputFolder(const std::string& path, const std::string& root);

    const std::string& Path() const { return mPath; }
    const std::string& Disk() const { return mDisk; }
    std::string FullName(const std::string& name) const { return mPath + name; }
    std::string DiskName(const std::string& name) const { return mDisk + name; }
    // The place on disk of a full name under the output path; other names are as they are.
    std::string OnDisk(const std::string& fullName) const;

    // Takes a name for this build. Fails where it is taken already, in this or another case.
    void Claim(const std::string& name, const std::string& by);
    bool IsClaimed(const std::string& name) const;
    // The same in this very spelling, or in one that is the same file here.
    bool IsClaimedFile(const std::string& name) const;

    // A name that was checked. Makes the folders in it.
    void Write(const std::string& name, std::string_view text);
    // The steps of the same. The folders of a name come first.
    void PrepareFolderOf(const std::string& name);
    // Several threads may do this at once, each for other names.
    WrittenFile Put(const std::string& name, std::string_view text) const;
    void Note(WrittenFile file) { mWritten.push_back(std::move(file)); }
    // All that was noted as written, in that order.
    const std::vector<WrittenFile>& Written() const { return mWritten; }
    // Removes a file that is as it was written, and the folders that are empty then. Any other stays.
    void RemoveIfSame(const WrittenFile& file) const;

  private:
    std::string mPath, mDisk;
    // By whom, by names.
    FoldedMap<std::string> mClaimed;
    std::unordered_set<std::string> mPrepared;
    std::vector<WrittenFile> mWritten;
};

}  // namespace quillbox
