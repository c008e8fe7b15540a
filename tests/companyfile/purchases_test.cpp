#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

const std::string kAcme = ref("VendorRef", "ACME");

/// The shop has 10 of the item 1000001.1, bought at 8.00 each.
class Purchases : public CompanyTest {
protected:
    /// Stock and average cost of the item, and what is owed to the vendor.
    std::string figures() {
        const std::string item = ask("ItemQuery", "<FullName>1000001.1</FullName>").body;
        const std::string vendor = ask("VendorQuery", "<FullName>ACME</FullName>").body;
        return textsOf(item, "QuantityOnHand") + " at " + textsOf(item, "AverageCost") + ", owed " +
               textsOf(vendor, "Balance");
    }
    /// Value of the account of the stock.
    std::string stockValue() {
        for (const AccountBalance& account : file_.trialBalance()) {
            if (account.account == "Inventory Asset") {
                return (account.debit - account.credit).text(2);
            }
        }
        return {};
    }
};

TEST_F(Purchases, moveStockAndItsCostAndGoBackWhenDeleted) {
    for (Case& row : casesOf("stock_moves.txt")) {
        SCOPED_TRACE(row["given"]);
        const std::string& request = row["send"];
        const std::string txnId = textsOf(make(request, kAcme + row["lines"]), "TxnID");
        EXPECT_EQ(figures(), row["figures"]);
        EXPECT_EQ(stockValue(), row["value"]);
        expectSound();
        const std::string type = request.substr(0, request.size() - std::string("Add").size());
        EXPECT_EQ(ask("TxnDel", deletion(type, txnId)).code, 0);
        EXPECT_EQ(figures(), "10 at 8.00, owed 0.00");
        EXPECT_EQ(stockValue(), "80.00");
        expectSound();
    }
}

TEST_F(Purchases, ofOrdersAreFoundWithTheirLines) {
    const std::string made = make(
        "PurchaseOrderAdd",
        kAcme + "<RefNumber>0004711</RefNumber><DueDate>2015-05-07</DueDate><Memo>spring</Memo>" +
            line("PurchaseOrder", "1000001.1", "<Desc>Mug</Desc><Quantity>2</Quantity>") +
            line("PurchaseOrder", "~NONSTK", "<Amount>1.50</Amount>")
    );
    const std::string filter =
        "<RefNumberFilter><MatchCriterion>Contains</MatchCriterion><RefNumber>4711</RefNumber>"
        "</RefNumberFilter>";
    const Reply bare = ask("PurchaseOrderQuery", filter);
    EXPECT_EQ(textsOf(bare.body, "TxnID"), textsOf(made, "TxnID"));
    EXPECT_EQ(textsOf(bare.body, "TotalAmount"), "17.50");
    EXPECT_EQ(bare.body.find("PurchaseOrderLineRet"), std::string::npos);
    const Reply full =
        ask("PurchaseOrderQuery",
            filter + "<IncludeLineItems>true</IncludeLineItems><IncludeLinkedTxns>true"
                     "</IncludeLinkedTxns>");
    EXPECT_EQ(textsOf(full.body, "Quantity"), "2");
    EXPECT_EQ(textsOf(full.body, "Amount"), "16.00|1.50");
    EXPECT_EQ(ask("TxnDel", deletion("SalesReceipt", textsOf(made, "TxnID"))).code, 3120)
        << "the id of a transaction of another type";
}

}  // namespace

}  // namespace companyfile
