#include "adapters/settings/IniSettings.h"

#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "adapters/settings/IniFile.h"
#include "base/Text.h"

namespace quillbox {

namespace {

namespace fs = std::filesystem;

constexpr const char* kUserFile = "current_user.ini";
constexpr const char* kMachineFile = "local_machine.ini";

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string homeDirectory() {
    if (const auto home = environment("HOME"); !home.empty()) return home;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    return getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found ? found->pw_dir
                                                                                            : "/";
}

// The configuration directories of a variable, without relative ones, which do not count.
std::vector<fs::path> directoriesOf(const char* variable, const fs::path& fallback) {
    std::vector<fs::path> directories;
    for (const fs::path folder : split(environment(variable), ":")) {
        if (folder.is_absolute()) directories.push_back(folder / "quillbox");
    }
    if (directories.empty()) directories.push_back(fallback / "quillbox");
    return directories;
}

fs::path userDirectory() {
    return directoriesOf("XDG_CONFIG_HOME", fs::path(homeDirectory()) / ".config").front();
}

// The first that has a file, else the first.
fs::path machineDirectory() {
    const auto directories = directoriesOf("XDG_CONFIG_DIRS", "/etc/xdg");
    const auto found = std::find_if(directories.begin(), directories.end(), [](const fs::path& folder) {
        std::error_code ignored;
        return fs::exists(folder / kMachineFile, ignored);
    });
    return found == directories.end() ? directories.front() : *found;
}

std::string pathOf(Hive hive) {
    const char* name = hive == Hive::CurrentUser ? kUserFile : kMachineFile;
    if (const auto folder = environment("QUILLBOX_REGISTRY"); !folder.empty()) return fs::path(folder) / name;
    return (hive == Hive::CurrentUser ? userDirectory() : machineDirectory()) / name;
}

// The data that the library came with: beside the place that it was installed to, else in its sources.
std::string dataDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&makeIniSettings), &info) != 0 && info.dli_fname) {
        std::error_code error;
        auto folder = fs::weakly_canonical(info.dli_fname, error).parent_path();
        for (int up = 0; !error && up < 3 && folder.has_relative_path();
             ++up, folder = folder.parent_path()) {
            const auto data = folder / "share" / "quillbox";
            std::error_code ignored;
            if (fs::is_directory(data / "Configuration", ignored)) return data;
        }
    }
    return QUILLBOX_DATA_DIR;
}

class IniSettings : public SettingsStore {
  public:
    std::string Read(Hive hive, const std::string& key, const std::string& valueName) override {
        const IniFile file(pathOf(hive));
        auto value = file.Read(key, valueName);
        // An unpacked build works at once.
        const bool install =
            sameText(key, "Software\\Merivane\\Quillbox") && sameText(valueName, "InstallDir");
        if (value.empty() && install && hive == Hive::LocalMachine && !file.Exists()) return dataDirectory();
        return value;
    }

    void Write(Hive hive, const std::string& key, const std::string& valueName,
               const std::string& value) override {
        IniFile file(pathOf(hive));
        file.Write(key, valueName, value);
        file.Save();
    }

    void Delete(Hive hive, const std::string& key, const std::string& valueName) override {
        IniFile file(pathOf(hive));
        if (!file.Exists()) return;
        file.Delete(key, valueName);
        file.Save();
    }

    std::string DataDirectory() override { return dataDirectory(); }
};

}  // namespace

std::shared_ptr<SettingsStore> makeIniSettings() { return std::make_shared<IniSettings>(); }

}  // namespace quillbox
