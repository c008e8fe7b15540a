#pragma once

#include "support/json.h"

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace testing_support {

/// Rows of the table `name` below tests/data: arrays of texts and numbers, all given as texts with
/// one byte for each character.
template <std::size_t kFields>
std::vector<std::array<std::string, kFields>> tableRows(const std::string& name) {
    const Json table = parseJsonFile(BREVANE_TEST_DATA "/" + name);
    EXPECT_FALSE(table.items().empty()) << name;
    std::vector<std::array<std::string, kFields>> rows;
    for (const Json& row : table.items()) {
        EXPECT_EQ(row.items().size(), kFields) << name;
        auto& fields = rows.emplace_back();
        for (std::size_t at = 0; at < kFields; ++at) {
            fields.at(at) = row[at].bytes();
        }
    }
    return rows;
}

}  // namespace testing_support
