#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace quillbox {

// Sets a variable of the environment for the length of a test; none takes it away.
class EnvironmentVariable {
  public:
    EnvironmentVariable(const char* name, const std::optional<std::string>& value) : mName(name) {
        if (const char* before = std::getenv(name)) mBefore = before;
        set(value);
    }
    ~EnvironmentVariable() { set(mBefore); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

  private:
    void set(const std::optional<std::string>& value) {
        if (value) {
            setenv(mName, value->c_str(), 1);
        } else {
            unsetenv(mName);
        }
    }

    const char* mName;
    std::optional<std::string> mBefore;
};

}  // namespace quillbox
