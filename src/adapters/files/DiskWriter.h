#pragma once

#include <string>

#include "adapters/files/Descriptor.h"
#include "adapters/files/Volume.h"

namespace quillbox::files {

// A file that is removed again unless it was kept.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    Descriptor& File() { return mFile; }
    // Closes the file and gives it another name.
    void KeepAs(const std::string& path);

  private:
    std::string mPath;
    Descriptor mFile;
};

// Writes a file over the old one when it is finished, by a temporary file beside it.
class ReplacingWriter : public Writer {
  public:
    explicit ReplacingWriter(const std::string& path);
    void Append(std::string_view bytes) override;
    void Finish() override;

    // The permissions of the new file, where there is no old one to take them from.
    void SetModeOfNew(mode_t mode);

  private:
    std::string mPath;
    Descriptor mOld;
    TemporaryFile mTemporary;
    std::string mBuffer;
    bool mIsNew = true;
};

// Empties a file and writes it, locked against other writers.
class InPlaceWriter : public Writer {
  public:
    explicit InPlaceWriter(const std::string& path);
    void Append(std::string_view bytes) override;
    void Finish() override;

  private:
    Descriptor mFile;
    std::string mBuffer;
};

}  // namespace quillbox::files
