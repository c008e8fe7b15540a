#include "companyfile/call_error.h"
#include "core/brv_main.h"
#include "support/link_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <sqlite3.h>

namespace {

namespace fs = std::filesystem;
using testing_support::FaultPoint;
using testing_support::LinkFixture;

void overwrite(const std::string& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

/// Takes a column out of a table behind the link's back.
void dropColumn(const std::string& catalog, const std::string& table, const std::string& column) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(catalog.c_str(), &database), SQLITE_OK);
    sqlite3_create_collation(
        database,
        "SERVER",
        SQLITE_UTF8,
        nullptr,
        [](void*, int, const void*, int, const void*) { return 0; }
    );
    const std::string statement = "ALTER TABLE " + table + " DROP COLUMN " + column;
    EXPECT_EQ(sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

class Start : public LinkFixture {
protected:
    void SetUp() override {
        makeStore(24, 2);
        setSetupValue("IMPORT HIST", "Last Inventory UID Added", "11");
    }
    [[nodiscard]] bool mainWindowShown() const {
        const auto& shown = desktop.shownForms;
        return std::find(shown.begin(), shown.end(), "frmSetup") != shown.end();
    }
    [[nodiscard]] bool saysInBox(const std::string& part) const {
        return std::any_of(desktop.boxes.begin(), desktop.boxes.end(), [&](const auto& box) {
            return box.text.find(part) != std::string::npos;
        });
    }
    std::string boxes() const {
        std::string all;
        for (const auto& box : desktop.boxes) {
            all += box.title + ": " + box.text + "\n";
        }
        return all;
    }
    static void exportSales(frmSetup& window) {
        window.raise("CmdInitialized", ui::Signal::click);
        window.setOn("chkExport", true, 3);
        window.raise("Cmdexport", ui::Signal::click);
        window.raise("cmdAcceptCancel", ui::Signal::click, 1);
    }
};

TEST_F(Start, showsTheMainWindowAndEndsWithItsExit) {
    std::string status;
    const bool ended = runProgram([&](frmSetup& window) {
        EXPECT_EQ(window.title(), "NUV Brevane");
        window.raise("cmdAcceptCancel", ui::Signal::click, 1);
    });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(mainWindowShown());
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(fileText("program/BRV.txt").substr(0, 23), "db_fbAllTables_open=Tru");
}

struct BadStart {
    const char* given;
    void (*spoil)(const std::string& folder);
    bool mainWindow;   ///< the main window comes up all the same
    const char* text;  ///< part of what a box says; empty: silence
};

/// Each spoils one thing before the start; nothing may crash or post.
constexpr BadStart kBadStarts[] = {
    {"no data folder",
     [](const std::string& folder) {
         const std::string settings = folder + "/config/brevane/settings.ini";
         std::ifstream in(settings);
         std::string text((std::istreambuf_iterator<char>(in)), {});
         const std::size_t place = text.find("DATAPATH=") + 9;
         overwrite(settings, text.insert(place, "/nowhere"));
     },
     false,
     "Data Path Not Found."},
    {"no catalog",
     [](const std::string& folder) { fs::remove(folder + "/NUVDATA1.mdf"); },
     false,
     "Database not found."},
    {"a catalog that is no database",
     [](const std::string& folder) {
         fs::remove(folder + "/NUVDATA1.mdf-wal");
         overwrite(folder + "/NUVDATA1.mdf", std::string(8192, 'x'));
     },
     true,
     "Failed to connect to database. "},
    {"a setup file of another program",
     [](const std::string& folder) { overwrite(folder + "/QBLINK.NUV", "[A]\r\nB=C\r\n"); },
     true,
     "Please enter QuickBooks file to open."},
    {"a setup file that is a folder",
     [](const std::string& folder) {
         fs::remove(folder + "/QBLINK.NUV");
         fs::create_directory(folder + "/QBLINK.NUV");
     },
     true,
     "Please enter QuickBooks file to open."},
    {"no company file",
     [](const std::string& folder) { fs::remove(folder + "/company.qbw"); },
     true,
     "Error in OpenConnectionBeginSession\r\nHRESULT = -2147220477 (80040403) "},
    {"a company file of another kind",
     [](const std::string& folder) {
         overwrite(folder + "/company.qbw", "not a company file, but long enough to be looked at");
     },
     true,
     "Error in OpenConnectionBeginSession\r\nHRESULT = -2147220474 (80040406) "},
    {"a damaged company file",
     [](const std::string& folder) {
         std::fstream file(
             folder + "/company.qbw", std::ios::binary | std::ios::in | std::ios::out
         );
         file.seekp(4096);  // the first page, with what names its kind, stays
         file << std::string(12 * 4096, 'x');
     },
     true,
     "Error in OpenConnectionBeginSession\r\nHRESULT = -2147220474 (80040406) "},
};

TEST_F(Start, saysWhatIsWrongAndDoesNotCrash) {
    for (const BadStart& row : kBadStarts) {
        SCOPED_TRACE(row.given);
        const fs::path kept = folder() + "-kept";
        core::resetLink();
        fs::copy(folder(), kept, fs::copy_options::recursive);
        row.spoil(folder());
        desktop.shownForms.clear();
        desktop.otherwise = platform::BoxAnswer::no;
        const bool ended = runProgram([](frmSetup& window) {
            window.raise("cmdAcceptCancel", ui::Signal::click, 1);
        });
        EXPECT_TRUE(ended);
        EXPECT_EQ(mainWindowShown(), row.mainWindow);
        EXPECT_TRUE(saysInBox(row.text)) << boxes();
        core::resetLink();
        fs::remove_all(folder());
        fs::rename(kept, folder());
    }
    EXPECT_TRUE(transactions().empty());
}

TEST_F(Start, aSessionThatCannotBeHadEndsTheProgramOrLeavesItsWindow) {
    struct Refusal {
        const char* given;
        std::int32_t number;
        bool mainWindow;
        const char* text;
    };
    constexpr Refusal kRefusals[] = {
        {"nothing runs",
         companyfile::hresult::kNotRunning,
         false,
         "You must have QuickBooks running with the company\r\nfile open to use this program."},
        {"another program holds the file",
         companyfile::hresult::kFileInUse,
         false,
         "This QuickBooks company file is open in single user mode and\r\nanother application is "
         "already accessing it.  Please exit the\r\nother application and run this application "
         "again."},
        {"any other number",
         -2147220472,
         true,
         "Error in OpenConnectionBeginSession\r\nHRESULT = -2147220472 (80040408) \r\n\r\nrefused"},
    };
    for (const Refusal& row : kRefusals) {
        SCOPED_TRACE(row.given);
        faults->refuseBegin(platform::PlatformError(row.number, "refused"));
        bool reached = false;
        const bool ended = runProgram([&](frmSetup& window) {
            reached = true;
            window.raise("cmdAcceptCancel", ui::Signal::click, 1);
        });
        EXPECT_TRUE(ended);
        EXPECT_EQ(reached, row.mainWindow);
        ASSERT_FALSE(desktop.boxes.empty());
        EXPECT_EQ(desktop.boxes.front().text, row.text);
    }
}

TEST_F(Start, aCompanyFileThatAnotherProgramHoldsEndsTheProgram) {
    core::resetLink();
    sqlite3* holder = nullptr;
    ASSERT_EQ(sqlite3_open(companyFile().c_str(), &holder), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    bool reached = false;
    EXPECT_TRUE(runProgram([&](frmSetup&) { reached = true; }));
    EXPECT_FALSE(reached);
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(
        desktop.boxes.front().text.substr(0, 66),
        "This QuickBooks company file is open in single user mode and\r\nanot"
    );
    sqlite3_close(holder);
}

TEST_F(Start, aTableThatLostAColumnIsLoggedAndNothingIsPosted) {
    core::resetLink();
    dropColumn(folder() + "/NUVDATA1.mdf", "SalesHead", "TaxCode5");
    runProgram(exportSales);
    EXPECT_TRUE(transactions("SalesReceipt").empty());
    EXPECT_NE(fileText("QBLINK.LOG").find("3265"), std::string::npos) << fileText("QBLINK.LOG");
}

TEST_F(Start, answersThatAreNoXmlAreLoggedAndTheWalkGoesOn) {
    faults->answerAt(3, "<html>busy</html>", "<SalesReceiptAdd>");
    faults->answerAt(5, "", "<SalesReceiptAdd>");
    runProgram(exportSales);
    const std::size_t posted = transactions("SalesReceipt").size();
    EXPECT_GT(posted, 8U);
    EXPECT_NE(fileText("QBLINK.LOG").find("SalesAddNewReq "), std::string::npos);

    // What the unreadable answers hid is in the books: the next walk passes it over.
    setSetupValue("IMPORT HIST", "Last Invoices Posted", "");
    runProgram(exportSales);
    EXPECT_EQ(transactions("SalesReceipt").size(), posted);
}

TEST_F(Start, aFullDiskAtTheLogLosesLinesOnly) {
    runProgram(exportSales);
    const std::size_t posted = transactions().size();
    ASSERT_FALSE(fileText("QBLINK.LOG").empty());

    fs::remove(folder() + "/QBLINK.LOG");
    fs::create_symlink("/dev/full", folder() + "/QBLINK.LOG");
    setSetupValue("IMPORT HIST", "Last Invoices Posted", "");
    runProgram(exportSales);
    EXPECT_GE(transactions().size(), posted);
    EXPECT_EQ(setupValue("IMPORT HIST", "Last Invoices Posted").size(), 7U);
}

TEST_F(Start, aSetupFileThatCannotBeWrittenPostsNothing) {
    fs::permissions(folder() + "/QBLINK.NUV", fs::perms::owner_read);
    runProgram(exportSales);
    EXPECT_TRUE(transactions("SalesReceipt").empty());
    fs::permissions(folder() + "/QBLINK.NUV", fs::perms::owner_all);
}

}  // namespace
