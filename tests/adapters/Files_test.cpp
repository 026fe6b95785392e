// What files on disk and in memory do alike: reading, writing, copying.

#include <gmock/gmock.h>

#include "adapters/Failure.h"
#include "adapters/FilesContract.h"

namespace quillbox {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class Files : public FilesContract {};

INSTANTIATE_TEST_SUITE_P(OnDisk, Files, testing::Values(&makePlace<OnDisk>));
INSTANTIATE_TEST_SUITE_P(InMemory, Files, testing::Values(&makePlace<InMemory>));

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
