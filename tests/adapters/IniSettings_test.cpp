#include "adapters/settings/IniSettings.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "adapters/Environment.h"
#include "adapters/Failure.h"
#include "adapters/TemporaryFolder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* kKey = "Software\\Merivane\\Quillbox";

class IniSettings : public testing::Test {
  protected:
    std::string Read(const std::string& name, Hive hive = Hive::CurrentUser) {
        return mSettings->Read(hive, kKey, name);
    }
    void Write(const std::string& name, const std::string& value, Hive hive = Hive::CurrentUser) {
        mSettings->Write(hive, kKey, name, value);
    }
    void SetFile(const std::string& text) { std::ofstream(UserFile(), std::ios::binary) << text; }
    std::string File() {
        std::ifstream file(UserFile(), std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    std::string UserFile() { return mFolder.Path() + "current_user.ini"; }

    TemporaryFolder mFolder;
    EnvironmentVariable mPlace{"QUILLBOX_REGISTRY", mFolder.Path()};
    std::shared_ptr<SettingsStore> mSettings = makeIniSettings();
};

TEST_F(IniSettings, WhatIsWrittenIsRead) {
    Write("SSUser", "anna");
    Write("", "the default value");
    mSettings->Write(Hive::CurrentUser, "Other", "SSUser", "bert");
    EXPECT_EQ(Read("SSUser"), "anna");
    EXPECT_EQ(Read(""), "the default value");
    EXPECT_EQ(mSettings->Read(Hive::CurrentUser, "Other", "SSUser"), "bert");
    EXPECT_EQ(File(),
              "[Software\\Merivane\\Quillbox]\nSSUser=anna\n=the default value\n\n[Other]\nSSUser=bert\n");
}

TEST_F(IniSettings, WhatIsAbsentIsEmpty) {
    EXPECT_EQ(Read("SSUser"), "");
    EXPECT_EQ(Read(""), "");
    mSettings->Delete(Hive::CurrentUser, kKey, "SSUser");
    EXPECT_FALSE(fs::exists(UserFile()));
    Write("a", "");
    EXPECT_EQ(Read("a"), "");
    mSettings->Delete(Hive::CurrentUser, kKey, "b");
    mSettings->Delete(Hive::CurrentUser, kKey, "a");
    EXPECT_EQ(File(), "[Software\\Merivane\\Quillbox]\n");
}

TEST_F(IniSettings, NamesIgnoreCase) {
    Write("HHCPath", "1");
    EXPECT_EQ(mSettings->Read(Hive::CurrentUser, "SOFTWARE\\merivane\\QUILLBOX", "hhcPATH"), "1");
    mSettings->Write(Hive::CurrentUser, "software\\merivane\\quillbox", "hhcpath", "2");
    EXPECT_EQ(Read("HHCPath"), "2");
}

TEST_F(IniSettings, HivesAreApart) {
    Write("a", "user");
    Write("a", "machine", Hive::LocalMachine);
    EXPECT_EQ(Read("a"), "user");
    EXPECT_EQ(Read("a", Hive::LocalMachine), "machine");
}

TEST_F(IniSettings, CommentsOrderAndBlankLinesStay) {
    SetFile(
        "\xEF\xBB\xBF; mine\n\n[ Other ]\nx = 1\n[software\\merivane\\quillbox]\n# note\n  a =  old  "
        "\n;a=no\n\n[Z]\nz=1");
    EXPECT_EQ(Read("a"), "old");
    EXPECT_EQ(mSettings->Read(Hive::CurrentUser, "Z", "z"), "1");
    Write("a", "new");
    Write("b", "added");
    EXPECT_EQ(File(),
              "; mine\n\n[ Other ]\nx = 1\n[software\\merivane\\quillbox]\n# "
              "note\na=new\nb=added\n;a=no\n\n[Z]\nz=1\n");
}

TEST_F(IniSettings, LineEndsOfOtherSystemsStay) {
    SetFile("[Software\\Merivane\\Quillbox]\r\na=1\r\n; x\r\n");
    EXPECT_EQ(Read("a"), "1");
    Write("a", "2");
    EXPECT_EQ(File(), "[Software\\Merivane\\Quillbox]\r\na=2\r\n; x\r\n");
}

TEST_F(IniSettings, ValuesTypedByHandAreTakenToTheLetter) {
    SetFile(
        "[Software\\Merivane\\Quillbox]\na=C:\\new\\tools\\\\x\\\nb=\"C:\\new files\\hh.exe\" %1 = ; "
        "#\nc=\\\\server\\share\n");
    EXPECT_EQ(Read("a"), "C:\\new\\tools\\\\x\\");
    EXPECT_EQ(Read("b"), "\"C:\\new files\\hh.exe\" %1 = ; #");
    EXPECT_EQ(Read("c"), "\\\\server\\share");
}

TEST_F(IniSettings, EveryTextComesBack) {
    for (const std::string value :
         {" a",    "a ",  " ",         "\t",           "a\tb",          "\n",  "a\nb\r\n", "\\", "\\n",
          "a\\\n", "\\ ", " \\",       "escaped:",     "escaped:x\\ny", "[x]", ";x",       "#",  "=",
          "a=b",   "\"",  "C:\\new\\", "\u00C4\u6F22", "  two  "}) {
        Write("v", value);
        EXPECT_EQ(Read("v"), value);
    }
    std::mt19937 random(3);
    const std::string signs = "a \\\n\r\tnrs:;=[]\"escaped";
    for (int round = 0; round < 500; ++round) {
        std::string value = random() % 3 ? "" : "escaped:";
        for (auto length = random() % 12; length > 0; --length) value += signs[random() % signs.size()];
        Write("v", value);
        ASSERT_EQ(Read("v"), value);
        EXPECT_EQ(Read("other"), "");
    }
}

TEST_F(IniSettings, ANameThatTheFileCannotHoldIsRefused) {
    for (const char* name : {"a=b", "a\nb", ";a", "#a", "[a", " a", "a\t"}) {
        EXPECT_THAT(failureOf([&] { Write(name, "x"); }), HasSubstr("is no name for a setting")) << name;
    }
    EXPECT_THAT(failureOf([&] { mSettings->Write(Hive::CurrentUser, "a]b", "x", ""); }), HasSubstr("'a]b'"));
    EXPECT_FALSE(fs::exists(UserFile()));
}

TEST_F(IniSettings, FilesAreForTheirOwnerAloneAndNothingIsLeftBeside) {
    SetFile("");
    fs::permissions(UserFile(), fs::perms(0644));
    Write("SSPassword", "secret");
    EXPECT_EQ(fs::status(UserFile()).permissions(), fs::perms(0600));
    EXPECT_EQ(std::distance(fs::directory_iterator(mFolder.Path()), {}), 1);
}

TEST_F(IniSettings, ASymbolicLinkStaysOne) {
    std::ofstream(mFolder.Path() + "real.ini").close();
    fs::create_symlink("real.ini", UserFile());
    Write("a", "1");
    EXPECT_TRUE(fs::is_symlink(UserFile()));
    EXPECT_EQ(Read("a"), "1");
}

TEST_F(IniSettings, WhatCannotBeReadIsNotWrittenOver) {
    fs::create_symlink("current_user.ini", UserFile());
    EXPECT_EQ(Read("a"), "");
    EXPECT_THAT(failureOf([&] { Write("a", "1"); }), HasSubstr(UserFile() + "' cannot be read"));
}

TEST_F(IniSettings, AFailedWriteNamesTheFile) {
    std::ofstream(mFolder.Path() + "file").close();
    const EnvironmentVariable place("QUILLBOX_REGISTRY", mFolder.Path() + "file/below");
    EXPECT_THAT(failureOf([&] { Write("a", "1"); }),
                HasSubstr(mFolder.Path() + "file/below/current_user.ini"));
}

TEST_F(IniSettings, ThePlaceIsLookedUpAtEveryAccess) {
    Write("a", "here");
    const EnvironmentVariable none("QUILLBOX_REGISTRY", std::nullopt);
    const EnvironmentVariable user("XDG_CONFIG_HOME", mFolder.Path() + "config");
    const EnvironmentVariable machine("XDG_CONFIG_DIRS",
                                      "relative:" + mFolder.Path() + "first:" + mFolder.Path() + "second");
    EXPECT_EQ(Read("a"), "");
    Write("a", "there");
    EXPECT_TRUE(fs::exists(mFolder.Path() + "config/quillbox/current_user.ini"));
    fs::create_directories(mFolder.Path() + "second/quillbox");
    std::ofstream(mFolder.Path() + "second/quillbox/local_machine.ini") << "[" << kKey << "]\nb=second\n";
    EXPECT_EQ(Read("b", Hive::LocalMachine), "second");
    fs::remove(mFolder.Path() + "second/quillbox/local_machine.ini");
    Write("b", "first", Hive::LocalMachine);
    EXPECT_TRUE(fs::exists(mFolder.Path() + "first/quillbox/local_machine.ini"));
}

TEST_F(IniSettings, ARelativeConfigurationDirectoryDoesNotCount) {
    const EnvironmentVariable none("QUILLBOX_REGISTRY", std::nullopt);
    const EnvironmentVariable user("XDG_CONFIG_HOME", "relative");
    const EnvironmentVariable home("HOME", mFolder.Path());
    Write("a", "1");
    EXPECT_TRUE(fs::exists(mFolder.Path() + ".config/quillbox/current_user.ini"));
}

TEST_F(IniSettings, WithoutMachineSettingsTheDataOfTheLibraryServes) {
    const auto installDir = Read("installdir", Hive::LocalMachine);
    EXPECT_TRUE(fs::exists(fs::path(installDir) / "Configuration" / "statuscodes.xml")) << installDir;
    EXPECT_EQ(installDir, mSettings->DataDirectory());
    EXPECT_EQ(Read("InstallDir", Hive::CurrentUser), "");
    EXPECT_EQ(mSettings->Read(Hive::LocalMachine, "Other", "InstallDir"), "");
    Write("other", "x", Hive::LocalMachine);
    EXPECT_EQ(Read("InstallDir", Hive::LocalMachine), "");
    Write("InstallDir", "/opt/q", Hive::LocalMachine);
    EXPECT_EQ(Read("InstallDir", Hive::LocalMachine), "/opt/q");
}

}  // namespace
}  // namespace quillbox
