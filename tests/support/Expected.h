#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace quillbox {

// The bytes of a file below tests/data.
inline std::string testData(const std::string& name) {
    std::ifstream file(std::string(QUILLBOX_SOURCE_DIR) + "/tests/data/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Takes out of a project's text what differs from release to release.
inline std::string withoutVersion(const std::string& text) {
    static const std::regex version(" Version=\"[0-9.]+\"");
    return std::regex_replace(text, version, " Version=\"*\"");
}

// Compares with a file below tests/data; with QUILLBOX_UPDATE=1 in the environment the file is written.
inline void expectData(const std::string& name, const std::string& text) {
    if (std::getenv("QUILLBOX_UPDATE")) {
        const auto path = std::filesystem::path(QUILLBOX_SOURCE_DIR) / "tests/data" / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    EXPECT_EQ(text, testData(name)) << name;
}

}  // namespace quillbox
