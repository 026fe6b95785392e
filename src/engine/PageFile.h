#pragma once

#include <string>
#include <vector>

#include "engine/PageEncoding.h"
#include "platform/FileSystemObject.h"

namespace quillbox {

// The output file of a page in the making: what is written stays in memory until the page is done. It takes
// text and tells its name; whoever asks for more of a file fails.
class PageFile : public FileSystemObject {
  public:
    explicit PageFile(std::string fullName) : mFullName(std::move(fullName)) {}

    // The page so far.
    std::string& Text() { return mText; }
    // Marks what was written since a place as bytes to be kept.
    void KeepBytesSince(std::size_t begin) { mRaw.push_back({begin, mText.size()}); }
    const std::vector<RawRange>& Raw() const { return mRaw; }

    std::string FullPath() const override { return mFullName; }
    std::string Directory() const override;
    std::string FileName() const override;
    std::string BaseName() const override;
    std::string Extension() const override;
    std::string RelativePath() const override { return mFullName; }
    void Open(const OpenMode&) override {}
    std::string ReadAll() override { return mText; }
    void Write(const std::string& text) override { mText += text; }
    void Close() override {}

    void SetPath(const std::string&) override { refuse(); }
    void SetDirectory(const std::string&) override { refuse(); }
    bool DirectoryExists() const override { refuse(); }
    void CreateDirectory() override { refuse(); }
    std::vector<Ref<FileSystemObject>> ListFiles(const std::string&) const override { refuse(); }
    void SetBaseName(const std::string&) override { refuse(); }
    void SetExtension(const std::string&) override { refuse(); }
    bool Exists() const override { refuse(); }
    bool IsReadOnly() const override { refuse(); }
    Date ModifiedOn() const override { refuse(); }
    std::string ReadLine() override { refuse(); }
    bool EndOfFile() override { refuse(); }
    void Delete() override { refuse(); }
    void CopyTo(const std::string&) override { refuse(); }
    void SetRelativeTo(const Ref<FileSystemObject>&) override { refuse(); }

  private:
    [[noreturn]] void refuse() const;

    std::string mFullName, mText;
    std::vector<RawRange> mRaw;
};

}  // namespace quillbox
