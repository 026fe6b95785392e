#include "build/CompilerChoice.h"

#include <gmock/gmock.h>

#include "build/BuildTest.h"

namespace quillbox {
namespace {

constexpr const char* kAssociation = "SOFTWARE\\Classes\\hhp\\shell\\open\\command";
constexpr const char* kUsualPlace = "c:\\program files\\html help workshop\\hhc.exe";

class CompilerChoiceTest : public BuildTest {
  protected:
    void putFile(const std::string& path) { outside.files->Put(path, "a program"); }
    void setUserCompiler(const std::string& name, const std::string& path) {
        outside.settings->Write(Hive::CurrentUser, "Software\\Merivane\\Quillbox", name, path);
    }
    void setAssociation(const std::string& command) {
        outside.settings->Write(Hive::LocalMachine, kAssociation, "", command);
    }
};

TEST_F(CompilerChoiceTest, FindsNothingOnAnEmptyMachine) { EXPECT_EQ(htmlHelpCompiler(), ""); }

TEST_F(CompilerChoiceTest, TakesTheCompilerBesideTheUsersProgram) {
    putFile("/tools/workshop.exe");
    setUserCompiler("HHCPath", "/tools/workshop.exe");
    EXPECT_EQ(htmlHelpCompiler(), "/tools/hhc.exe");
}

TEST_F(CompilerChoiceTest, TakesTheOtherCompilerFromItsOwnValue) {
    putFile("/tools/rtf.exe");
    setUserCompiler("HCRTFPath", "/tools/rtf.exe");
    EXPECT_EQ(compilerFileName(kAssociation, false), "/tools/hcrtf.exe");
    EXPECT_EQ(htmlHelpCompiler(), "");
}

TEST_F(CompilerChoiceTest, DropsAUserValueWithoutAFile) {
    setUserCompiler("HHCPath", "/gone/hhc.exe");
    EXPECT_EQ(htmlHelpCompiler(), "");
}

TEST_F(CompilerChoiceTest, TurnsTheFileAssociationIntoTheCompilerBesideIt) {
    putFile("/apps/help workshop/hhc.exe");
    for (const auto* command : {"\"/apps/help workshop/hhw.exe\" %1", "/apps/help workshop/hhw.exe %1",
                                "\"/apps/help workshop/hhw.exe\""}) {
        setAssociation(command);
        EXPECT_EQ(htmlHelpCompiler(), "/apps/help workshop/hhc.exe") << command;
    }
}

TEST_F(CompilerChoiceTest, DropsAnAssociationWithoutACompilerBesideIt) {
    putFile("/apps/hhw.exe");
    setAssociation("/apps/hhw.exe %1");
    EXPECT_EQ(htmlHelpCompiler(), "");
}

TEST_F(CompilerChoiceTest, PrefersTheUsualPlaceToTheRegistryWhateverWasAskedFor) {
    putFile("/apps/hhc.exe");
    putFile(kUsualPlace);
    setAssociation("/apps/hhw.exe %1");
    EXPECT_EQ(htmlHelpCompiler(), kUsualPlace);
    EXPECT_EQ(compilerFileName(kAssociation, false), kUsualPlace);
}

TEST_F(CompilerChoiceTest, PrefersTheUsersOwnToTheUsualPlace) {
    putFile("/tools/hhw.exe");
    putFile(kUsualPlace);
    setUserCompiler("HHCPath", "/tools/hhw.exe");
    EXPECT_EQ(htmlHelpCompiler(), "/tools/hhc.exe");
}

}  // namespace
}  // namespace quillbox
