#include "core/brv_op.h"
#include "core/link_setup.h"
#include "platform/ports/platform.h"
#include "qb/smQB_Utilities.h"
#include "support/expected_file.h"
#include "support/table_file.h"
#include "util/conversions.h"
#include "windows/setup_fixture.h"

#include <map>

namespace {

class SetupMapping : public testing_support::SetupTest {
protected:
    void click(const std::string& name, int index = ui::kNoIndex, int row = 0, int column = 0) {
        setup->raise(name, ui::Signal::click, index, row, column);
    }
    void pick(const std::string& account) {
        setup->setText("cboAcct", account);
        setup->raise("cboAcct", ui::Signal::select);
    }
    [[nodiscard]] const std::string& cell(std::size_t row) {
        return setup->control("fgrdList").rows.at(row).at(1);
    }
    /// All accounts that the window holds.
    [[nodiscard]] std::string shown() {
        std::string text = setup->text("txtAccount", 1) + "|" + setup->text("txtAccount", 2);
        for (std::size_t row = 0; row < goNuvAcct.size(); ++row) {
            text += "|" + cell(row + 1) + "=" + goNuvAcct.at(row).QBAccount;
        }
        for (int row = 0; row < 7; ++row) {
            text += "|" + setup->text("txtAR_SalesAccount", row);
        }
        return text;
    }
    /// `QBLINK.NUV` with the name of the scratch folder replaced.
    [[nodiscard]] std::string setupFile() {
        return util::replaceAll(fileText("QBLINK.NUV"), folder(), "FOLDER");
    }
};

constexpr char kNoAccounts[] =
    "Please go to QuickBook  to setup List of Accounts for Cash, Account Receivable, Cost Of "
    "Goods... ";

}  // namespace

TEST_F(SetupMapping, listsTheAccountsInTheOrderOfTheCompanyFile) {
    open();
    const auto& items = setup->control("cboAcct").items;
    ASSERT_GT(items.size(), 20U);
    EXPECT_FALSE(visible("cboAcct"));
    const auto& rows = setup->control("fgrdList").rows;
    ASSERT_EQ(rows.size(), goNuvAcct.size() + 1);
    EXPECT_EQ(rows.front(), (std::vector<std::string>{"NUV Acct", "QuickBook Acct"}));
    EXPECT_EQ(rows.at(1).at(0).size(), 20U);
    EXPECT_EQ(rows.back().at(0), "Sales Layaway");
    EXPECT_EQ(setup->text("txtAR_Sales_TaxID", 0) + setup->text("txtAR_Sales_TaxID", 6), "0F");
    EXPECT_EQ(setup->text("txtTaxRate", 0), setup->text("txtTaxRate", 1));
}

TEST_F(SetupMapping, takesAPickWhereItWasBegun) {
    struct PickCase {
        const char* what;
        const char* control;
        int index;
        int row;
    };
    constexpr PickCase kPicks[] = {
        {"the first row of the grid", "fgrdList", ui::kNoIndex, 1},
        {"another row", "fgrdList", ui::kNoIndex, 3},
        {"a tax row", "txtAR_SalesAccount", 2, 0},
        {"the vendor", "txtAccount", 1, 0},
        {"the tax payee", "txtAccount", 2, 0},
    };
    open();
    for (const PickCase& row : kPicks) {
        SCOPED_TRACE(row.what);
        click(row.control, row.index, row.row, 1);
        EXPECT_TRUE(visible("cboAcct"));
        EXPECT_EQ(setup->focus().name, "cboAcct");
        pick(" Petty Cash ");
        EXPECT_FALSE(visible("cboAcct"));
        if (row.row > 0) {
            const auto index = static_cast<std::size_t>(row.row);
            EXPECT_EQ(cell(index), " Petty Cash ");
            EXPECT_EQ(goNuvAcct.at(index - 1).QBAccount, "Petty Cash");
        }
    }
    EXPECT_EQ(setup->text("txtAR_SalesAccount", 2), "Petty Cash");
    EXPECT_EQ(gaNuvTax.at(2).salesAccount, "Petty Cash");
    EXPECT_EQ(setup->text("txtAccount", 1), " Petty Cash ");
    EXPECT_EQ(setup->text("txtAccount", 2), " Petty Cash ");
}

