#include "adapters/system/LocalSystem.h"

#include <pwd.h>
#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace quillbox {

namespace {

class LocalSystem : public System {
  public:
    Date Now() override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        Date::Parts parts;
        parts.year = local.tm_year + 1900;
        parts.month = local.tm_mon + 1;
        parts.day = local.tm_mday;
        parts.hour = local.tm_hour;
        parts.minute = local.tm_min;
        parts.second = local.tm_sec > 59 ? 59 : local.tm_sec;  // a leap second
        return Date::From(parts).value_or(Date());
    }

    std::string UserName() override {
        std::vector<char> buffer(16384);
        passwd entry{};
        passwd* found = nullptr;
        if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found)
            return found->pw_name;
        for (const char* name : {"USER", "LOGNAME"}) {
            if (const char* value = std::getenv(name)) return value;
        }
        return {};
    }

    std::string NewGuid() override {
        std::array<unsigned char, 16> b{};
        if (getrandom(b.data(), b.size(), 0) != static_cast<ssize_t>(b.size())) return {};
        b[6] = static_cast<unsigned char>((b[6] & 0x0F) | 0x40);  // a random GUID
        b[8] = static_cast<unsigned char>((b[8] & 0x3F) | 0x80);
        std::string text = "{";
        for (std::size_t i = 0; i < b.size(); ++i) {
            if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
            constexpr const char* kDigits = "0123456789ABCDEF";
            text += kDigits[b[i] >> 4];
            text += kDigits[b[i] & 0x0F];
        }
        return text + "}";
    }
};

}  // namespace

std::shared_ptr<System> makeLocalSystem() { return std::make_shared<LocalSystem>(); }

}  // namespace quillbox
