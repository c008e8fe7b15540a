#include "support/temp_folder.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

struct Outcome {
    int status = -1;
    std::string output;
};

/// Runs a program of this build for a user without settings, who has a display only when
/// `environment` names one.
Outcome run(const std::string& environment, const std::string& program, const std::string& home) {
    const std::filesystem::path tests = std::filesystem::canonical("/proc/self/exe").parent_path();
    const std::string command =
        "cd '" + home + "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM HOME='" + home +
        "' XDG_CONFIG_HOME='" + home + "/config' " + "BREVANE_PROGRAM_FOLDER='" + home + "' " +
        environment + " '" + (tests.parent_path() / "src/app" / program).string() +
        "' 2>&1 </dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    Outcome outcome;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        outcome.output.append(buffer.data(), size);
    }
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

struct Case {
    const char* given;
    const char* environment;
    const char* program;
    int status;
    const char* says;
};

constexpr Case kCases[] = {
    {"no display", "", "brevane", 3, "brevane: no window can be drawn"},
    {"a display that does not answer", "DISPLAY=:987", "brevane", 3, "no window can be drawn"},
    {"a toolkit told wrong", "QT_QPA_PLATFORM=paper", "brevane", 3, "no window can be drawn"},
    {"the configuration, no display", "", "NUVDataConfiguration.exe", 3, "there is no display"},
    {"the configuration, a dead display",
     "DISPLAY=:987",
     "NUVDataConfiguration.exe",
     3,
     "no window can be drawn"},
    {"the login, a dead display", "WAYLAND_DISPLAY=none", "brevane-login", 3, "no window"},
    {"no settings at the console", "", "brevane-console", 0, "settings.ini name no Server"},
};

TEST(Programs, sayWhyTheyCannotStart) {
    const testing_support::TempFolder home;
    home.write("config/brevane/settings.ini", "[NUV Settings\\DATABASE]\nDATAPATH=" + home.str());
    for (const auto& [given, environment, program, status, says] : kCases) {
        SCOPED_TRACE(given);
        const Outcome outcome = run(environment, program, home.str());
        EXPECT_EQ(outcome.status, status);
        EXPECT_NE(outcome.output.find(says), std::string::npos) << outcome.output;
    }
}

}  // namespace
