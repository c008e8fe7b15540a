#include "config/clsINI_Services.h"
#include "core/brv_op.h"
#include "platform/ports/platform.h"
#include "samplestore/store_writer.h"
#include "support/link_fixture.h"
#include "support/standing_clock.h"
#include "support/table_file.h"
#include "util/conversions.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace {

namespace fs = std::filesystem;
using testing_support::LinkFixture;

constexpr char kSales[] = "0100|Sales A|10.00\r\n0012|Cash|10.00\r\n0099|Cost|4.00\r\n";
constexpr char kOrders[] = "ACME|100|1/5/2015|5.00\r\n";
constexpr char kBadSales[] = "0100|Sales A|10.00\r\n0012|Cash|ten\r\n";

/// Processes whose tools are not there: notes what was to run, and leaves the files of some days.
class AbsentTools : public platform::ProcessPort {
public:
    explicit AbsentTools(std::string folder) : folder_(std::move(folder)) {}

    std::function<void(const std::string&)> note;
    std::vector<std::string> files;  ///< names, as "Summary20150105.txt", that the tools leave
    std::string sales = kSales;      ///< what a sales file holds

    void run(const std::string& commandLine) override {
        note(commandLine);
        const bool isOrders = commandLine.find("POSummaryRpt") != std::string::npos;
        const std::size_t place = commandLine.find(isOrders ? "END=1/" : "TODATE=1/");
        const std::string rest = commandLine.substr(place + (isOrders ? 6 : 9));
        const std::string day = rest.substr(0, rest.find('/'));
        const std::string name = (isOrders ? "POSummary2015010" : "Summary2015010") + day + ".txt";
        if (std::find(files.begin(), files.end(), name) != files.end()) {
            fs::create_directories(folder_ + "/export");
            std::ofstream(folder_ + "/export/" + name, std::ios::binary)
                << (isOrders ? kOrders : sales);
        }
    }
    void runHidden(const std::string&) override {}
    [[nodiscard]] std::string computerName() const override { return "STATION"; }
    [[nodiscard]] std::string programName() const override { return "brevane"; }
    [[noreturn]] void endProgram() override { throw platform::ProgramEnd{}; }

private:
    std::string folder_;
};

class SummaryRun : public LinkFixture {
protected:
    void SetUp() override {
        makeSummaryStore("");
        tools.note = [this](const std::string& line) { note("run " + shortened(line)); };
        clock.onPause = [this](int milliseconds) {
            note("pause " + std::to_string(milliseconds) + ", last " + setting("Last Date Posted"));
        };
        nativeProcesses_ = std::exchange(platform::current().processes, &tools);
        nativeClock_ = std::exchange(platform::current().clock, &clock);
    }
    void TearDown() override {
        platform::current().processes = nativeProcesses_;
        platform::current().clock = nativeClock_;
    }

    void makeSummaryStore(const std::string& toolsFolder) {
        samplestore::Options options;
        options.folder = folder();
        options.sales = 40;
        options.days = 2;
        options.seed = 7;
        options.summary = true;
        options.toolsFolder = toolsFolder;
        samplestore::makeStore(options);
    }
    void useNativeProcesses() { platform::current().processes = nativeProcesses_; }

    void note(const std::string& event) { events += event + "\n"; }
    /// A text without the names of the test's folders.
    [[nodiscard]] std::string shortened(std::string text) const {
        for (const std::string& part : {folder() + "/program\\", folder() + "\\export\\"}) {
            const std::size_t place = text.find(part);
            text = place == std::string::npos ? text : text.erase(place, part.size());
        }
        return text;
    }
    [[nodiscard]] std::string setting(const std::string& key) const {
        clsINI_Services ini;
        ini.File(folder() + "\\NUV.INI");
        return ini.getvalue("QUICKBOOKS_Summary", key, "");
    }
    void set(const std::string& key, const std::string& value) const {
        clsINI_Services ini;
        ini.File(folder() + "\\NUV.INI");
        ASSERT_NE(ini.WriteData("QUICKBOOKS_Summary", key, value), kNo);
    }
    void accept(const std::string& from, const std::string& to) {
        desktop.onForm["FrmQuickSetUP"] = [=, this](ui::Form& window) {
            window.setText("DTPicker1", from, 0);
            window.setText("DTPicker1", to, 1);
            window.raise("cmdAccept", ui::Signal::click);
            note("accepted, last " + setting("Last Date Posted"));
        };
    }
    /// Runs the program; each posting window is noted, spoils the stored date, and is closed.
    bool run() {
        desktop.onForm["FrmSummaryExport"] = [this](ui::Form& window) {
            note(
                "post " + gsFromDate + " [" + shortened(gsSummaryFile) + "] [" +
                shortened(gsPOSummaryFile) + "] " + window.control("LblStatus").caption
            );
            set("Last Date Posted", "spoilt");
            window.raise("Cmdexport", ui::Signal::click);
        };
        return runProgram();
    }
    [[nodiscard]] bool saysInBox(const std::string& part) const {
        return std::any_of(desktop.boxes.begin(), desktop.boxes.end(), [&](const auto& box) {
            return box.text.find(part) != std::string::npos;
        });
    }

    std::string events;
    AbsentTools tools{folder()};
    testing_support::StandingClock clock{{2015, 1, 12}};

private:
    platform::ProcessPort* nativeProcesses_ = nullptr;
    platform::ClockPort* nativeClock_ = nullptr;
};

