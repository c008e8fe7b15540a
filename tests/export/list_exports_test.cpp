#include "core/link_setup.h"
#include "db/nuvDBSM_Inventory.h"
#include "db/nuvDBSM_Names.h"
#include "db/nuvDBSM_SalesItem.h"
#include "export/list_exports.h"
#include "export/list_fixture.h"
#include "support/table_file.h"
#include "windows/FrmQuickSetUP.h"

namespace {

using ListExports = ListFixture;

TEST_F(ListExports, namesWithABalanceGoAndTheMarkMovesToTheLastRow) {
    exportChecked(kNames);
    EXPECT_TRUE(
        booksName("Grace0004") || booksName("N\xC3\xBA\xC3\xB1"
                                            "ez0004")
    );
    EXPECT_FALSE(booksName("O'Brien0001"));
    EXPECT_EQ(logged("No Names exported! Balance = 0"), 48U);
    EXPECT_EQ(mark("Last Name UID Added"), "64");

    restart();
    exportChecked(kNames);
    EXPECT_EQ(status(), "No Names exported");
    EXPECT_EQ(mark("Last Name UID Added"), "64");
}

TEST_F(ListExports, allItemsGoInTheirKindsAndAgainTheNextTime) {
    exportChecked(kInventory);
    EXPECT_EQ(status(), "Done Item Inventory List export");
    EXPECT_EQ(mark("Last Inventory UID Added"), "157");
    struct Kind {
        const char* given;
        const char* name;
        const char* kind;
    };
    constexpr Kind kKinds[] = {
        {"stock", "1000018.A", "ItemInventory"},
        {"a service with cost", "9000002.A", "ItemNonInventory"},
        {"a shipping item", "SHIPUPS.A", "ItemOtherCharge"},
        {"a special row", "~DISCNT", "ItemOtherCharge"},
    };
    const std::string dump = books();
    for (const Kind& row : kKinds) {
        SCOPED_TRACE(row.given);
        const std::size_t at = dump.find("\"Name\": \"" + std::string(row.name) + "\"");
        ASSERT_NE(at, std::string::npos);
        const std::size_t begin = dump.rfind('{', at);
        const std::string entry = dump.substr(begin, dump.find("\n", at + 400) - begin);
        EXPECT_NE(entry.find(row.kind), std::string::npos) << entry;
    }
    const std::size_t log = fileText("QBLINK.LOG").size();
    restart();
    exportChecked(kInventory);
    EXPECT_EQ(status(), "Done Item Inventory List export");
    EXPECT_EQ(fileText("QBLINK.LOG").size(), log) << fileText("QBLINK.LOG");
}

TEST_F(ListExports, vendorsTendersAndSalesCodesGoOnce) {
    exportOnly(kVendors);
    EXPECT_EQ(status(), "Done Vendor List export");
    EXPECT_TRUE(booksName("FORGE"));

    exportOnly(kTenders);
    EXPECT_EQ(status(), "Done Tender Types Export");
    EXPECT_TRUE(booksName("On Account"));
    EXPECT_TRUE(booksName("Master Card Credit Card"));

    exportChecked(kSalesCodes);
    EXPECT_EQ(status(), "Done Employee/SalesCode Export");
    EXPECT_TRUE(booksName("Ben O'Hara Rep"));
    // A name of one word goes without a last name; a code longer than initials may be is cut.
    EXPECT_TRUE(booksName("Sam Rep"));
    EXPECT_NE(books().find("\"Initial\": \"SAMAN\""), std::string::npos);
    EXPECT_EQ(fileText("QBLINK.LOG").find("OtherName"), std::string::npos);
    const std::string before = books();
    exportChecked(kSalesCodes);
    EXPECT_EQ(books(), before);
}

TEST_F(ListExports, stopLeavesAfterTheRecordAtHandWithItsOwnText) {
    struct Stop {
        Export list;
        const char* part;  ///< of the progress text at which Stop is pressed
        const char* text;
        const char* mark;  ///< key and value that the stopped run leaves
        const char* value;
    };
    constexpr Stop kStops[] = {
        {kInventory, "~PAYROL", "Exporting Inventory Cancelled", "Last Inventory UID Added", "5"},
        {kNames, "0003", "Exporting Names Cancelled", "Last Name UID Added", "3"},
        {kVendors, "BRULE", "Exporting Vendor Cancelled", "", ""},
        {kTenders, "Check", "Exporting Tender Cancelled", "", ""},
        {kSalesCodes, "BEN", "Exporting Employee/SalesCode Cancelled", "", ""},
        {kPurchases, "PO101", "Exporting PO Cancelled", "Last Purchase Order UID", "4"},
    };
    for (const Stop& row : kStops) {
        SCOPED_TRACE(row.text);
        desktop.onYield.clear();
        stopAfter(row.part);
        exportOnly(row.list);
        EXPECT_EQ(status(), row.text);
        if (*row.mark != '\0') {
            EXPECT_EQ(mark(row.mark), row.value);
        }
    }
}

TEST_F(ListExports, aMarkMovesOnlyToARowThatWasWalked) {
    struct Failure {
        Export list;
        const char* statement;
        const char* text;
        const char* log;   ///< data folder's file that tells the error
        const char* mark;  ///< key, and its value after the run
        const char* value;
    };
    constexpr Failure kFailures[] = {
        {kInventory,
         "SELECT  * FROM Inventory",
         "No Inventory Exported",
         "PVSW.log",
         "Last Inventory UID Added",
         ""},
        {kNames,
         "SELECT  * FROM Names",
         "No Names exported",
         "PVSW.log",
         "Last Name UID Added",
         ""},
        {kVendors, "SELECT TOP 1", "Exporting Vendor Cancelled", "QBLINK.LOG", "", ""},
        {kTenders, "SELECT TOP 1", "Exporting Tender Cancelled", "QBLINK.LOG", "", ""},
        {kPurchases,
         "SELECT  TOP 1 * FROM POHistory",
         "Exporting PO Cancelled",
         "QBLINK.LOG",
         "Last Purchase Order UID",
         "1"},  // the first receipt was walked before the step behind it failed
    };
    // A record of an earlier walk stands in the buffers.
    gNames.NameID = 50;
    gInventory.RecordNum = 50;
    const platform::PlatformError broken(-2147467259, "Disk error");
    for (const Failure& row : kFailures) {
        SCOPED_TRACE(row.text);
        const std::size_t told = fileText(row.log).size();
        store.failures = {{row.statement, broken}};
        exportOnly(row.list);
        store.failures.clear();
        EXPECT_EQ(status(), row.text);
        const std::string news = fileText(row.log).substr(told);
        EXPECT_NE(news.find("Disk error"), std::string::npos) << news;
        EXPECT_EQ(mark(row.mark), row.value);
    }
}

TEST_F(ListExports, aWalkThatComesToARowOnceMoreEndsThere) {
    struct Circle {
        const char* given;
        Export list;
        std::vector<std::string> rows;
        const char* log;
        const char* text;
        const char* visited;  ///< part of the label's text, for the row that closes the circle
    };
    const std::string vendor =
        "INSERT INTO Vendor (VendorID, VENDCODE, BUSINESS, LASTNAME) VALUES ";
    const std::string code = "INSERT INTO SalesCode (UserID, SalesCode, StoreNumber, ShortCut, "
                             "FullName, ResetQ1, ResetQ2, ResetQ3) VALUES ";
    const Circle kCircles[] = {
        {"a vendor whose code ends in two quotes",
         kVendors,
         {vendor + "(91, 'X''''', 'one', 'one')"},
         "gpVendors_export stands on X'' ",
         "Done Vendor List export",
         " X'' "},
        {"two vendors that lead to each other",
         kVendors,
         {"DELETE FROM Vendor WHERE VendorID = 91",
          vendor + "(92, 'B''''', 'two', 'two')",
          vendor + "(93, 'B'' A', 'three', 'three')"},
         "gpVendors_export stands on B' A ",
         "Done Vendor List export",
         " B' A "},
        {"a sales code of two quotes",
         kSalesCodes,
         {code + "(94, '''''', 1, 'Q', 'Quin Quote', 0, 0, 0)"},
         "gpSalesCodes_export stands on '' ",
         "Done Employee/SalesCode Export",
         "Importing Quin Quote ''"},
    };
    for (const Circle& row : kCircles) {
        SCOPED_TRACE(row.given);
        for (const std::string& statement : row.rows) {
            execute(statement);
        }
        desktop.onYield.clear();
        int visits = 0;
        for (int yield = 1; yield < 500; ++yield) {
            desktop.onYield[desktop.yields + yield] = [&] {
                visits += status().starts_with(row.visited) ? 1 : 0;
            };
        }
        desktop.onYield[desktop.yields + 500] = [this] { click("cmdStop"); };
        exportOnly(row.list);
        EXPECT_EQ(status(), row.text);
        EXPECT_EQ(logged(row.log), 1U) << fileText("QBLINK.LOG");
        EXPECT_EQ(visits, 1);
    }
}

TEST_F(ListExports, aCancelledWalkSaysSoInTheWindowThatRunsIt) {
    FrmQuickSetUP window;
    setup->setText("LblStatus", "");
    store.failures = {{"SELECT  TOP 1", platform::PlatformError(-2147467259, "Disk error")}};
    gpVendors_export(window.name());
    EXPECT_EQ(window.control("LblStatus").caption, "Exporting Vendor Cancelled");
    EXPECT_EQ(status(), "");
}

TEST_F(ListExports, theVendorOfAnItemIsAskedForOnceBeforeItsExport) {
    struct VendorCase {
        const char* vendor;
        std::ptrdiff_t searches;
        const char* entry;  ///< that the item refers to
    };
    // The export of a vendor searches it as well.
    constexpr VendorCase kCases[] = {
        {"FORGE", 2, "FORGE"}, {"GHOST", 1, "Default"},  // without a row
    };
    for (const VendorCase& row : kCases) {
        SCOPED_TRACE(row.vendor);
        execute(
            "UPDATE Inventory SET VendorCode = '" + std::string(row.vendor) +
            "' WHERE SL = '1000018A'"
        );
        typeManual("chkInvtManual", "txtInventoryManual", "1000018A");
        click("CmdManual");
        EXPECT_EQ(sent({"<VendorQueryRq", "<Name>" + std::string(row.vendor) + "<"}), row.searches);
        EXPECT_TRUE(booksName(row.entry));
    }
}

TEST_F(ListExports, manualRunsSendOneRecordAndTouchNoMark) {
    // The label's text when the run has ended, part of the log, and an entry in the books
    // afterwards; empty: nothing is said, and no entry is asked for.
    for (const auto& [given, box, field, text, label, log, entry] :
         testing_support::tableRows<7>("export/manual_runs.json")) {
        SCOPED_TRACE(given);
        const std::size_t logged = fileText("QBLINK.LOG").size();
        typeManual(box, field, text);
        click("CmdManual");
        EXPECT_EQ(status(), label);
        const std::string news = fileText("QBLINK.LOG").substr(logged);
        EXPECT_TRUE(log.empty() ? news.empty() : news.find(log) != std::string::npos) << news;
        EXPECT_TRUE(entry.empty() || booksName(entry));
        setup->setOn(box, false);
        setup->raise(box, ui::Signal::click);
    }
    EXPECT_EQ(transactions("PurchaseOrder").size(), 1U);
    EXPECT_EQ(mark("Last Purchase Order UID"), "");
    EXPECT_EQ(mark("Last Name UID Added"), "");
}

TEST_F(ListExports, aSingleSaleIsPostedWhateverItsMarkAndOnlyOnce) {
    db::SalesHeadRecord head;
    head.Invoice = "0000009";
    head.Status = "V";
    head.Taxed = "N";
    head.SubTotal = util::Money::fromWhole(10);
    head.TotalSale = head.SubTotal;
    head.Tenders = 1;
    head.TendType1 = 1;
    head.TendAmount1 = head.TotalSale;
    db::SalesItemRecord line;
    line.InvUID = 1;
    line.SL = "~NONSTK";
    line.Shipped = 1;
    line.Taxed = "N";
    line.LineTotal = head.SubTotal;
    addSale(head, {line});
    for (int run = 0; run < 2; ++run) {
        typeManual("chkManual", "txtInvoiceManual", "7");  // the next higher number counts
        click("CmdManual");
        EXPECT_EQ(status(), "Manual Sales files import Complete...");
        EXPECT_EQ(transactions("SalesReceipt").size(), 1U);
    }
    EXPECT_EQ(mark("Last Invoices Posted"), "");
    EXPECT_EQ(gsLastInvoice, "");
}

}  // namespace
