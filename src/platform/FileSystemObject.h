#pragma once

#include <string>
#include <vector>

#include "base/Date.h"
#include "base/NameTable.h"
#include "base/Object.h"

namespace quillbox {

// The combinations of `FileSystemObject::Open` that are in use.
struct OpenMode {
    int mode, access, lock, recordLength;
};
inline constexpr OpenMode kReadWhole{3, 1, 1, 32767};
inline constexpr OpenMode kWriteProject{4, 2, 3, 32767};
inline constexpr OpenMode kWriteElement{4, 2, 1, 32767};

// Names one path on disk and does the file work on it. Paths are read with "\" or "/" and come back with
// the system's own separator. Each failure is an AutomationError that names the path.
class FileSystemObject : public Object {
  public:
    static constexpr std::string_view kClassName = "FileSystemObject";
    std::string_view ClassName() const override { return kClassName; }

    // Empty for a new object.
    virtual std::string FullPath() const = 0;
    // A relative path is taken from the directory of the file in `RelativeTo` while that is set.
    virtual void SetPath(const std::string& path) = 0;

    // The directory of the path, with its trailing separator; empty where the path has none.
    virtual std::string Directory() const = 0;
    // Points the next three members at a directory.
    virtual void SetDirectory(const std::string& path) = 0;
    virtual bool DirectoryExists() const = 0;
    // Makes the directory given to `SetDirectory`, or the path's own, with its parents; one that is there is
    // fine.
    virtual void CreateDirectory() = 0;
    // The files of the directory that match a pattern such as "*.qbp" (case ignored), sorted by name.
    virtual std::vector<Ref<FileSystemObject>> ListFiles(const std::string& pattern) const = 0;

    virtual std::string FileName() const = 0;
    virtual std::string BaseName() const = 0;
    virtual void SetBaseName(const std::string& name) = 0;
    // Without the dot; empty where there is none.
    virtual std::string Extension() const = 0;
    virtual void SetExtension(const std::string& extension) = 0;

    // Whether the path names a file or a folder that is there.
    virtual bool Exists() const = 0;
    // The file's own attribute: no write permission for its owner. False for a file that is not there.
    virtual bool IsReadOnly() const = 0;
    // Zero for a file that is not there.
    virtual Date ModifiedOn() const = 0;

    // Reading a missing file opens as empty. Writing fails at once on a read-only file and on a folder that
    // is not there. With lock 1 what is written replaces the old file at `Close` in one step; with lock 3 the
    // file is emptied at `Open` and other writers are kept out until `Close`.
    virtual void Open(const OpenMode& mode) = 0;
    // The whole text as UTF-8, decoded by its mark, its XML declaration, as UTF-8, else as windows-1252.
    // Works without `Open` too. Fails for a missing file.
    virtual std::string ReadAll() = 0;
    // The next line without its end; after the last line the text is empty and `EndOfFile` True.
    virtual std::string ReadLine() = 0;
    virtual bool EndOfFile() = 0;
    virtual void Write(const std::string& text) = 0;
    // An object that goes without `Close` gives up what was written with lock 1.
    virtual void Close() = 0;

    virtual void Delete() = 0;
    virtual void CopyTo(const std::string& path) = 0;

    // The file from whose directory a relative path counts; none takes it off.
    virtual void SetRelativeTo(const Ref<FileSystemObject>& base) = 0;
    // The path below the directory of `RelativeTo`; the full path where it does not lie there.
    virtual std::string RelativePath() const = 0;

    // Who keeps a table of paths watches the objects in it: this counts the changes of their paths.
    static NameState& WatchedPaths() {
        static NameState state;
        return state;
    }
    void Watch() { mWatched = true; }

  protected:
    // To be called by every member that changes the path.
    void pathChanged() {
        if (mWatched) WatchedPaths().Changed();
    }

  private:
    bool mWatched = false;
};

class FileSystem {
  public:
    virtual ~FileSystem() = default;
    virtual Ref<FileSystemObject> NewFileSystemObject() = 0;
    // The separator of local paths: "/" or "\".
    virtual char Separator() const = 0;
};

}  // namespace quillbox
