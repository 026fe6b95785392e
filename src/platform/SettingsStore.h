#pragma once

#include <cstdint>
#include <string>

namespace quillbox {

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

// The registry of the machine and of the user. A key's default value has the empty value name.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // Empty for an absent value. Each read looks afresh.
    virtual std::string Read(Hive hive, const std::string& key, const std::string& valueName) = 0;
    virtual void Write(Hive hive, const std::string& key, const std::string& valueName,
                       const std::string& value) = 0;
    // A value that is not there is fine.
    virtual void Delete(Hive hive, const std::string& key, const std::string& valueName) = 0;
    // The folder of the data that the library came with; empty where there is none.
    virtual std::string DataDirectory() { return {}; }
};

}  // namespace quillbox
