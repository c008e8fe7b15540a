#include "support/temp_folder.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

int run(const std::string& arguments) {
    const std::string command = "'" BREVANE_TOOLS "/samplestore' " + arguments + " >/dev/null 2>&1";
    const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe)
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct Call {
    const char* given;
    std::string arguments;
    int status;
};

TEST(SampleStore, touchesNoFolderThatHoldsSomething) {
    const testing_support::TempFolder place;
    place.write("data/QBLINK.NUV", "the accounts");
    place.write("file", "");
    fs::create_directory(place.path() / "empty");
    for (const char* folder : {"data", "empty"}) {
        fs::permissions(place.path() / folder, fs::perms(0750));
    }
    const std::string what = " --sales 3 --days 1 --seed 1";
    const Call calls[] = {
        {"another store's data folder", place.str() + "/data" + what, 1},
        {"a file", place.str() + "/file" + what, 1},
        {"a folder in a file", place.str() + "/file/in" + what, 1},
        {"no seed", place.str() + "/new --sales 3 --days 1", 64},
        {"an empty folder", place.str() + "/empty" + what, 0},
        {"the same once more", place.str() + "/empty" + what, 1},
        {"a new folder", place.str() + "/one/new" + what, 0},
    };
    for (const Call& call : calls) {
        EXPECT_EQ(run(call.arguments), call.status) << call.given;
    }
    EXPECT_EQ(place.read("data/QBLINK.NUV"), "the accounts");
    EXPECT_FALSE(place.has("data/config"));
    EXPECT_EQ(fs::status(place.path() / "data").permissions(), fs::perms(0750));
    EXPECT_EQ(fs::status(place.path() / "empty").permissions(), fs::perms(0750));
    EXPECT_EQ(fs::status(place.path() / "one/new").permissions(), fs::perms::owner_all);
    EXPECT_TRUE(place.has("empty/NUVDATA1.mdf"));
}

}  // namespace
