#include "adapters/files/DiskFiles.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "adapters/Failure.h"
#include "adapters/TemporaryFolder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

class DiskFiles : public testing::Test {
  protected:
    Ref<FileSystemObject> File(const std::string& name) {
        auto file = makeDiskFiles()->NewFileSystemObject();
        file->SetPath(mFolder.Path() + name);
        return file;
    }
    void Write(const std::string& name, const std::string& text, const OpenMode& mode = kWriteElement) {
        const auto file = File(name);
        file->Open(mode);
        file->Write(text);
        file->Close();
    }
    fs::perms ModeOf(const std::string& name) { return fs::status(mFolder.Path() + name).permissions(); }
    long FilesThere() { return std::distance(fs::directory_iterator(mFolder.Path()), {}); }

    TemporaryFolder mFolder;
};

// Files of this process end at a size for as long as it lives, as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t size) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &mBefore);
        rlimit limit = mBefore;
        limit.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &mBefore); }

  private:
    rlimit mBefore{};
};

TEST_F(DiskFiles, AReplacedFileKeepsItsMode) {
    Write("x", "old");
    fs::permissions(mFolder.Path() + "x", fs::perms(0750));
    Write("x", "new");
    EXPECT_EQ(ModeOf("x"), fs::perms(0750));
    Write("x", "new", kWriteProject);
    EXPECT_EQ(ModeOf("x"), fs::perms(0750));
}

TEST_F(DiskFiles, ANewFileHasTheModeThatTheUserAskedFor) {
    const auto before = umask(027);
    Write("x", "");
    Write("y", "", kWriteProject);
    umask(before);
    EXPECT_EQ(ModeOf("x"), fs::perms(0640));
    EXPECT_EQ(ModeOf("y"), fs::perms(0640));
}

TEST_F(DiskFiles, ACopyKeepsTheModeButMayBeWritten) {
    Write("x", "text");
    fs::permissions(mFolder.Path() + "x", fs::perms(0440));
    File("x")->CopyTo(mFolder.Path() + "y");
    EXPECT_EQ(ModeOf("y"), fs::perms(0640));
}

TEST_F(DiskFiles, ASymbolicLinkStaysOne) {
    fs::create_directory(mFolder.Path() + "sub");
    Write("sub/x", "old");
    fs::create_symlink("sub/x", mFolder.Path() + "link");
    Write("link", "new");
    EXPECT_TRUE(fs::is_symlink(mFolder.Path() + "link"));
    EXPECT_EQ(File("sub/x")->ReadAll(), "new");
}

TEST_F(DiskFiles, AFullDiskKeepsTheOldFileAndIsTold) {
    Write("x", "old");
    const auto file = File("x");
    const FullDisk full(1000000);
    file->Open(kWriteElement);
    EXPECT_EQ(failureOf([&] { file->Write(std::string(2000000, 'x')); }),
              mFolder.Path() + "x: File too large");
    EXPECT_EQ(failureOf([&] { file->Write("more"); }),
              mFolder.Path() + "x: The file is not open for writing");
    EXPECT_EQ(failureOf([&] { file->Close(); }), "no failure");
    EXPECT_EQ(File("x")->ReadAll(), "old");
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(DiskFiles, AFullDiskIsToldAtCloseToo) {
    const auto file = File("x");
    const FullDisk full(100);
    for (const auto& mode : {kWriteElement, kWriteProject}) {
        file->Open(mode);
        file->Write(std::string(200, 'x'));
        EXPECT_EQ(failureOf([&] { file->Close(); }), mFolder.Path() + "x: File too large");
    }
    EXPECT_EQ(FilesThere(), 1);
}

TEST_F(DiskFiles, WhatIsNoRegularFileIsRefusedAndNotWaitedFor) {
    mkfifo((mFolder.Path() + "fifo").c_str(), 0600);
    for (const auto& mode : {kReadWhole, kWriteElement, kWriteProject}) {
        EXPECT_THAT(failureOf([&] { File("fifo")->Open(mode); }), StartsWith(mFolder.Path() + "fifo: "));
    }
    EXPECT_THAT(failureOf([&] { File("fifo")->ReadAll(); }), StartsWith(mFolder.Path() + "fifo: "));
    fs::create_symlink("/dev/zero", mFolder.Path() + "zero");
    EXPECT_EQ(failureOf([&] { File("zero")->ReadAll(); }), mFolder.Path() + "zero: It is no regular file");
    EXPECT_EQ(failureOf([&] { File("zero")->Open(kWriteElement); }),
              mFolder.Path() + "zero: It is no regular file");
}

TEST_F(DiskFiles, MoreThanOneGibibyteIsRefused) {
    Write("x", "");
    fs::resize_file(mFolder.Path() + "x", (std::uintmax_t{1} << 30) + 1);
    EXPECT_EQ(failureOf([&] { File("x")->ReadAll(); }), mFolder.Path() + "x: The file is larger than 1 GiB");
}

TEST_F(DiskFiles, ALoopOfLinksIsTold) {
    fs::create_symlink("loop", mFolder.Path() + "loop");
    EXPECT_THAT(failureOf([&] { File("loop")->Open(kWriteElement); }), StartsWith(mFolder.Path() + "loop: "));
    EXPECT_FALSE(File("loop")->Exists());
}

TEST_F(DiskFiles, NoFileStaysOpen) {
    const auto openFiles = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openFiles();
    Write("x", "text");
    Write("x", "text", kWriteProject);
    const auto file = File("x");
    file->Open(kReadWhole);
    file->ReadLine();
    EXPECT_EQ(openFiles(), before);
    file->CopyTo(mFolder.Path() + "y");
    failureOf([&] { File("none/x")->Open(kWriteProject); });
    EXPECT_EQ(openFiles(), before);
}

}  // namespace
}  // namespace quillbox
