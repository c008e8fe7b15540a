#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/run_log.h"
#include "support/table_file.h"
#include "windows/window_operator.h"

#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using testing_support::Played;

/// The exports themselves, with an operator who presses Stop.
class StoppedExports : public testing_support::WindowOperator {
protected:
    void SetUp() override {
        makeStore(3, 3);
        for (const char* name : kFiles) {
            fs::copy_file(folder() + "/" + name, folder() + "/" + name + std::string(".kept"));
        }
    }
    /// Plays a script on the files as the store was made with, as the next start of the program.
    Played playAnew(const std::string& script) {
        for (const char* name : kFiles) {
            fs::copy_file(
                folder() + "/" + name + std::string(".kept"),
                folder() + "/" + name,
                fs::copy_options::overwrite_existing
            );
        }
        gbSalesExportArmed = kYes;
        gbPOExportArmed = kYes;
        frmSetup window;
        return play(window, script);
    }
    /// Puts a mark into the setup file that every start begins with.
    void keepMark(const char* key, const char* value) {
        const std::string file = folder() + "/QBLINK.NUV";
        fs::copy_file(file + ".kept", file, fs::copy_options::overwrite_existing);
        setSetupValue("IMPORT HIST", key, value);
        fs::copy_file(file, file + ".kept", fs::copy_options::overwrite_existing);
    }
    static std::size_t boxesWith(const Played& played, const std::string& text) {
        std::size_t count = 0;
        for (const std::string& line : util::split(played.printed, '\n')) {
            count += line.starts_with("[box]") && line.find(text) != std::string::npos ? 1U : 0U;
        }
        return count;
    }

private:
    static constexpr const char* kFiles[] = {"company.qbw", "QBLINK.NUV"};
};

// Stop behind each text of a run, and behind some of a long one.
TEST_F(StoppedExports, endAtAnyRecord) {
    constexpr std::size_t kAll = 12;
    // A text may follow the last record, too late for Stop.
    for (const auto& [given, choice, cancelled, hasLastWord] :
         testing_support::tableRows<4>("windows/stopped_exports.json")) {
        const auto whole = playAnew(choice + "key F8").texts();
        const std::size_t last = whole.size() - (hasLastWord == "yes" ? 1 : 0);
        ASSERT_GE(last, 1U) << given;
        for (std::size_t after = 1; after <= last; after += after < kAll ? 1 : last / 4) {
            SCOPED_TRACE(given + " behind " + std::to_string(after));
            const auto texts =
                playAnew(choice + "stop after " + std::to_string(after) + "\nkey F8").texts();
            EXPECT_EQ(texts.back(), cancelled);
            EXPECT_LE(texts.size(), after + 2) << "one record may follow, and the last text";
        }
    }
}

// A daily export sends new items and customers first.
TEST_F(StoppedExports, endAmongTheNewRecordsWithoutAMarkOrASale) {
    for (const char* after : {"1", "2", "5"}) {
        SCOPED_TRACE(after);
        keepMark("Last Inventory UID Added", "40");
        keepMark("Last Name UID Added", "50");
        const Played played =
            playAnew("check chkExport(3)\nstop after " + std::string(after) + "\nkey F8");
        EXPECT_EQ(played.texts().size(), std::stoul(after) + 1);
        EXPECT_EQ(played.texts().back(), "Exporting Sales Cancelled");
        EXPECT_EQ(setupValue("IMPORT HIST", "Last Inventory UID Added"), "40");
        EXPECT_EQ(setupValue("IMPORT HIST", "Last Name UID Added"), "50");
        EXPECT_EQ(setupValue("IMPORT HIST", "Last Invoices Posted"), "");
        EXPECT_TRUE(transactions("SalesReceipt").empty() && transactions("Invoice").empty());
    }
}

TEST_F(StoppedExports, mayBeStartedAgainAndAFinishedOneMayNot) {
    struct AgainCase {
        const char* given;
        const char* script;
        std::size_t refused;
    };
    constexpr AgainCase kCases[] = {
        {"sales", "check chkExport(3)\nkey F8\nkey F8", 1},
        {"sales that were stopped", "check chkExport(3)\nstop after 2\nkey F8\nkey F8\nkey F8", 1},
        {"receipts", "check chkExport(4)\nkey F8\nkey F8", 1},
        {"receipts that were stopped",
         "check chkExport(4)\nstop after 1\nkey F8\nkey F8\nkey F8",
         1},
        {"a list", "click cmdRun(0)\ncheck chkExport(2)\nkey F8\nkey F8", 0},
    };
    for (const AgainCase& row : kCases) {
        SCOPED_TRACE(row.given);
        const Played played = playAnew(row.script);
        EXPECT_EQ(boxesWith(played, "You Already run once, Please exit"), row.refused);
        EXPECT_EQ(played.printed.find("[refused]"), std::string::npos) << played.printed;
    }
}

}  // namespace
