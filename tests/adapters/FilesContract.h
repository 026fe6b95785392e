#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "adapters/TemporaryFolder.h"
#include "adapters/files/DiskFiles.h"
#include "adapters/files/MemoryFiles.h"

namespace quillbox {

// A file system under test, with a folder to work in and a way to the files past the file objects.
class Place {
  public:
    virtual ~Place() = default;
    virtual std::shared_ptr<FileSystem> Files() = 0;
    virtual std::string Root() = 0;  // with its trailing separator
    virtual void Put(const std::string& path, const std::string& bytes) = 0;
    virtual std::string Bytes(const std::string& path) = 0;
    virtual void SetReadOnly(const std::string& path) = 0;
};

class OnDisk : public Place {
  public:
    std::shared_ptr<FileSystem> Files() override { return makeDiskFiles(); }
    std::string Root() override { return mFolder.Path(); }
    void Put(const std::string& path, const std::string& bytes) override {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    std::string Bytes(const std::string& path) override {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }
    void SetReadOnly(const std::string& path) override {
        std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    }

  private:
    TemporaryFolder mFolder;
};

class InMemory : public Place {
  public:
    InMemory() { mFiles->Put("/work/here", ""); }
    std::shared_ptr<FileSystem> Files() override { return mFiles; }
    std::string Root() override { return "/work/"; }
    void Put(const std::string& path, const std::string& bytes) override { mFiles->Put(path, bytes); }
    std::string Bytes(const std::string& path) override { return mFiles->Bytes(path).value_or(""); }
    void SetReadOnly(const std::string& path) override { mFiles->SetReadOnly(path, true); }

  private:
    std::shared_ptr<MemoryFiles> mFiles = makeMemoryFiles();
};

template <class T>
std::unique_ptr<Place> makePlace() {
    return std::make_unique<T>();
}

// A test that runs on files of both kinds.
class FilesContract : public testing::TestWithParam<std::unique_ptr<Place> (*)()> {
  protected:
    Ref<FileSystemObject> File(const std::string& path) {
        auto file = mFiles->NewFileSystemObject();
        file->SetPath(path);
        return file;
    }
    Ref<FileSystemObject> Inside(const std::string& name) { return File(mRoot + name); }
    void Write(const std::string& name, const std::string& text, const OpenMode& mode = kWriteElement) {
        const auto file = Inside(name);
        file->Open(mode);
        file->Write(text);
        file->Close();
    }
    std::vector<std::string> Names(const std::string& pattern) {
        const auto folder = mFiles->NewFileSystemObject();
        folder->SetDirectory(mRoot);
        std::vector<std::string> names;
        for (const auto& file : folder->ListFiles(pattern)) names.push_back(file->FileName());
        return names;
    }

    std::unique_ptr<Place> mPlace = GetParam()();
    std::shared_ptr<FileSystem> mFiles = mPlace->Files();
    std::string mRoot = mPlace->Root();
};

}  // namespace quillbox
