#include "config/clsINI_Services.h"
#include "core/brv_op.h"
#include "core/link_setup.h"
#include "core/summary_setup.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "support/standing_clock.h"
#include "windows/FrmQuickSetUP.h"
#include "windows/FrmSelDate.h"
#include "windows/FrmSummaryExport.h"
#include "windows/expected_controls.h"
#include "windows/setup_fixture.h"

#include <fstream>
#include <utility>

namespace {

class SummaryWindows : public testing_support::SetupTest {
protected:
    void SetUp() override {
        makeStore(0, 1);
        std::ofstream(folder() + "/NUV.INI") << "[QUICKBOOKS_Summary]\r\nCash=Petty Cash\r\n"
                                                "QuickBooks Path="
                                             << companyFile() << "\r\n";
        nativeClock_ = std::exchange(platform::current().clock, &clock_);
        gfbSummary_Setup_reading();
    }
    void TearDown() override { platform::current().clock = nativeClock_; }

    [[nodiscard]] std::string setting(const std::string& key, bool ofStation = false) const {
        clsINI_Services ini;
        ini.File(folder() + (ofStation ? "\\program\\station.ini" : "\\NUV.INI"));
        return ini.getvalue("QUICKBOOKS_Summary", key, "");
    }
    /// Shows the window; the program may end in it.
    /// @return true when it ended.
    bool show(ui::Form& window, const std::function<void(ui::Form&)>& script) {
        desktop.onForm[window.name()] = script;
        try {
            desktop.showModal(window);
        } catch (const platform::ProgramEnd&) {
            return true;
        }
        return false;
    }
    static void pick(ui::Form& window, int row, const std::string& account) {
        window.raise("fgrdList", ui::Signal::click, ui::kNoIndex, row, 1);
        window.setText("cboAcct", account);
        window.raise("cboAcct", ui::Signal::select);
    }
    static void typeDate(ui::Form& window, int index, const std::string& text) {
        window.setText("DTPicker1", text, index);
        window.raise("DTPicker1", ui::Signal::change, index);
    }

private:
    platform::ClockPort* nativeClock_ = nullptr;
    testing_support::StandingClock clock_{{2015, 1, 12}};
};

TEST_F(SummaryWindows, holdTheirControlsInTheirStartState) {
    FrmQuickSetUP quick;
    FrmSummaryExport summary;
    FrmSelDate select;
    for (ui::Form* window : std::initializer_list<ui::Form*>{&quick, &summary, &select}) {
        testing_support::expectControls(*window);
    }
}

TEST_F(SummaryWindows, theQuickSetUpShowsDaysPathAndMapping) {
    FrmQuickSetUP window;
    show(window, [&](ui::Form&) {
        EXPECT_EQ(window.text("DTPicker1", 0), "1/11/2015");
        EXPECT_EQ(window.text("DTPicker1", 1), "1/11/2015");
        EXPECT_EQ(window.text("TxtPath"), companyFile());
        const auto& rows = window.control("fgrdList").rows;
        ASSERT_EQ(rows.size(), goNuvAcct.size() + 1);
        EXPECT_EQ(rows.at(0), (std::vector<std::string>{"NUV Acct", "QuickBook Acct"}));
        EXPECT_EQ(rows.at(2).at(1), "Petty Cash");  // not what QBLINK.NUV says
        EXPECT_EQ(rows.at(3).at(1), "");
        EXPECT_FALSE(window.control("cboAcct").items.empty());
        EXPECT_EQ(gbQBReady, kYes);
        EXPECT_FALSE(desktop.busy);
        window.raise("cmdAccept", ui::Signal::click);
    });
    const std::string trace = fileText("program/BRV.txt");
    for (const char* line :
         {"UBound(goNuvAcct)=17\r\nLine = On Account",
          "\r\nDone\r\nAttempting gfbOpenConnectionBeginSession=TRUE\r\n"
          "gfbOpenConnectionBeginSession=TRUE\r\nrequestMsgSet.ClearRequests=TRUE\r\n"
          "gfbAccountQuery_requested=True\r\ngpAccountQuery_populated\r\n"
          "mpCboQBAccount_populated\r\n"}) {
        EXPECT_NE(trace.find(line), std::string::npos) << trace;
    }
}

TEST_F(SummaryWindows, acceptWritesTheLastDayBeforeItAsksAboutToday) {
    struct AcceptCase {
        const char* given;
        const char* to;
        platform::BoxAnswer answer;
        bool asked;
        bool accepted;
    };
    constexpr AcceptCase kCases[] = {
        {"today and No", "1/12/2015", platform::BoxAnswer::no, true, false},
        {"today and Yes", "1/12/2015", platform::BoxAnswer::yes, true, true},
        {"yesterday", "1/11/2015", platform::BoxAnswer::no, false, true},
        {"a day before the first one", "1/2/2015", platform::BoxAnswer::no, false, true},
    };
    for (const AcceptCase& row : kCases) {
        SCOPED_TRACE(row.given);
        desktop.otherwise = row.answer;
        desktop.boxes.clear();
        std::filesystem::remove(folder() + "/program/station.ini");
        FrmQuickSetUP window;
        const bool ended = show(window, [&](ui::Form&) {
            typeDate(window, 0, "1/9/2015");
            typeDate(window, 1, row.to);
            window.raise("cmdAccept", ui::Signal::click);
            EXPECT_EQ(window.isClosed(), row.accepted);
            EXPECT_EQ(gsFromDate, "1/9/2015");
            EXPECT_EQ(setting("Last Date Posted"), row.to);
            EXPECT_EQ(setting("Cash"), "Petty Cash");
            EXPECT_EQ(setting("QuickBooks Path", true), row.accepted ? companyFile() : "");
        });
        EXPECT_EQ(ended, !row.accepted);  // closing it otherwise ends the program
        ASSERT_EQ(desktop.boxes.size(), row.asked ? 1U : 0U);
        if (row.asked) {
            EXPECT_EQ(desktop.boxes[0].title, "Please Confirm Date");
            EXPECT_EQ(desktop.boxes[0].icon, platform::BoxIcon::information);
            EXPECT_EQ(
                desktop.boxes[0].text,
                "WARNING:Posting data for today must be done after close of business.\r\n"
                "Posting a partial day will result in inaccurate daily totals\r\n"
                " Post data for Today?"
            );
        }
    }
}

TEST_F(SummaryWindows, aDateFieldHoldsADateAtAnyTime) {
    struct DateCase {
        const char* given;
        const char* typed;
        const char* shown;
    };
    constexpr DateCase kDates[] = {
        {"the short form stays", "1/9/2015", "1/9/2015"},
        {"padded", "01/08/2015", "1/8/2015"},
        {"year first", "2015-01-07", "1/7/2015"},
        {"no date is taken back", "soon", "1/7/2015"},
        {"eight digits are no date", "20150106", "1/7/2015"},
        {"nothing is taken back", "", "1/7/2015"},
        {"a month that there is not swaps with the day", "13/1/2015", "1/13/2015"},
    };
    FrmSelDate window;
    show(window, [&](ui::Form&) {
        for (const DateCase& row : kDates) {
            SCOPED_TRACE(row.given);
            typeDate(window, 1, row.typed);
            EXPECT_EQ(window.text("DTPicker1", 1), row.shown);
        }
        window.raise("cmdAccept", ui::Signal::click);
    });
    EXPECT_EQ(gsFromDate, "1/11/2015");
    EXPECT_EQ(gsToDate, "1/13/2015");
    EXPECT_TRUE(window.isClosed());
    // A window that is left by Exit changes nothing.
    gsFromDate.clear();
    FrmSelDate other;
    show(other, [&](ui::Form&) {
        EXPECT_EQ(other.text("DTPicker1", 0), "1/11/2015");
        typeDate(other, 1, "2/2/2015");
        other.raise("cmdExit", ui::Signal::click);
    });
    EXPECT_EQ(gsToDate, "1/13/2015");
}

TEST_F(SummaryWindows, exitSavesTheMappingAndEndsTheProgram) {
    FrmQuickSetUP window;
    const bool ended = show(window, [&](ui::Form&) {
        pick(window, 0, "Checking");  // the header takes no account
        window.raise("fgrdList", ui::Signal::click, ui::kNoIndex, 3, 0);
        EXPECT_FALSE(window.control("cboAcct").visible);
        pick(window, 3, "Checking");
        EXPECT_FALSE(window.control("cboAcct").visible);
        // A list that is left without a pick keeps what the cell held.
        window.raise("fgrdList", ui::Signal::click, ui::kNoIndex, 2, 1);
        EXPECT_TRUE(window.control("cboAcct").visible);
        window.raise("cboAcct", ui::Signal::leave);
        window.raise("cmdExit", ui::Signal::click);
    });
    EXPECT_TRUE(ended);
    EXPECT_EQ(gbQBReady, kNo);
    EXPECT_EQ(setting("Check"), "Checking");
    EXPECT_EQ(setting("Cash"), "Petty Cash");
    EXPECT_EQ(setting("On Account"), "");
    EXPECT_EQ(setting("Last Date Posted"), "");
}

TEST_F(SummaryWindows, tendersOfOneNameHaveOneAccount) {
    execute("UPDATE TenderTypes SET Description = 'Cash' WHERE TenderID = 4");
    FrmQuickSetUP window;
    show(window, [&](ui::Form&) {
        pick(window, 2, "Checking");  // the first of the two rows: the last one is written last
        EXPECT_EQ(window.control("fgrdList").rows.at(5).at(1), "Checking");
        window.raise("cmdExit", ui::Signal::click);
    });
    EXPECT_EQ(setting("Cash"), "Checking");
}

TEST_F(SummaryWindows, withoutACompanyFileOneIsAskedFor) {
    gsQBFilePath.clear();
    FrmQuickSetUP window;
    show(window, [&](ui::Form&) {  // the dialog was cancelled
        EXPECT_EQ(window.text("TxtPath"), "");
        EXPECT_EQ(gbQBReady, kNo);
        EXPECT_EQ(faults->exchanges, 0);
        // The mapping can be made without accounts.
        pick(window, 1, "other2");
        EXPECT_EQ(
            window.control("cboAcct").items,
            (std::vector<std::string>{"other1", "other2", "other3"})
        );
        EXPECT_EQ(goNuvAcct.at(0).QBAccount, "");
        pick(window, 1, "other2");
        EXPECT_EQ(goNuvAcct.at(0).QBAccount, "other2");
        // The path is stored at once, and the accounts come from the file.
        desktop.chosenFile = companyFile();
        window.raise("TxtPath", ui::Signal::click);
        EXPECT_EQ(window.text("TxtPath"), companyFile());
        EXPECT_EQ(setting("QUICKBOOKS PATH"), companyFile());
        EXPECT_EQ(gbQBReady, kYes);
        EXPECT_GT(window.control("cboAcct").items.size(), 10U);
        EXPECT_EQ(setting("On Account"), "");
        window.raise("cmdAccept", ui::Signal::click);
    });
    EXPECT_EQ(setting("On Account"), "other2");  // Accept saves the mapping too
}

TEST_F(SummaryWindows, vendorsAreExportedWithTheWindowAsTheirLabel) {
    FrmQuickSetUP window;
    show(window, [&](ui::Form&) {
        window.raise("MyButton1", ui::Signal::click);
        EXPECT_EQ(window.control("LblStatus").caption, "Done Vendor List export");
        window.raise("cmdAccept", ui::Signal::click);
    });
}

class PostingWindow : public SummaryWindows {
protected:
    void putFile(const std::string& text) {
        std::filesystem::create_directory(folder() + "/export");
        std::ofstream(folder() + "/export/Summary20150111.txt") << text;
        gsSummaryFile = folder() + "\\export\\Summary20150111.txt ";
        gsToDate = "1/11/2015";
    }
    static constexpr char kDay[] = "0100|Sales A|10.00\n0012|Cash|10.00\n";
};

TEST_F(PostingWindow, postsWhenItComesForwardForTheFirstTime) {
    struct PostingCase {
        const char* given;
        const char* file;
        bool complete;
    };
    constexpr PostingCase kCases[] = {
        {"a day that can be posted", kDay, true},
        {"an amount that is none", "0100|Sales A|ten\n", false},
    };
    for (const PostingCase& row : kCases) {
        SCOPED_TRACE(row.given);
        putFile(row.file);
        std::filesystem::remove(folder() + "/NUV.INI");
        FrmSummaryExport window;
        EXPECT_FALSE(show(window, [&](ui::Form&) {
            const int exchanges = faults->exchanges;
            window.raise("FrmSummaryExport", ui::Signal::activate);
            EXPECT_EQ(faults->exchanges, exchanges);
            EXPECT_EQ(window.text("TxtPath"), companyFile());
            EXPECT_EQ(window.control("LblStatus").caption == "Export Complete", row.complete);
            EXPECT_EQ(window.control("TxtPath").visible, !row.complete);
            EXPECT_EQ(window.control("Label1").visible, !row.complete);
            EXPECT_EQ(setting("Last Date Posted"), row.complete ? "1/11/2015" : "");
            EXPECT_FALSE(window.isClosed());
            window.raise("Cmdexport", ui::Signal::click);
            EXPECT_TRUE(window.isClosed());
        }));
    }
    EXPECT_EQ(gbQBReady, kYes);  // the session outlives its windows
}

TEST_F(PostingWindow, asksForACompanyFileBeforeItPosts) {
    putFile(kDay);
    gsQBFilePath.clear();
    desktop.onForm["frmSMFILE_PATH"] = [&](ui::Form& browser) {
        EXPECT_EQ(browser.title(), "Select Quick Books Location:");
        EXPECT_EQ(browser.text("txtFileSpec"), "*.qbw");
        EXPECT_EQ(browser.text("TxtPath"), "C:\\");
        EXPECT_TRUE(transactions().empty());
        browser.setText("TxtPath", folder() + "/company");
        browser.raise("cmdOkCancel", ui::Signal::click, 0);
    };
    FrmSummaryExport window;
    show(window, [&](ui::Form&) { window.raise("Cmdexport", ui::Signal::click); });
    EXPECT_EQ(gsQBFilePath, companyFile());
    EXPECT_EQ(setting("QuickBooks Path", true), companyFile());
    EXPECT_EQ(window.control("LblStatus").caption, "Export Complete");
}

}  // namespace
