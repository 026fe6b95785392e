#include "adapters/system/LocalSystem.h"

#include <gmock/gmock.h>

#include <ctime>
#include <set>

#include <pwd.h>
#include <unistd.h>

namespace quillbox {
namespace {

using testing::MatchesRegex;

TEST(LocalSystem, NowIsTheLocalTimeInWholeSeconds) {
    const auto now = [] {
        const auto time = std::time(nullptr);
        std::tm parts{};
        localtime_r(&time, &parts);
        char text[32];
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
        return std::string(text);
    };
    const auto before = now();
    const auto told = makeLocalSystem()->Now();
    EXPECT_LE(before, told.Format("yyyy-mm-dd hh:nn:ss"));
    EXPECT_GE(now(), told.Format("yyyy-mm-dd hh:nn:ss"));
    EXPECT_EQ(told.Split().microsecond, 0);
}

TEST(LocalSystem, TheUserIsTheOneOfTheProcess) {
    const auto* const entry = getpwuid(geteuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(makeLocalSystem()->UserName(), entry->pw_name);
}

TEST(LocalSystem, GuidsAreRandomAndInRegistryForm) {
    const auto system = makeLocalSystem();
    std::set<std::string> seen;
    for (int i = 0; i < 10000; ++i) {
        const auto guid = system->NewGuid();
        ASSERT_EQ(guid.size(), 38u);
        ASSERT_TRUE(seen.insert(guid).second);
        if (i < 100) {
            EXPECT_THAT(
                guid,
                MatchesRegex("\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}"));
        }
    }
}

}  // namespace
}  // namespace quillbox
