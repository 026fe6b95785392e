#pragma once

#include <memory>
#include <optional>

#include "adapters/files/LineReader.h"
#include "adapters/files/Volume.h"
#include "platform/FileSystemObject.h"

namespace quillbox::files {

// A file object on any volume.
class File : public FileSystemObject {
  public:
    explicit File(std::shared_ptr<Volume> volume) : mVolume(std::move(volume)) {}

    std::string FullPath() const override;
    void SetPath(const std::string& path) override;

    std::string Directory() const override;
    void SetDirectory(const std::string& path) override;
    bool DirectoryExists() const override;
    void CreateDirectory() override;
    std::vector<Ref<FileSystemObject>> ListFiles(const std::string& pattern) const override;

    std::string FileName() const override;
    std::string BaseName() const override;
    void SetBaseName(const std::string& name) override;
    std::string Extension() const override;
    void SetExtension(const std::string& extension) override;

    bool Exists() const override;
    bool IsReadOnly() const override;
    Date ModifiedOn() const override;

    void Open(const OpenMode& mode) override;
    std::string ReadAll() override;
    std::string ReadLine() override;
    bool EndOfFile() override;
    void Write(const std::string& text) override;
    void Close() override;

    void Delete() override;
    void CopyTo(const std::string& path) override;

    void SetRelativeTo(const Ref<FileSystemObject>& base) override;
    std::string RelativePath() const override;

  private:
    template <class Step>
    auto atPath(Step&& step) const;
    template <class Step>
    auto withLines(Step&& step);
    void requireWritable(const std::string& path) const;
    void giveUp();
    void changePath(std::string path);
    std::string workDirectory() const;

    std::shared_ptr<Volume> mVolume;
    std::string mPath;
    std::optional<std::string> mWorkDirectory;  // what SetDirectory gave
    std::optional<std::string> mBase;           // the directory of RelativeTo

    std::string mOpenPath;
    bool mIsReading = false;
    std::optional<LineReader> mLines;
    std::unique_ptr<Writer> mWriter;
};

}  // namespace quillbox::files
