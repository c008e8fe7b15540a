#include "samplestore/store_writer.h"
#include "support/link_fixture.h"
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

struct LineCase {
    const char* given;
    const char* line;
    int status;
    const char* file;
};

constexpr LineCase kLines[] = {
    {"a day's totals",
     "reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2015|TODATE=1/5/2015'",
     0,
     "Summary20150105.txt"},
    {"a range bears the name of its last day",
     "reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2015|TODATE=1/6/2015'",
     0,
     "Summary20150106.txt"},
    {"a day without sales",
     "reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2010|TODATE=1/5/2010'",
     0,
     ""},
    {"no arguments", "reports.exe", 64, ""},
    {"the arguments in another order",
     "reports.exe /OUTPUT=A /AUTORUN=A '/|FROMDATE=1/5/2015|TODATE=1/5/2015'",
     64,
     ""},
    {"an argument is missing", "reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2015'", 64, ""},
    {"a date that is none",
     "reports.exe /AUTORUN=A /OUTPUT=A '/|FROMDATE=1/5/2015|TODATE='",
     1,
     ""},
    {"the day's orders",
     "POSummaryRpt.exe '|START=1/5/2015' '|END=1/6/2015' '|STORE=1|EXPORT=Y'",
     0,
     "POSummary20150106.txt"},
    {"a suite of several stores names none",
     "POSummaryRpt.exe '|START=1/5/2015' '|END=1/6/2015' '|STORE=|EXPORT=Y'",
     0,
     "POSummary20150106.txt"},
    {"words behind the last argument",
     "POSummaryRpt.exe '|START=1/5/2015' '|END=1/6/2015' '|STORE=1|EXPORT=Yes'",
     64,
     ""},
    {"no export is asked for",
     "POSummaryRpt.exe '|START=1/5/2015' '|END=1/6/2015' '|STORE=1'",
     64,
     ""},
};

TEST_F(ReportTools, takeTheirCommandLineAndNoOther) {
    for (const LineCase& row : kLines) {
        SCOPED_TRACE(row.given);
        EXPECT_EQ(run(row.line), row.status);
        EXPECT_EQ(takeFiles(), row.file);
    }
}

}  // namespace
