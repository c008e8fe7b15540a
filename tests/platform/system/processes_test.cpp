#include "platform/system/native_clock.h"
#include "platform/system/native_processes.h"
#include "support/temp_folder.h"

#include <ctime>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Standard input of this process comes from a file while this lives, as an operator's script does.
class ScriptedInput {
public:
    explicit ScriptedInput(const std::string& path) : before_(dup(STDIN_FILENO)) {
        const int script = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        dup2(script, STDIN_FILENO);
        close(script);
    }
    ~ScriptedInput() {
        dup2(before_, STDIN_FILENO);
        close(before_);
    }
    ScriptedInput(const ScriptedInput&) = delete;
    ScriptedInput& operator=(const ScriptedInput&) = delete;
    ScriptedInput(ScriptedInput&&) = delete;
    ScriptedInput& operator=(ScriptedInput&&) = delete;

private:
    int before_;
};

}  // namespace

class NativeProcesses : public testing::Test {
protected:
    /// Makes a program that writes down what it was given.
    void makeProgram(const std::string& name) const {
        folder.write(
            name,
            "#!/bin/sh\nread line\n"
            "printf '%s|%s|%s|%s' \"$#\" \"$2\" \"$line\" \"$BREVANE_COMMAND_LINE\" > '" +
                folder.str() + "/out'\n"
        );
        chmod((folder.path() / name).c_str(), 0755);
    }

    testing_support::TempFolder folder;
    platform::NativeProcesses processes;
};

TEST_F(NativeProcesses, findTheProgramAtTheStartOfACommandLine) {
    makeProgram("my tools/Reports");
    makeProgram("my tools/Reports START");
    struct Case {
        const char* given;
        std::string line;
        const char* seen;
    };
    const Case cases[] = {
        {"blanks in the name, .exe, another case",
         folder.file("My Tools\\reports.exe |STORE=1|EXPORT=Y"),
         "1||||STORE=1|EXPORT=Y"},
        {"the longest name counts", folder.file("my tools\\Reports START x  y"), "2|y||x  y"},
        {"quotes", "\"" + folder.file("my tools\\Reports") + "\" START", "1|||START"},
        {"no arguments", folder.file("my tools\\Reports.exe "), "0|||"},
    };
    folder.write("script", "a line that no child may read\n");
    const ScriptedInput input((folder.path() / "script").string());
    for (const auto& [given, line, seen] : cases) {
        SCOPED_TRACE(given);
        processes.run(line);
        EXPECT_EQ(folder.read("out"), seen);
    }
}

TEST_F(NativeProcesses, failWhenTheProgramIsMissing) {
    folder.write("text", "no program");
    for (const std::string& line :
         {folder.file("none.exe /A"), folder.file("text /A"), std::string(), std::string("\"x")}) {
        SCOPED_TRACE(line);
        EXPECT_THROW(processes.run(line), platform::PlatformError);
        EXPECT_THROW(processes.runHidden(line), platform::PlatformError);
    }
}

TEST_F(NativeProcesses, startHiddenProgramsWithoutWaiting) {
    // Given a program that lives until somebody opens its pipe
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    folder.write("wait", "#!/bin/sh\necho done > '" + folder.str() + "/pipe'\n");
    chmod((folder.path() / "wait").c_str(), 0755);
    // When
    processes.runHidden(folder.file("wait"));
    // Then
    EXPECT_EQ(folder.read("pipe"), "done\n");
}

TEST_F(NativeProcesses, knowNames) {
    const std::string name = processes.computerName();
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find_first_of(".abcdefghijklmnopqrstuvwxyz"), std::string::npos);
    EXPECT_EQ(processes.programName(), "test_platform_system");
    EXPECT_THROW(processes.endProgram(), platform::ProgramEnd);
}

TEST(NativeClock, showsTheLocalTime) {
    platform::NativeClock clock;
    const std::time_t before = std::time(nullptr);
    const util::DateTime now = clock.now();
    std::tm local{};
    local.tm_year = util::calendarDate(now.day).year - 1900;
    local.tm_mon = util::calendarDate(now.day).month - 1;
    local.tm_mday = util::calendarDate(now.day).day;
    local.tm_sec = now.seconds;
    local.tm_isdst = -1;
    EXPECT_LE(std::abs(std::difftime(std::mktime(&local), before)), 3700);
    clock.sleep(0);
}
