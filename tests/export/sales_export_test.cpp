#include "core/brv_op.h"
#include "core/link_setup.h"
#include "export/sales_export.h"
#include "qb/smQB_Utilities.h"
#include "support/link_fixture.h"
#include "ui/form.h"

#include <filesystem>
#include <set>

namespace {

using testing_support::FaultPoint;
using testing_support::LinkFixture;

constexpr int kSales = 3;

/// A plain cash sale of a non-stock item, without customer.
db::SalesHeadRecord cashHead(const std::string& invoice, const std::string& date = "20150110") {
    db::SalesHeadRecord head;
    head.Invoice = invoice;
    head.SaleDate = date;
    head.SubTotal = util::Money::fromWhole(10);
    head.TotalSale = head.SubTotal;
    head.Taxed = "N";
    head.Tenders = 1;
    head.TendType1 = 1;
    head.TendAmount1 = head.TotalSale;
    return head;
}

db::SalesItemRecord nonStockLine() {
    db::SalesItemRecord line;
    line.InvUID = 1;
    line.SL = "~NONSTK";
    line.Shipped = 1;
    line.Taxed = "N";
    line.LineTotal = util::Money::fromWhole(10);
    line.Description = "Odd lot";
    return line;
}

class SalesExport : public LinkFixture {
protected:
    /// Lists, the posting items in the books, and cash sales 0000001 to `count`, one for each day
    /// from 1 January 2015 on.
    void makeShop(int count) {
        makeStore(0, 1);
        for (int number = 1; number <= count; ++number) {
            const std::string digits = std::to_string(number);
            addCash("000000" + digits, "2015010" + digits);
        }
        openSetup();
        click("CmdInitialized");
    }
    void addCash(const std::string& invoice, const std::string& date) {
        addSale(cashHead(invoice, date), {nonStockLine()});
    }
    std::set<std::string> posted() {
        std::set<std::string> numbers;
        for (const auto& transaction : transactions("SalesReceipt")) {
            EXPECT_TRUE(numbers.insert(transaction.refNumber).second)
                << transaction.refNumber << " stands in the books twice";
        }
        return numbers;
    }
    std::string position() {
        return setupValue("IMPORT HIST", "Last Invoices Posted") + " " +
               setupValue("IMPORT HIST", "Last Invoices Posted on");
    }
    void exportSales() { exportChecked(kSales); }
};

TEST_F(SalesExport, postsEverySaleOnceAndRemembersTheLast) {
    // Given
    makeShop(3);

    // When
    exportSales();

    // Then
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001", "0000002", "0000003"}));
    EXPECT_EQ(position(), "0000003 20150103");
    EXPECT_EQ(gbSalesExportArmed, kNo);
    EXPECT_EQ(fileText("QBLINK.LOG"), "");

    exportSales();
    EXPECT_EQ(
        desktop.boxes.back().text,
        "You Already run once, Please exit the program if you want to run again"
    );

    restart();
    exportSales();
    EXPECT_EQ(posted().size(), 3U);
    EXPECT_EQ(position(), "0000003 20150103");
}

struct SkipCase {
    const char* given;
    const char* invoice;
    const char* date;
    const char* status;
    const char* description;
    const char* position;  ///< after the run
};

TEST_F(SalesExport, passesOverRowsThatAreNoSales) {
    constexpr SkipCase kCases[] = {
        {"a row with any mark", "0000004", "20150104", "V", "", "0000004 20150104"},
        {"a cash drop that ends the table",
         "0000005",
         "20150105",
         "",
         "Cash Drop",
         "0000005 20150105"},
    };
    makeShop(2);
    for (const SkipCase& row : kCases) {
        db::SalesHeadRecord head = cashHead(row.invoice, row.date);
        head.Status = row.status;
        head.Description = row.description;
        addSale(head, {nonStockLine()});
    }
    exportSales();
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001", "0000002"}));
    EXPECT_EQ(position(), kCases[1].position);
    EXPECT_EQ(status(), "Sales Files Importing Complete...");
}

TEST_F(SalesExport, aSaleWithoutLinesIsWalkedButNotPosted) {
    makeShop(1);
    addSale(cashHead("0000002", "20150102"), {});
    exportSales();
    EXPECT_EQ(posted().size(), 1U);
    EXPECT_EQ(position(), "0000002 20150102");
}

TEST_F(SalesExport, theEndDateEndsTheRunAndStaysArmed) {
    // Given
    makeShop(4);
    setup->setText("txtToDate", "1/2/2015");

    // When
    gpSales_export();

    // Then: the first sale behind the date is stored, though it was not posted
    EXPECT_EQ(setup->text("txtToDate"), "20150102");
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001", "0000002"}));
    EXPECT_EQ(status(), "Finished Exporting Sales To Date: 20150102 Invoice #0000003");
    EXPECT_EQ(position(), "0000003 20150103");
    EXPECT_EQ(gbSalesExportArmed, kYes);
}

TEST_F(SalesExport, stopEndsTheRunBetweenTwoSalesAndStaysArmed) {
    // Given
    makeShop(4);
    // When: Stop is pressed while the second sale's line of progress stands
    const auto pressStop = [this] {
        if (status().find("0000002") != std::string::npos) {
            click("cmdStop");
        }
    };
    for (int yield = 1; yield < 500; ++yield) {
        desktop.onYield[desktop.yields + yield] = pressStop;
    }
    gpSales_export();

    // Then
    EXPECT_EQ(status(), "Exporting Sales Cancelled");
    EXPECT_EQ(gbSalesExportArmed, kYes);
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001"}));
    EXPECT_EQ(position(), "0000002 20150102");
}

TEST_F(SalesExport, aStartBehindTheLastRowOrAnEmptyTableIsDisarmed) {
    makeShop(0);
    gpSales_export();
    EXPECT_EQ(status(), "No Sales Imported");
    EXPECT_EQ(gbSalesExportArmed, kNo);

    addCash("0000001", "20150101");
    gbSalesExportArmed = kYes;
    gsLastInvoice = "5";
    gpSales_export();
    EXPECT_EQ(status(), "No Sales Imported");
    EXPECT_EQ(position(), " ");
    EXPECT_TRUE(posted().empty());
}

TEST_F(SalesExport, theSearchForDoublesKeepsBackWhatItSees) {
    // Given: everything is posted, then the position is lost
    makeShop(3);
    exportSales();
    for (const char* key : {"Last Invoices Posted", "Last Invoices Posted on"}) {
        setSetupValue("IMPORT HIST", key, "");
    }
    // When
    restart();
    exportSales();
    // Then
    EXPECT_EQ(posted().size(), 3U);
}

TEST_F(SalesExport, aConnectionLostAfterTheWorkDoublesNothing) {
    // Given: the second receipt is booked, but its answer never comes back
    makeShop(3);
    faults->failAt(
        2,
        FaultPoint::after,
        platform::PlatformError(-2147417851, "The server threw an exception."),
        "<SalesReceiptAdd>"
    );

    // When
    exportSales();

    // Then: the failure stands in the log, the walk went on
    EXPECT_NE(fileText("QBLINK.LOG").find("The server threw an exception."), std::string::npos);
    EXPECT_EQ(posted().size(), 3U);

    setSetupValue("IMPORT HIST", "Last Invoices Posted", "0000001");
    restart();
    exportSales();
    EXPECT_EQ(posted().size(), 3U);
}

TEST_F(SalesExport, aRefusedSaleIsLoggedOnceAndTheNextOneIsPosted) {
    makeShop(0);
    db::SalesItemRecord nameless = nonStockLine();
    nameless.InvUID = 9;
    nameless.Taxed = "Y";
    addSale(cashHead("0000001", "20150101"), {nameless});
    addCash("0000002", "20150102");
    exportSales();
    EXPECT_EQ(posted(), (std::set<std::string>{"0000002"}));
    const std::string log = fileText("QBLINK.LOG");
    EXPECT_NE(log.find("SalesAddNewReq 0000001 "), std::string::npos) << log;
    EXPECT_EQ(position(), "0000002 20150102");
}

TEST_F(SalesExport, anErrorOfTheStoreIsLoggedAndLosesNoSale) {
    const platform::PlatformError broken(-2147467259, "Communication link failure");
    makeShop(3);

    // Given: the lines of the second sale cannot be read; the walk goes on
    store.failures = {{"SELECT TOP 1 * FROM SalesItem WHERE SaleID='1000002'", broken}};
    exportSales();
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001", "0000003"}));
    EXPECT_EQ(logged("gpSales_export 0000002 Error: -2147467259 Communication link failure"), 1U);

    // Given: the step behind the first new sale fails; the run ends as by Stop
    addCash("0000004", "20150104");
    addCash("0000005", "20150105");
    restart();
    store.failures = {{"SELECT  TOP 1 * FROM SalesHead WHERE Invoice>'0000004'", broken}};
    exportSales();
    store.failures.clear();
    EXPECT_EQ(status(), "Exporting Sales Cancelled");
    EXPECT_EQ(position(), "0000004 20150104");
    EXPECT_EQ(logged("gpSales_export Get Next Error: -2147467259"), 1U);

    // The next run goes on behind it.
    restart();
    exportSales();
    EXPECT_EQ(posted(), (std::set<std::string>{"0000001", "0000003", "0000004", "0000005"}));
}

TEST_F(SalesExport, anUnusableSetupFileLosesThePositionOnly) {
    makeShop(2);
    std::filesystem::remove(folder() + "/QBLINK.NUV");
    std::filesystem::create_directory(folder() + "/QBLINK.NUV");
    gpSales_export();
    EXPECT_EQ(posted().size(), 2U);
    EXPECT_EQ(status(), "Sales Files Importing Complete...");
}

TEST_F(SalesExport, withoutASessionNothingIsWalked) {
    makeShop(1);
    EndSessionCloseConnection();
    faults->refuseBegin(platform::PlatformError(-2147220472, "no file"), 1000);
    desktop.operatorThere = false;
    gpSales_export();
    EXPECT_TRUE(posted().empty());
    EXPECT_EQ(position(), " ");
}

TEST_F(SalesExport, aWeekOfTheShopIsBookedInBalance) {
    // Given
    makeStore(240, 7);
    openSetup();
    click("CmdInitialized");
    exportChecked(0);  // the items
    setup->setOn("chkExport", false, 0);

    // When
    exportSales();

    // Then
    auto books = companyfile::CompanyFile::open(companyFile());
    EXPECT_TRUE(books.check().empty());
    EXPECT_EQ(faults->documents.size(), static_cast<std::size_t>(faults->exchanges))
        << "a request is no qbXML that the company file takes";
    util::Money sum;
    for (const auto& account : books.trialBalance()) {
        sum += account.debit - account.credit;
    }
    EXPECT_TRUE(sum.isZero());
    const std::size_t count = books.transactions().size();
    EXPECT_GT(count, 200U);

    restart();
    exportSales();
    EXPECT_EQ(transactions().size(), count);
}

}  // namespace