TEST_F(SetupMapping, commitsTheListOnLeavingAndOnASecondClick) {
    open();
    const std::string untouched = cell(2);

    click("fgrdList", ui::kNoIndex, 0, 1);  // the header
    click("fgrdList", ui::kNoIndex, 2, 0);  // the column of names
    EXPECT_FALSE(visible("cboAcct"));

    click("fgrdList", ui::kNoIndex, 1, 1);
    setup->setText("cboAcct", "Checking");
    click("fgrdList", ui::kNoIndex, 2, 1);
    EXPECT_EQ(cell(1), "Checking");
    EXPECT_EQ(cell(2), untouched);
    EXPECT_FALSE(visible("cboAcct"));

    setup->raise("txtAR_SalesAccount", ui::Signal::enter, 4);
    setup->setText("cboAcct", "Returns");
    setup->raise("cboAcct", ui::Signal::leave);
    EXPECT_EQ(setup->text("txtAR_SalesAccount", 4), "Returns");

    setup->setText("cboAcct", "Checking");
    setup->raise("cboAcct", ui::Signal::leave);  // hidden: nothing is picked
    EXPECT_EQ(setup->text("txtAR_SalesAccount", 4), "Returns");
    EXPECT_EQ(boxes(), "");
}

TEST_F(SetupMapping, changesNothingWhenTheListIsLeftWithoutAPick) {
    struct Place {
        const char* control;
        int index;
        int row;
    };
    constexpr Place kPlaces[] = {
        {"fgrdList", ui::kNoIndex, 2},
        {"txtAR_SalesAccount", 3, 0},
        {"txtAccount", 2, 0},
    };
    open();
    click("fgrdList", ui::kNoIndex, 1, 1);
    pick("Petty Cash");  // what the list showed last
    const std::string before = shown();
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.control);
        click(place.control, place.index, place.row, 1);
        EXPECT_NE(setup->text("cboAcct"), "Petty Cash");
        setup->raise("cboAcct", ui::Signal::leave);
        EXPECT_EQ(shown(), before);
    }
}

TEST_F(SetupMapping, givesAllTendersOfOneNameTheirAccountTogether) {
    makeStore(0, 1);
    execute("UPDATE TenderTypes SET Description = 'cash' WHERE TenderID IN (4, 6)");
    openSetup();
    ASSERT_EQ(setup->control("fgrdList").rows.at(5).at(0), "cash                ");
    for (const std::size_t picked : {2U, 5U, 7U}) {
        const std::string account = "Account of row " + std::to_string(picked);
        click("fgrdList", ui::kNoIndex, static_cast<int>(picked), 1);
        pick(account);
        for (const std::size_t row : {2U, 5U, 7U}) {
            EXPECT_EQ(cell(row), account);
            EXPECT_EQ(goNuvAcct.at(row - 1).QBAccount, account);
        }
        EXPECT_NE(cell(3), account);
    }
    press("cmdAcceptCancel", 0);
    restart();
    EXPECT_EQ(cell(2) + cell(5) + cell(7), "Account of row 7Account of row 7Account of row 7");
}

TEST_F(SetupMapping, offersNothingWithoutACompanyFile) {
    makeStore(0, 1);
    setSetupValue("PATH", "Company QuickBook File", "");
    openSetup();
    EXPECT_EQ(boxes(), "Please enter QuickBooks file to open.");
    click("fgrdList", ui::kNoIndex, 1, 1);
    EXPECT_EQ(boxes(), kNoAccounts);
    EXPECT_FALSE(visible("cboAcct"));
}

TEST_F(SetupMapping, writesTheSetupFileFromTheWindow) {
    open();
    setSetupValue("IMPORT HIST", "Last Name UID Added", "17");
    click("fgrdList", ui::kNoIndex, 1, 1);
    pick("Petty Cash");
    press("mnuUnlock");
    type("txtLastPostedInvoice", "42");
    type("txtLastPostedDate", "01/15/2015");
    type("txtLastPostedPO", "20150116");
    setup->setText("txtNet", "45");
    check("chkUseAR", false);
    check("CkUseAP", true);
    press("cmdAcceptCancel", 0);
    EXPECT_FALSE(enabled("cmdAcceptCancel", 0));
    EXPECT_EQ(boxes(), "");
    testing_support::expectFile("windows/QBLINK.NUV", setupFile());

    // The next start shows what was saved.
    restart();
    EXPECT_EQ(cell(1), "Petty Cash");
    EXPECT_EQ(setup->text("txtLastPostedInvoice"), "0000042");
    EXPECT_EQ(setup->text("txtLastPostedDate"), "01/15/2015");
    EXPECT_EQ(setup->text("txtLastPostedPO"), "01/16/2015");
    EXPECT_EQ(setup->text("txtNet"), "45");
    EXPECT_FALSE(setup->isOn("chkUseAR"));
    EXPECT_TRUE(setup->isOn("CkUseAP"));
    EXPECT_EQ(gnLastNameUID, 0);
}

