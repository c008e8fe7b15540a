#include "companyfile/company_file.h"
#include "support/temp_folder.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/wait.h>

namespace companyfile {

namespace {

struct Outcome {
    int status = -1;
    std::string output;
};

/// The tool of the build that this program belongs to.
std::string tool() {
    const std::filesystem::path tests = std::filesystem::canonical("/proc/self/exe").parent_path();
    return (tests.parent_path() / "src/app/companyfile").string();
}

Outcome run(const std::string& arguments) {
    const std::string command = tool() + " " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    Outcome outcome;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        outcome.output.append(buffer.data(), size);
    }
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
}

struct Call {
    const char* given;
    std::string arguments;
    int status;
    const char* output;
};

TEST(CompanyFileTool, endsWithTheStatusOfItsCall) {
    ASSERT_TRUE(std::filesystem::exists(tool())) << "build the target companyfile";
    const testing_support::TempFolder folder;
    const std::string shop = folder.str() + "/shop.qbw";
    const std::string notes = folder.str() + "/notes.txt";
    const std::string mapping = folder.str() + "/QBLINK.NUV";
    std::ofstream(notes) << "no company";
    std::ofstream(mapping) << "[SALES ACCOUNT]\r\nCash=Till 1\r\n";
    const Call cases[] = {
        {"a new file", "new " + shop + " --template retail --mapping " + mapping, 0, ""},
        {"no second one in its place", "new " + shop, 1, "exists already"},
        {"an unknown template", "new " + shop + "2 --template bakery", 1, "no template bakery"},
        {"a mapping that is not there",
         "new " + shop + "2 --mapping " + shop + "3",
         1,
         "cannot be read"},
        {"a folder as mapping", "new " + shop + "2 --mapping " + folder.str(), 1, "cannot be read"},
        {"a mapping without end", "new " + shop + "2 --mapping /dev/zero", 1, "cannot be read"},
        {"a folder as company file", "balance " + folder.str(), 2, "is not a company file"},
        {"a folder that is not there", "new " + folder.str() + "/no/shop.qbw", 1, "could not be"},
        {"a sound file", "check " + shop, 0, "is sound"},
        {"the mapping's account", "dump " + shop, 0, "\"Name\": \"Till 1\""},
        {"a balance of nothing", "balance " + shop, 0, "Total"},
        {"a file of another kind", "check " + notes, 2, "is not a company file"},
        {"no file", "dump " + shop + "4", 2, "could not be found"},
        {"no arguments", "", 64, "companyfile new FILE"},
        {"no file name", "dump", 64, "companyfile new FILE"},
        {"an unknown command", "burn " + shop, 64, "companyfile new FILE"},
        {"an option of another command",
         "dump " + shop + " --template retail",
         64,
         "companyfile new FILE"},
        {"an option without its value", "new " + shop + "2 --template", 64, "companyfile new FILE"},
    };
    for (const auto& [given, arguments, status, output] : cases) {
        SCOPED_TRACE(given);
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, status);
        EXPECT_NE(outcome.output.find(output), std::string::npos) << outcome.output;
    }
}

}  // namespace

}  // namespace companyfile
