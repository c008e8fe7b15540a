#include "security/login_fixture.h"
#include "support/table_file.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <sys/wait.h>

namespace {

/// The program of the build that this test belongs to, on the store of the test's folder.
class LoginProgram : public testing_support::LoginTest {
protected:
    struct Outcome {
        int status = -1;
        std::string output;
    };

    [[nodiscard]] Outcome
    run(const std::string& script, const std::string& arguments, const std::string& settings
    ) const {
        std::ofstream(folder() + "/script.txt", std::ios::binary) << script;
        const std::string command =
            "XDG_CONFIG_HOME='" + folder() + settings + "' BREVANE_PROGRAM_FOLDER='" + folder() +
            "/program' '" + program() + "'" + arguments + " < '" + folder() + "/script.txt' 2>&1";
        FILE* const pipe = ::popen(command.c_str(), "r");  // NOLINT(cert-env33-c)
        Outcome outcome;
        std::array<char, 4096> buffer{};
        while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
            outcome.output.append(buffer.data(), size);
        }
        outcome.status = WEXITSTATUS(::pclose(pipe));
        return outcome;
    }
    static std::string program() {
        const auto tests = std::filesystem::canonical("/proc/self/exe").parent_path();
        return (tests.parent_path() / "src/app/brevane-login").string();
    }
};

}  // namespace

TEST_F(LoginProgram, endsWithZeroWhenSomebodyLoggedIn) {
    ASSERT_TRUE(std::filesystem::exists(program())) << "build the target brevane-login";
    open();
    addUser("ZOE", "Z1", "zoe1234");
    for (const auto& [given, script, status, printed, arguments, settings] :
         testing_support::tableRows<6>("security/program_calls.json")) {
        SCOPED_TRACE(given);
        const Outcome outcome = run(script, arguments, settings);
        EXPECT_EQ(std::to_string(outcome.status), status) << outcome.output;
        EXPECT_NE(outcome.output.find(printed), std::string::npos) << outcome.output;
        EXPECT_EQ(outcome.output.find("zoe123"), std::string::npos) << outcome.output;
    }
}
