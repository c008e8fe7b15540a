#include "samplestore/store_writer.h"
#include "support/link_fixture.h"
#include "support/table_file.h"
#include "util/conversions.h"

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

/// The stand-ins of the report tools on a store in Summary mode.
class ReportTools : public testing_support::LinkFixture {
protected:
    void SetUp() override {
        samplestore::Options options;
        options.folder = folder();
        options.sales = 20;
        options.days = 2;
        options.seed = 7;
        options.summary = true;
        samplestore::makeStore(options);
    }
    /// Runs a tool. @return its status.
    [[nodiscard]] int run(const std::string& line) const {
        const std::string command = "XDG_CONFIG_HOME='" + folder() +
                                    "/config' '" BREVANE_TOOLS "'/" + line + " 2>/dev/null";
        const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe)
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    /// Names of the files that the tools left, which go.
    [[nodiscard]] std::string takeFiles() const {
        std::string names;
        if (fs::exists(folder() + "/export")) {
            for (const fs::directory_entry& entry : fs::directory_iterator(folder() + "/export")) {
                names += entry.path().filename().string();
            }
        }
        fs::remove_all(folder() + "/export");
        return names;
    }
};

TEST_F(ReportTools, writeForNobodyElse) {
    const mode_t before = umask(0);
    EXPECT_EQ(run("reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2015|TODATE=1/5/2015'"), 0);
    umask(before);
    for (const char* name : {"/export", "/export/Summary20150105.txt"}) {
        const auto rights = fs::status(folder() + name).permissions();
        EXPECT_EQ(rights & fs::perms::others_all, fs::perms::none) << name;
    }
}

TEST_F(ReportTools, takeTheirCommandLineAndNoOther) {
    for (const auto& [given, line, status, file] :
         testing_support::tableRows<4>("start/report_tools.json")) {
        SCOPED_TRACE(given);
        EXPECT_EQ(std::to_string(run(line)), status);
        EXPECT_EQ(takeFiles(), file);
    }
}

}  // namespace
