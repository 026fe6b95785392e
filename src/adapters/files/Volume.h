#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Date.h"

namespace quillbox::files {

// How a file is written: over the old one in one step at the end, or in the file itself, which is emptied at
// the beginning and kept from other writers.
enum class WriteMode { Replace, InPlace };

// A file that is being written. One that goes before `Finish` gives up what was written for replacement.
class Writer {
  public:
    virtual ~Writer() = default;
    virtual void Append(std::string_view bytes) = 0;
    virtual void Finish() = 0;
};

struct Status {
    bool isFile = false;
    bool isFolder = false;
    bool isReadOnly = false;
    Date modifiedOn;
};

// Where files are kept. Paths are whole and have local separators; a failure does not name the path, which
// its caller does.
class Volume {
  public:
    virtual ~Volume() = default;

    // Nothing for what is not there; fails where that cannot be told.
    virtual Status Look(const std::string& path) = 0;
    // The same, where a path that cannot be looked at counts as not there.
    virtual Status LookOrNothing(const std::string& path) = 0;

    // False for a file that is not there; fails for one that cannot be read.
    virtual bool CanRead(const std::string& path) = 0;
    virtual std::string Read(const std::string& path) = 0;
    virtual std::unique_ptr<Writer> Write(const std::string& path, WriteMode mode) = 0;
    // The copy may be written by its owner, whatever the file says. Names the target where that is what
    // fails.
    virtual void Copy(const std::string& from, const std::string& to) = 0;
    virtual void Delete(const std::string& path) = 0;

    virtual void MakeFolders(const std::string& path) = 0;
    // The names of the files in a folder, in any order; none for a folder that is not there.
    virtual std::vector<std::string> FileNames(const std::string& folder) = 0;
};

}  // namespace quillbox::files
