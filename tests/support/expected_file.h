#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace testing_support {

/// Compares `text` with the file `name` below tests/data; with the environment variable
/// UPDATE_EXPECTED set, writes the file anew first.
inline void expectFile(const std::string& name, const std::string& text) {
    const std::string file = std::string(BREVANE_TEST_DATA "/") + name;
    if (std::getenv("UPDATE_EXPECTED") != nullptr) {
        std::ofstream(file, std::ios::binary) << text;
    }
    std::ostringstream expected;
    expected << std::ifstream(file, std::ios::binary).rdbuf();
    EXPECT_EQ(text, expected.str()) << file;
}

}  // namespace testing_support
