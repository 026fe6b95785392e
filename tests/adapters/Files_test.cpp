// One contract for files on disk and files in memory.

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "adapters/Failure.h"
#include "adapters/TemporaryFolder.h"
#include "adapters/files/DiskFiles.h"
#include "adapters/files/MemoryFiles.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

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

class Files : public testing::TestWithParam<std::unique_ptr<Place> (*)()> {
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

INSTANTIATE_TEST_SUITE_P(OnDisk, Files, testing::Values(&makePlace<OnDisk>));
INSTANTIATE_TEST_SUITE_P(InMemory, Files, testing::Values(&makePlace<InMemory>));

TEST_P(Files, ANewObjectHasNoPath) {
    const auto file = mFiles->NewFileSystemObject();
    EXPECT_EQ(file->FullPath(), "");
    EXPECT_EQ(file->Directory(), "");
    EXPECT_EQ(file->FileName(), "");
    EXPECT_FALSE(file->Exists());
    EXPECT_FALSE(file->DirectoryExists());
    EXPECT_EQ(failureOf([&] { file->Open(kReadWhole); }), "The file object has no path");
    EXPECT_EQ(failureOf([&] { file->ReadAll(); }), "The file object has no path");
    EXPECT_EQ(failureOf([&] { file->CreateDirectory(); }), "no failure");
}

TEST_P(Files, APathIsReadWithBothSeparators) {
    const auto file = File("C:\\a/b\\.\\..\\My Project.old.qbp");
    EXPECT_EQ(file->FullPath(), "C:/a/b/./../My Project.old.qbp");
    EXPECT_EQ(file->Directory(), "C:/a/b/./../");
    EXPECT_EQ(file->FileName(), "My Project.old.qbp");
    EXPECT_EQ(file->BaseName(), "My Project.old");
    EXPECT_EQ(file->Extension(), "qbp");
    EXPECT_EQ(File("~/$HOME/x")->FullPath(), "~/$HOME/x");
}

TEST_P(Files, BaseNameAndExtensionChangeThePath) {
    const auto file = File("/a.b/name");
    EXPECT_EQ(file->Extension(), "");
    file->SetExtension("qbp");
    EXPECT_EQ(file->FullPath(), "/a.b/name.qbp");
    file->SetBaseName("other.v2");
    EXPECT_EQ(file->FullPath(), "/a.b/other.v2.qbp");
    file->SetExtension("");
    EXPECT_EQ(file->FullPath(), "/a.b/other.v2");
}

TEST_P(Files, ANulInAPathIsRefused) {
    const std::string nul("/a\0b", 4);
    const auto file = File("/a");
    EXPECT_EQ(failureOf([&] { file->SetPath(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->SetDirectory(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->SetBaseName(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->CopyTo(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(file->FullPath(), "/a");
}

TEST_P(Files, WhatIsWrittenIsRead) {
    for (const auto& mode : {kWriteElement, kWriteProject}) {
        Write("x.xml", "first and longer", mode);
        Write("x.xml", "second\r\n\xC3\xA4", mode);
        EXPECT_EQ(mPlace->Bytes(mRoot + "x.xml"), "second\r\n\xC3\xA4");
        EXPECT_EQ(Inside("x.xml")->ReadAll(), "second\r\n\u00E4");
    }
}

TEST_P(Files, SeveralWritesFollowEachOther) {
    const auto file = Inside("x");
    std::string all;
    file->Open(kWriteElement);
    for (int i = 0; i < 1000; ++i) {
        const std::string piece(static_cast<std::size_t>(i), static_cast<char>('a' + i % 26));
        file->Write(piece);
        all += piece;
    }
    file->Close();
    EXPECT_EQ(mPlace->Bytes(mRoot + "x"), all);
}

TEST_P(Files, ReadingAMissingFileOpensAsEmpty) {
    const auto file = Inside("none.xml");
    file->Open(kReadWhole);
    EXPECT_TRUE(file->EndOfFile());
    EXPECT_EQ(file->ReadLine(), "");
    EXPECT_EQ(file->ReadAll(), "");
    file->Close();
    EXPECT_EQ(failureOf([&] { file->ReadAll(); }), mRoot + "none.xml: The file is not there");
    const auto folder = File(mRoot + "none/x.xml");
    folder->Open(kReadWhole);
    EXPECT_TRUE(folder->EndOfFile());
}

TEST_P(Files, ReadAllDecodes) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"\xEF\xBB\xBF\xC3\xA4", "\u00E4"},
        {std::string("\xFF\xFE\xE4\0", 4), "\u00E4"},
        {std::string("\xFE\xFF\0\xE4", 4), "\u00E4"},
        {"<?xml version='1.0' encoding='windows-1251'?>\xE4",
         "<?xml version='1.0' encoding='windows-1251'?>\u0434"},
        {"\xC3\xA4", "\u00E4"},
        {"\xE4\x80", "\u00E4\u20AC"},
        {"", ""}};
    for (const auto& [bytes, text] : table) {
        mPlace->Put(mRoot + "x", bytes);
        EXPECT_EQ(Inside("x")->ReadAll(), text);
    }
    mPlace->Put(mRoot + "x", "\xEF\xBB\xBF\xC3");
    EXPECT_EQ(failureOf([&] { Inside("x")->ReadAll(); }),
              mRoot + "x: The text is not valid UTF-8, at byte 1");
}

TEST_P(Files, LinesEndInAnyLineEnd) {
    mPlace->Put(mRoot + "x.h", "one\r\n\ntwo\rthree\n\r\nlast");
    const auto file = Inside("x.h");
    file->Open(kReadWhole);
    std::vector<std::string> lines;
    while (!file->EndOfFile()) lines.push_back(file->ReadLine());
    EXPECT_THAT(lines, ElementsAre("one", "", "two", "three", "", "last"));
    EXPECT_EQ(file->ReadLine(), "");
    EXPECT_TRUE(file->EndOfFile());
    mPlace->Put(mRoot + "x.h", "\xE4\n");
    file->Open(kReadWhole);
    EXPECT_EQ(file->ReadLine(), "\u00E4");
    EXPECT_TRUE(file->EndOfFile());
}

TEST_P(Files, WorkNeedsTheRightOpen) {
    mPlace->Put(mRoot + "x", "old");
    const auto file = Inside("x");
    EXPECT_EQ(failureOf([&] { file->ReadLine(); }), mRoot + "x: The file is not open for reading");
    EXPECT_EQ(failureOf([&] { file->EndOfFile(); }), mRoot + "x: The file is not open for reading");
    EXPECT_EQ(failureOf([&] { file->Write("y"); }), mRoot + "x: The file is not open for writing");
    file->Open(kReadWhole);
    EXPECT_EQ(failureOf([&] { file->Write("y"); }), mRoot + "x: The file is not open for writing");
    EXPECT_THAT(failureOf([&] { file->Open({4, 1, 1, 32767}); }), StartsWith(mRoot + "x: A file opens"));
    file->Close();
    file->Close();
    EXPECT_EQ(mPlace->Bytes(mRoot + "x"), "old");
}

TEST_P(Files, WithLockOneTheOldFileStaysUntilClose) {
    mPlace->Put(mRoot + "x", "old");
    const auto file = Inside("x");
    file->Open(kWriteElement);
    file->Write("new");
    EXPECT_EQ(Inside("x")->ReadAll(), "old");
    file->Close();
    EXPECT_EQ(Inside("x")->ReadAll(), "new");
}

TEST_P(Files, WithoutCloseTheOldFileStaysAndNothingIsLeftBehind) {
    mPlace->Put(mRoot + "x", "old");
    const auto before = Names("*");
    auto file = Inside("x");
    file->Open(kWriteElement);
    file->Write("new");
    file.reset();
    EXPECT_EQ(Inside("x")->ReadAll(), "old");
    EXPECT_EQ(Names("*"), before);
    file = Inside("y");
    file->Open(kWriteElement);
    file->Write("new");
    file->Open(kReadWhole);
    EXPECT_TRUE(file->EndOfFile());
    EXPECT_FALSE(Inside("y")->Exists());
    EXPECT_EQ(Names("*"), before);
}

TEST_P(Files, WithLockThreeTheFileIsEmptiedAndOtherWritersAreKeptOut) {
    mPlace->Put(mRoot + "x", "old");
    const auto file = Inside("x");
    file->Open(kWriteProject);
    EXPECT_EQ(Inside("x")->ReadAll(), "");
    for (const auto& mode : {kWriteElement, kWriteProject}) {
        EXPECT_EQ(failureOf([&] { Inside("x")->Open(mode); }),
                  mRoot + "x: The file is being written by somebody else");
    }
    mPlace->Put(mRoot + "y", "other");
    EXPECT_EQ(failureOf([&] { Inside("y")->CopyTo(mRoot + "x"); }),
              mRoot + "x: The file is being written by somebody else");
    file->Write("new");
    file->Close();
    EXPECT_EQ(Inside("x")->ReadAll(), "new");
    EXPECT_EQ(failureOf([&] { Inside("x")->Open(kWriteProject); }), "no failure");
}

TEST_P(Files, OpeningAgainEndsTheFirstOpening) {
    const auto file = Inside("x");
    file->Open(kWriteProject);
    file->Write("left over from a save that failed");
    file->Open(kWriteProject);
    file->Write("new");
    file->Close();
    EXPECT_EQ(Inside("x")->ReadAll(), "new");
}

TEST_P(Files, AReadOnlyFileIsNotWritten) {
    mPlace->Put(mRoot + "x", "old");
    EXPECT_FALSE(Inside("x")->IsReadOnly());
    EXPECT_FALSE(Inside("none")->IsReadOnly());
    mPlace->SetReadOnly(mRoot + "x");
    EXPECT_TRUE(Inside("x")->IsReadOnly());
    for (const auto& mode : {kWriteElement, kWriteProject}) {
        EXPECT_EQ(failureOf([&] { Inside("x")->Open(mode); }), mRoot + "x: The file is read-only");
    }
    mPlace->Put(mRoot + "y", "other");
    EXPECT_EQ(failureOf([&] { Inside("y")->CopyTo(mRoot + "x"); }), mRoot + "x: The file is read-only");
    EXPECT_EQ(Inside("x")->ReadAll(), "old");
}

TEST_P(Files, WritingFailsAtOnceWithoutTheFolder) {
    for (const auto& mode : {kWriteElement, kWriteProject}) {
        EXPECT_EQ(failureOf([&] { Inside("none/x")->Open(mode); }),
                  mRoot + "none/x: No such file or directory");
    }
}

TEST_P(Files, AFolderIsNoFile) {
    EXPECT_TRUE(File(mRoot.substr(0, mRoot.size() - 1))->Exists());
    const auto folder = File(mRoot.substr(0, mRoot.size() - 1));
    for (const auto& mode : {kReadWhole, kWriteElement, kWriteProject}) {
        EXPECT_THAT(failureOf([&] { folder->Open(mode); }), StartsWith(folder->FullPath() + ": "));
    }
    EXPECT_THAT(failureOf([&] { folder->ReadAll(); }), StartsWith(folder->FullPath() + ": "));
    EXPECT_THAT(failureOf([&] { folder->Delete(); }), StartsWith(folder->FullPath() + ": "));
    EXPECT_EQ(failureOf([&] { File(mRoot)->Open(kWriteElement); }), mRoot + ": The path names no file");
}

TEST_P(Files, ANameThatIsNoPlainFileNameFailsItsOpen) {
    const std::string longName(300, 'x');
    for (const auto& mode : {kReadWhole, kWriteElement, kWriteProject}) {
        EXPECT_EQ(failureOf([&] { Inside(longName)->Open(mode); }),
                  mRoot + longName + ": File name too long");
        EXPECT_EQ(failureOf([&] { Inside("a\nb.xml")->Open(mode); }),
                  mRoot + "a\nb.xml: The file name holds a control character");
    }
    EXPECT_FALSE(Inside(longName)->Exists());
    EXPECT_FALSE(Inside(longName)->IsReadOnly());
}

TEST_P(Files, NamesInEveryScriptServe) {
    const std::string name = "\u00C4 \u0416 \u6F22 \U0001F600 {'\"}#%.xml";
    Write(name, "x");
    EXPECT_EQ(Inside(name)->ReadAll(), "x");
    EXPECT_THAT(Names("\u00E4 *.XML"), ElementsAre(name));
}

TEST_P(Files, DirectoriesAreMadeWithTheirParents) {
    const auto folder = mFiles->NewFileSystemObject();
    folder->SetDirectory(mRoot + "a\\b\\");
    EXPECT_FALSE(folder->DirectoryExists());
    folder->CreateDirectory();
    folder->CreateDirectory();
    EXPECT_TRUE(folder->DirectoryExists());
    EXPECT_EQ(folder->FullPath(), "");
    const auto file = Inside("c/d/x.xml");
    file->CreateDirectory();
    EXPECT_TRUE(file->DirectoryExists());
    EXPECT_FALSE(file->Exists());
    EXPECT_TRUE(Inside("c/d")->Exists());
    mPlace->Put(mRoot + "file", "");
    folder->SetDirectory(mRoot + "file/below");
    EXPECT_THAT(failureOf([&] { folder->CreateDirectory(); }), StartsWith(mRoot + "file/below: "));
    folder->SetDirectory(mRoot + "file");
    EXPECT_FALSE(folder->DirectoryExists());
    folder->SetPath(mRoot + "x");
    EXPECT_TRUE(folder->DirectoryExists());
}

TEST_P(Files, FilesAreListedByPatternInTheOrderOfTheirNames) {
    for (const char* name : {"b.qbp", "A.QBP", "a.qbp.bak", "c.xml", "qbp"}) mPlace->Put(mRoot + name, "");
    const auto folder = mFiles->NewFileSystemObject();
    folder->SetDirectory(mRoot + "d.qbp");
    folder->CreateDirectory();
    EXPECT_THAT(Names("*.qbp"), ElementsAre("A.QBP", "b.qbp"));
    EXPECT_THAT(Names("?.*p"), ElementsAre("A.QBP", "b.qbp"));
    EXPECT_THAT(Names("c.xml"), ElementsAre("c.xml"));
    EXPECT_THAT(Names("**a**.*"), ElementsAre("A.QBP", "a.qbp.bak"));
    EXPECT_THAT(Names(""), ElementsAre());
    folder->SetDirectory(mRoot.substr(0, mRoot.size() - 1));
    EXPECT_EQ(folder->ListFiles("b*").at(0)->FullPath(), mRoot + "b.qbp");
    folder->SetDirectory(mRoot + "none");
    EXPECT_TRUE(folder->ListFiles("*").empty());
}

TEST_P(Files, ChangedOnIsTheTimeOfTheLastWrite) {
    EXPECT_TRUE(Inside("x")->ModifiedOn().IsZero());
    Write("x", "1");
    EXPECT_GE(Inside("x")->ModifiedOn().Split().year, 2026 - 2);
}

TEST_P(Files, DeletingRemovesTheFile) {
    mPlace->Put(mRoot + "x", "");
    Inside("x")->Delete();
    EXPECT_FALSE(Inside("x")->Exists());
    EXPECT_THAT(failureOf([&] { Inside("x")->Delete(); }), StartsWith(mRoot + "x: "));
}

TEST_P(Files, ACopyReplacesWhatIsThere) {
    const std::string bytes("\xFF\0\r\n", 4);
    mPlace->Put(mRoot + "x", bytes);
    mPlace->Put(mRoot + "y", "longer than the new one");
    Inside("x")->CopyTo(mRoot + "y");
    EXPECT_EQ(mPlace->Bytes(mRoot + "y"), bytes);
    EXPECT_EQ(mPlace->Bytes(mRoot + "x"), bytes);
    mPlace->SetReadOnly(mRoot + "x");
    Inside("x")->CopyTo(mRoot + "z");
    EXPECT_FALSE(Inside("z")->IsReadOnly());
    EXPECT_EQ(failureOf([&] { Inside("none")->CopyTo(mRoot + "y"); }), mRoot + "none: The file is not there");
    EXPECT_EQ(failureOf([&] { Inside("x")->CopyTo(mRoot + "none/x"); }),
              mRoot + "none/x: No such file or directory");
    EXPECT_EQ(mPlace->Bytes(mRoot + "y"), bytes);
}

TEST_P(Files, ARelativePathCountsFromItsBaseWhileThatIsSet) {
    const auto project = Inside("p.qbp");
    const auto file = mFiles->NewFileSystemObject();
    file->SetRelativeTo(project);
    file->SetPath("images\\x.png");
    EXPECT_EQ(file->FullPath(), mRoot + "images/x.png");
    EXPECT_EQ(file->Directory(), mRoot + "images/");
    EXPECT_EQ(file->RelativePath(), "images/x.png");
    file->SetRelativeTo(nullptr);
    EXPECT_EQ(file->FullPath(), "images/x.png");
    file->SetRelativeTo(project);
    file->SetPath("/else/x.png");
    EXPECT_EQ(file->FullPath(), "/else/x.png");
    file->SetPath("D:\\else\\x.png");
    EXPECT_EQ(file->FullPath(), "D:/else/x.png");
    file->SetRelativeTo(file);
    EXPECT_EQ(file->FullPath(), "D:/else/x.png");
}

struct Relative {
    const char* base;
    const char* path;
    const char* relative;
};

TEST_P(Files, ARelativeNameNeverLeavesTheFolder) {
    for (const auto& [base, path, relative] :
         std::initializer_list<Relative>{{"/p/q.qbp", "/p/x.css", "x.css"},
                                         {"/p/q.qbp", "/p/a/b/x.css", "a/b/x.css"},
                                         {"/p/q.qbp", "\\p\\a\\x.css", "a/x.css"},
                                         {"/p/./a/../q.qbp", "/p//b/../x.css", "x.css"},
                                         {"/p/q.qbp", "/p/../x.css", "/p/../x.css"},
                                         {"/p/q.qbp", "/p/../p/x.css", "x.css"},
                                         {"/p/q.qbp", "/pp/x.css", "/pp/x.css"},
                                         {"/p/q.qbp", "/P/x.css", "/P/x.css"},
                                         {"/p/q.qbp", "/p", "/p"},
                                         {"/p/q.qbp", "/p/", "/p/"},
                                         {"/p/q.qbp", "/x.css", "/x.css"},
                                         {"/q.qbp", "/x.css", "x.css"},
                                         {"/p/q.qbp", "..\\x.css", "/p/../x.css"},
                                         {"/p/q.qbp", "a\\..\\..\\x.css", "/p/a/../../x.css"},
                                         {"/p/q.qbp", "..x.css", "..x.css"},
                                         {"C:\\p\\q.qbp", "C:\\p\\a\\x.css", "a/x.css"},
                                         {"C:\\p\\q.qbp", "D:\\p\\x.css", "D:/p/x.css"},
                                         {"p/q.qbp", "p/a/x.css", "p/a/x.css"},
                                         {"./q.qbp", "x.css", "x.css"},
                                         {"./q.qbp", "/x.css", "/x.css"},
                                         {"../p/q.qbp", "../x.css", "../p/../x.css"},
                                         {"q.qbp", "a\\x.css", "a/x.css"},
                                         {"q.qbp", "/p/x.css", "/p/x.css"},
                                         {"", "a\\x.css", "a/x.css"}}) {
        const auto file = mFiles->NewFileSystemObject();
        file->SetRelativeTo(File(base));
        file->SetPath(path);
        EXPECT_EQ(file->RelativePath(), relative) << base << " " << path;
    }
    EXPECT_EQ(File("a\\x")->RelativePath(), "a/x");
}

TEST_P(Files, WatchedPathsTellTheirChanges) {
    const auto file = File("/a/x.css");
    const auto count = [] { return FileSystemObject::WatchedPaths().Count(); };
    const auto before = count();
    file->SetPath("/a/y.css");
    EXPECT_EQ(count(), before);
    file->Watch();
    file->SetPath("/a/z.css");
    file->SetBaseName("b");
    file->SetExtension("png");
    EXPECT_EQ(count(), before + 3);
    file->SetRelativeTo(File("/a/q"));
    file->SetRelativeTo(nullptr);
    EXPECT_EQ(count(), before + 3);
}

TEST(MemoryFiles, RemembersWhatWasDone) {
    const auto files = makeMemoryFiles();
    files->Put("/p/x", "text");
    EXPECT_TRUE(files->Calls().empty());
    const auto file = files->NewFileSystemObject();
    file->SetPath("/p/x");
    file->ReadAll();
    file->CopyTo("/p/y");
    file->Open(kWriteElement);
    file->Close();
    file->Delete();
    file->SetDirectory("/q");
    file->CreateDirectory();
    EXPECT_THAT(files->Calls(), ElementsAre("read /p/x", "copy /p/x to /p/y", "write /p/x", "finish /p/x",
                                            "delete /p/x", "make folder /q"));
    files->ForgetCalls();
    EXPECT_TRUE(files->Calls().empty());
}

}  // namespace
}  // namespace quillbox