TEST_F(SetupMapping, startsFromDefaultsWithoutASetupFile) {
    struct FileCase {
        const char* what;
        const char* content;
    };
    constexpr FileCase kFiles[] = {
        {"an empty file", ""},
        {"a file without the link's mark", "[MISC]\r\nNet=45\r\n"},
    };
    makeStore(0, 1);
    for (const FileCase& row : kFiles) {
        SCOPED_TRACE(row.what);
        platform::files().write(core::linkSetupFile(), row.content);
        restart();
        EXPECT_EQ(setup->text("txtNet"), "30");
        EXPECT_TRUE(setup->isOn("chkUseAR"));
        EXPECT_TRUE(setup->isOn("CkUseAP"));
        EXPECT_EQ(setup->text("TxtPath"), "");
        EXPECT_EQ(setup->text("txtLastPostedPO"), "  ");
    }
}

TEST_F(SetupMapping, validatesTheMarksWhileTheyAreUnlocked) {
    open();
    const std::map<std::string, const std::string*> kMarks = {
        {"txtLastPostedInvoice", &gsLastInvoice},
        {"txtLastPostedPO", &gsLastPODate},
        {"txtLastPostedDate", &gsLastInvoiceDate},
    };
    gsLastInvoice = "0000001";
    type("txtLastPostedInvoice", "99");
    EXPECT_EQ(gsLastInvoice, "0000001");  // locked
    press("mnuUnlock");
    for (const auto& [field, typed, left, told, mark] :
         testing_support::tableRows<5>("windows/mark_fields.json")) {
        SCOPED_TRACE(testing::Message() << field << " " << typed);
        setup->setFocus("");
        setup->setText("LblStatus", "");
        type(field, typed);
        EXPECT_EQ(setup->text(field), left);
        EXPECT_EQ(status(), told);
        EXPECT_EQ(setup->focus().name, told.empty() ? "" : field);
        EXPECT_EQ(*kMarks.at(field), mark);
    }
}

TEST_F(SetupMapping, changesTheCompanyFileOnLeavingItsField) {
    struct PathCase {
        const char* what;
        std::string typed;
        bool opened;
    };
    open();
    const std::string other = folder() + "/other.QBW";
    companyfile::CompanyFile::create(other, "retail");
    const PathCase kPaths[] = {
        {"no company file's name", folder() + "/other.txt", false},
        {"a file that is not there", folder() + "/none.qbw", false},
        {"the file that is open", gsQBFilePath, false},
        {"another one", other, true},
    };
    for (const PathCase& row : kPaths) {
        SCOPED_TRACE(row.what);
        setup->setText("LblStatus", "");
        type("TxtPath", row.typed);
        EXPECT_EQ(status(), row.opened ? "Ready" : "");
        EXPECT_EQ(gsQBFilePath == row.typed, row.opened || row.typed == gsQBFilePath);
        EXPECT_EQ(setup->text("TxtPath"), row.typed);
    }
    EXPECT_EQ(gbQBReady, kYes);
    EXPECT_EQ(boxes(), "");
}

TEST_F(SetupMapping, findsTheCompanyFileInTheBrowser) {
    open();
    companyfile::CompanyFile::create(folder() + "/found.qbw", "retail");
    const std::string before = gsQBFilePath;
    desktop.onForm["frmSMFILE_PATH"] = [](ui::Form& browser) {
        EXPECT_EQ(browser.title(), "Select Program Path");
        EXPECT_EQ(browser.control("fileBrowse").items.size(), 2U);
        browser.raise("cmdOkCancel", ui::Signal::click, 1);
    };
    press("cmdFind");
    EXPECT_EQ(gsQBFilePath, before);
    desktop.onForm["frmSMFILE_PATH"] = [&](ui::Form& browser) {
        browser.setText("TxtPath", folder() + "/found");
        browser.raise("cmdOkCancel", ui::Signal::click, 0);
    };
    press("cmdFind");
    EXPECT_EQ(gsQBFilePath, folder() + "/found.qbw");
    EXPECT_EQ(setup->text("TxtPath"), gsQBFilePath);
    EXPECT_EQ(status(), "Ready");
    EXPECT_FALSE(desktop.busy);
}

TEST_F(SetupMapping, forgetsTheAccountsOfAFileThatWasLeft) {
    open();
    companyfile::CompanyFile::create(folder() + "/other.qbw", "retail");
    faults->refuseBegin(platform::PlatformError(-5, "refused"));
    type("TxtPath", folder() + "/other.qbw");
    EXPECT_NE(boxes().find("refused"), std::string::npos);
    EXPECT_TRUE(setup->control("cboAcct").items.empty());
    EXPECT_EQ(gbQBReady, kNo);
    EXPECT_EQ(status(), "Ready");
}

TEST_F(SetupMapping, endsTheSessionOnEveryWayOut) {
    open();
    setup->raise("frmSetup", ui::Signal::unload);
    EXPECT_EQ(gbQBReady, kNo);

    restart();
    EXPECT_THROW(press("cmdAcceptCancel", 1), platform::ProgramEnd);
    EXPECT_EQ(gbQBReady, kNo);
    EXPECT_TRUE(setup->isClosed());
    EXPECT_THROW(press("mnuExit"), platform::ProgramEnd);
}
