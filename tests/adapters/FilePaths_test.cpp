// What files on disk and in memory do alike: paths, directories, relative names.

#include <gmock/gmock.h>

#include "adapters/Failure.h"
#include "adapters/FilesContract.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class FilePaths : public FilesContract {};

INSTANTIATE_TEST_SUITE_P(OnDisk, FilePaths, testing::Values(&makePlace<OnDisk>));
INSTANTIATE_TEST_SUITE_P(InMemory, FilePaths, testing::Values(&makePlace<InMemory>));

TEST_P(FilePaths, ANewObjectHasNoPath) {
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

TEST_P(FilePaths, APathIsReadWithBothSeparators) {
    const auto file = File("C:\\a/b\\.\\..\\My Project.old.qbp");
    EXPECT_EQ(file->FullPath(), "C:/a/b/./../My Project.old.qbp");
    EXPECT_EQ(file->Directory(), "C:/a/b/./../");
    EXPECT_EQ(file->FileName(), "My Project.old.qbp");
    EXPECT_EQ(file->BaseName(), "My Project.old");
    EXPECT_EQ(file->Extension(), "qbp");
    EXPECT_EQ(File("~/$HOME/x")->FullPath(), "~/$HOME/x");
}

TEST_P(FilePaths, BaseNameAndExtensionChangeThePath) {
    const auto file = File("/a.b/name");
    EXPECT_EQ(file->Extension(), "");
    file->SetExtension("qbp");
    EXPECT_EQ(file->FullPath(), "/a.b/name.qbp");
    file->SetBaseName("other.v2");
    EXPECT_EQ(file->FullPath(), "/a.b/other.v2.qbp");
    file->SetExtension("");
    EXPECT_EQ(file->FullPath(), "/a.b/other.v2");
}

TEST_P(FilePaths, ANulInAPathIsRefused) {
    const std::string nul("/a\0b", 4);
    const auto file = File("/a");
    EXPECT_EQ(failureOf([&] { file->SetPath(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->SetDirectory(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->SetBaseName(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(failureOf([&] { file->CopyTo(nul); }), "'/a': A path holds no NUL");
    EXPECT_EQ(file->FullPath(), "/a");
}

TEST_P(FilePaths, DirectoriesAreMadeWithTheirParents) {
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

TEST_P(FilePaths, FilesAreListedByPatternInTheOrderOfTheirNames) {
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

TEST_P(FilePaths, ARelativePathCountsFromItsBaseWhileThatIsSet) {
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

TEST_P(FilePaths, ARelativeNameNeverLeavesTheFolder) {
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

TEST_P(FilePaths, WatchedPathsTellTheirChanges) {
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

}  // namespace
}  // namespace quillbox
