#include "export/list_fixture.h"
#include "ui/form.h"

namespace {

class PurchaseOrders : public ListFixture {
public:
    /// Numbers of the orders in the books, from the `first` on, each with its count of lines.
    [[nodiscard]] std::vector<std::string> orders(std::size_t first = 0) const {
        std::vector<std::string> texts;
        for (const auto& order : transactions("PurchaseOrder")) {
            texts.push_back(order.refNumber + " x" + std::to_string(order.lines.size()));
        }
        texts.erase(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(first));
        return texts;
    }

protected:
    struct Receipt {
        const char* number;
        const char* date;
        const char* status = "R";
        const char* vendor = "ACME";
    };

    /// Puts receipts in the place of those that are there; they are numbered from 1.
    void setReceipts(const std::vector<Receipt>& receipts) {
        execute("DELETE FROM POHistory");
        int uniqueId = 0;
        for (const Receipt& row : receipts) {
            execute(
                "INSERT INTO POHistory (DateReceived, PONumber, InvUID, Spare, UnitQty, UnitCost, "
                "Pack, VendorCode, Status, UniqueID) VALUES ('" +
                std::string(row.date) + "', '" + row.number + "', 19, 0, 1, 2.5, 1, '" +
                row.vendor + "', '" + row.status + "', " + std::to_string(++uniqueId) + ")"
            );
        }
    }
};

TEST_F(PurchaseOrders, receiptsBecomeOneOrderForEachNumberAndTheRunIsNotRepeated) {
    // When
    exportOnly(kPurchases);

    // Then
    const auto orders = transactions("PurchaseOrder");
    ASSERT_EQ(orders.size(), 3U);
    EXPECT_EQ(orders[0].refNumber, "PO100");
    EXPECT_EQ(orders[0].name, "ACME");
    EXPECT_EQ(orders[0].lines.size(), 3U);
    EXPECT_EQ(status(), "Done PO export");
    EXPECT_EQ(mark("Last Purchase Order UID"), "9");
    EXPECT_EQ(mark("Last Purchase Order Posted"), "00000000");

    exportOnly(kPurchases);
    EXPECT_EQ(
        desktop.boxes.back().text,
        "You Already run once, Please exit the program if you want to run again"
    );
    restart();
    exportOnly(kPurchases);
    EXPECT_EQ(desktop.boxes.back().text, "no PO's found to export");
    EXPECT_EQ(transactions("PurchaseOrder").size(), 3U);
}

TEST_F(PurchaseOrders, oddReceiptsTravelAsFarAsTheyCan) {
    execute("UPDATE POHistory SET InvUID = 999 WHERE UniqueID = 2");
    execute("UPDATE POHistory SET VendorCode = ' ' WHERE PONumber = 'PO101'");
    execute("UPDATE POHistory SET Status = 'P' WHERE PONumber = 'PO102'");
    exportOnly(kPurchases);
    const auto orders = transactions("PurchaseOrder");
    ASSERT_EQ(orders.size(), 2U);
    EXPECT_EQ(orders[0].lines[1].item, "~NONSTK");
    EXPECT_EQ(orders[1].name, "Default");
    EXPECT_EQ(mark("Last Purchase Order UID"), "6");
}

TEST_F(PurchaseOrders, theFirstStartLeavesOutWhatCameBeforeItsDate) {
    using Numbers = std::vector<std::string>;
    struct Start {
        const char* given;
        const char* date;  ///< mark
        Numbers orders;
    };
    const Start kStarts[] = {
        {"no date", "00000000", {"A x1", "B x1", "C x1", "D x1"}},
        {"an earlier receipt of either status", "20150201", {"C x1", "D x1"}},
        {"the day of an unposted one", "20150401", {"D x1"}},
        {"a day behind all", "20160101", {}},
    };
    setReceipts({
        {"A", "20140101", "U"},
        {"B", "20150101"},
        {"C", "20150301"},
        {"D", "20150401", "U"},
        {"E", "20150501", "P"},
    });
    for (const Start& row : kStarts) {
        SCOPED_TRACE(row.given);
        const std::size_t posted = orders().size();
        setSetupValue("IMPORT HIST", "Last Purchase Order Posted", row.date);
        setSetupValue("IMPORT HIST", "Last Purchase Order UID", "0");
        restart();
        desktop.boxes.clear();
        exportOnly(kPurchases);
        EXPECT_EQ(orders(posted), row.orders);
        const bool saysNone =
            !desktop.boxes.empty() && desktop.boxes.back().text == "no PO's found to export";
        EXPECT_EQ(saysNone, row.orders.empty());
    }
}

TEST_F(PurchaseOrders, aReceiptWithoutVendorBringsDefaultUpToDateFromItsRow) {
    execute("INSERT INTO Vendor (VendorID, VENDCODE, BUSINESS, LASTNAME) VALUES (91, 'Default', "
            "'General Supplier', 'x')");
    setReceipts({{"A", "20150101", "R", " "}});
    exportOnly(kPurchases);
    EXPECT_EQ(orders(), (std::vector<std::string>{"A x1"}));
    EXPECT_NE(books().find("General Supplier"), std::string::npos);
}

TEST_F(PurchaseOrders, aStoppedRunPostsTheLastOrderAndThenSaysOnceThatItWasCancelled) {
    class Label : public ui::FormObserver {
    public:
        explicit Label(const PurchaseOrders& test) : test_(test) {}
        void controlChanged(ui::Form&, const ui::ControlState& control) override {
            if (control.name == "LblStatus" && control.caption == "Exporting PO Cancelled") {
                posted.push_back(test_.orders());
            }
        }
        void formClosed(ui::Form&) override {}
        std::vector<std::vector<std::string>> posted;  ///< at each time that the text was shown

    private:
        const PurchaseOrders& test_;
    };
    setReceipts({{"A", "20150101"}, {"B", "20150101"}, {"C", "20150101"}});
    Label label(*this);
    setup->setObserver(&label);
    stopAfter(" B ");
    exportOnly(kPurchases);
    setup->setObserver(nullptr);
    EXPECT_EQ(label.posted, (std::vector<std::vector<std::string>>{{"A x1", "B x1"}}));
    EXPECT_EQ(mark("Last Purchase Order UID"), "2");
}

TEST_F(PurchaseOrders, theManualRunMakesOneOrderOfAllReceiptsOfItsNumber) {
    setReceipts({
        {"P1", "20150101"},
        {"P2", "20150101"},
        {"p1", "20150103", "U", "BRULE"},
        {"P1", "20150104", "X"},
    });
    typeManual("chkPOHisManual", "txtPOHisPONum", "P1");
    click("CmdManual");
    EXPECT_EQ(orders(), (std::vector<std::string>{"P1 x2"}));
}

TEST_F(PurchaseOrders, aRunThatWasCutOffIsTakenUpWithoutDoubles) {
    constexpr testing_support::FaultPoint kPoints[] = {
        testing_support::FaultPoint::before, testing_support::FaultPoint::after};
    for (const auto point : kPoints) {
        for (int cut = 1; cut <= 4; ++cut) {
            SCOPED_TRACE(std::to_string(cut) + (point == kPoints[0] ? " before" : " after"));
            const std::size_t old = orders().size();
            setSetupValue("IMPORT HIST", "Last Purchase Order UID", "0");
            restart();
            // Given: two orders of one number, received on one day, with another between them;
            // what earlier turns of this loop have booked bears other days
            const std::string day = "201501" + std::to_string(10 + old / 4);  // four orders a turn
            setReceipts({
                {"PO1", day.c_str()},
                {"PO2", day.c_str()},
                {"PO1", day.c_str()},
                {"PO3", day.c_str()},
            });

            // When
            faults->endProgramAt(cut, point, "<PurchaseOrderAdd>");
            EXPECT_THROW(exportOnly(kPurchases), platform::ProgramEnd);
            restart();
            exportOnly(kPurchases);

            // Then
            EXPECT_EQ(status(), "Done PO export");
            auto booked = orders(old);
            std::sort(booked.begin(), booked.end());
            EXPECT_EQ(booked, (std::vector<std::string>{"PO1 x1", "PO1 x1", "PO2 x1", "PO3 x1"}));
            EXPECT_EQ(fileText("QBLINK.RNP"), "");
        }
    }
}

TEST_F(PurchaseOrders, aQuestionThatFailsCostsNoOtherOrderALine) {
    // Given: the run ended by force behind the second order
    setReceipts({{"PO1", "20150105"}, {"PO2", "20150105"}, {"PO2", "20150106"}, {"PO3", "20150107"}}
    );
    faults->endProgramAt(2, testing_support::FaultPoint::after, "<PurchaseOrderAdd>");
    EXPECT_THROW(exportOnly(kPurchases), platform::ProgramEnd);
    restart();

    // When
    faults->failAt(
        1,
        testing_support::FaultPoint::before,
        platform::PlatformError(-2147220472, "no answer"),
        "<PurchaseOrderQuery"
    );
    exportOnly(kPurchases);

    // Then
    EXPECT_EQ(orders(), (std::vector<std::string>{"PO1 x1", "PO2 x2", "PO3 x1"}));
    EXPECT_EQ(logged("PurchaseOrder PO1 Error: -2147220472 no answer"), 1U);
}

}  // namespace