TEST_F(SummaryRun, runsToolsAndPostsInOrder) {
    // The first day is 1/5/2015; "Post Daily Totals", "Post Purchase Order Totals", the last day,
    // the files that the tools leave, the events, and "Last Date Posted" at the end.
    for (const auto& [given, daily, orders, to, files, expected, last, noSalesBox] :
         testing_support::tableRows<8>("start/summary_runs.json")) {
        SCOPED_TRACE(given);
        events.clear();
        fs::remove_all(folder() + "/export");
        set("Last Date Posted", "1/4/2015");
        set("Post Daily Totals", daily);
        set("Post Purchase Order Totals", orders);
        tools.files = util::split(files, ' ');
        accept("1/5/2015", to);
        EXPECT_TRUE(run());
        EXPECT_EQ(events, expected);
        EXPECT_EQ(setting("Last Date Posted"), last);
        EXPECT_EQ(saysInBox("No sales data exported"), noSalesBox == "yes");
    }
}

TEST_F(SummaryRun, onlyTheExactWordStartsIt) {
    struct ModeCase {
        const char* given;
        const char* accounting;
        const char* window;
    };
    constexpr ModeCase kModes[] = {
        {"both letters", "SE", "FrmQuickSetUP"},
        {"small letters", "se", "frmSetup"},
        {"half of it", "S", "frmSetup"},
        {"nothing", "  ", "frmSetup"},
    };
    for (const ModeCase& row : kModes) {
        SCOPED_TRACE(row.given);
        execute("UPDATE Common SET Accounting = '" + std::string(row.accounting) + "'");
        desktop.shownForms.clear();
        runProgram([](ui::Form& window) { window.raise("cmdAcceptCancel", ui::Signal::click, 1); });
        EXPECT_EQ(desktop.shownForms.back(), row.window);
    }
}

TEST_F(SummaryRun, firstDayFollowsTheLastOnePosted) {
    struct FirstDayCase {
        const char* given;
        const char* last;
        const char* from;
        const char* exported;
    };
    constexpr FirstDayCase kDays[] = {
        {"a date", "1/31/2015", "2/1/2015", "Last Date Posted: 1/31/2015"},
        {"none", "", "1/11/2015", "Last Date Posted: 1/10/2015"},
        {"a blank", " ", "1/11/2015", "Last Date Posted: 1/10/2015"},
    };
    for (const FirstDayCase& row : kDays) {
        SCOPED_TRACE(row.given);
        set("Last Date Posted", row.last);
        bool shown = false;
        desktop.onForm["FrmQuickSetUP"] = [&](ui::Form& window) {
            shown = true;
            EXPECT_EQ(window.text("DTPicker1", 0), row.from);
            EXPECT_EQ(window.text("DTPicker1", 1), "1/11/2015");
            EXPECT_EQ(window.control("LblExported").caption, row.exported);
            window.raise("cmdExit", ui::Signal::click);
        };
        EXPECT_TRUE(runProgram());
        EXPECT_TRUE(shown);
        EXPECT_EQ(events, "");
    }
    // What is no date cannot be counted on from: the start says so and gives up.
    set("Last Date Posted", "soon");
    EXPECT_FALSE(runProgram());
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().title, "Error Startup Main");
}

TEST_F(SummaryRun, settingsThatCannotBeOpenedAreToldAndTheWindowComes) {
    fs::remove(folder() + "/NUV.INI");
    fs::create_directory(folder() + "/NUV.INI");
    bool shown = false;
    desktop.onForm["FrmQuickSetUP"] = [&](ui::Form& window) {
        shown = true;
        EXPECT_EQ(gsFromDate, "");
        EXPECT_EQ(window.control("LblExported").caption, "Last Date Posted: ");
        window.raise("cmdExit", ui::Signal::click);
    };
    EXPECT_TRUE(runProgram());
    EXPECT_TRUE(shown);
    EXPECT_TRUE(saysInBox("Unable to open NUV Configuration Settings File, NUV.INI."));
}

TEST_F(SummaryRun, aPostingThatFailsIsNotCompleteAndTheNextDayFollows) {
    tools.files = {"Summary20150105.txt", "Summary20150106.txt"};
    tools.sales = kBadSales;
    set("Post Purchase Order Totals", "No");
    accept("1/5/2015", "1/6/2015");
    EXPECT_TRUE(run());
    EXPECT_EQ(events.find("Export Complete"), std::string::npos) << events;
    EXPECT_EQ(clock.pauses.size(), 2U);
    EXPECT_EQ(setting("Last Date Posted"), "1/6/2015");
    EXPECT_TRUE(transactions().empty());
}

TEST_F(SummaryRun, theReportToolsGiveWhatTheStoreSold) {
    // Given: the tools themselves, on the store's own settings.
    useNativeProcesses();
    for (const char* tool : {"reports.exe", "POSummaryRpt.exe"}) {
        fs::copy_file(
            std::string(BREVANE_TOOLS) + "/" + tool, folder() + "/program/" + std::string(tool)
        );
    }
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", (folder() + "/config").c_str(), 1), 0);
    // When
    accept("1/5/2015", "1/6/2015");
    EXPECT_TRUE(run());
    // Then: each day is one receipt that comes to nothing, its cost, and its order.
    ASSERT_EQ(transactions("SalesReceipt").size(), 2U);
    for (const auto& receipt : transactions("SalesReceipt")) {
        EXPECT_EQ(receipt.total.text(2), "0.00");
        EXPECT_EQ(receipt.lines.front().item, "0100");
        EXPECT_GT(receipt.lines.front().amount, util::Money());
    }
    EXPECT_EQ(transactions("JournalEntry").size(), 2U);
    EXPECT_EQ(transactions("PurchaseOrder").size(), 2U);
}

}  // namespace
