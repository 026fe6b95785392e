#include "adapters/settings/IniSettings.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

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

fs::path userDirectory() {
    if (const auto folder = environment("XDG_CONFIG_HOME"); !folder.empty()) return fs::path(folder) / "quillbox";
    return fs::path(environment("HOME")) / ".config" / "quillbox";
}

fs::path machineDirectory() {
    const auto folders = split(environment("XDG_CONFIG_DIRS"), ":");
    for (const auto& folder : folders) {
        if (fs::exists(fs::path(folder) / "quillbox" / kMachineFile)) return fs::path(folder) / "quillbox";
    }
    return "/etc/xdg/quillbox";
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
        for (int up = 0; !error && up < 3 && folder.has_relative_path(); ++up, folder = folder.parent_path()) {
            const auto data = folder / "share" / "quillbox";
            if (fs::is_directory(data / "Configuration", error)) return data;
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
        const bool install = sameText(key, "Software\\Merivane\\Quillbox") && sameText(valueName, "InstallDir");
        if (value.empty() && install && hive == Hive::LocalMachine && !file.Exists()) return dataDirectory();
        return value;
    }

    void Write(Hive hive, const std::string& key, const std::string& valueName, const std::string& value) override {
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
