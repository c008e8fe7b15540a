#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

std::string ref(const std::string& field, const std::string& name) {
    return "<" + field + "><FullName>" + name + "</FullName></" + field + ">";
}

std::string line(const std::string& kind, const std::string& item, const std::string& rest) {
    return "<" + kind + "LineAdd>" + ref("ItemRef", item) + rest + "</" + kind + "LineAdd>";
}

std::string deletion(const std::string& type, const std::string& txnId) {
    return "<TxnDelType>" + type + "</TxnDelType><TxnID>" + txnId + "</TxnID>";
}

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

struct Movement {
    const char* given;
    const char* request;
    std::string lines;
    const char* figures;
    const char* stockValue;
};

TEST_F(Purchases, moveStockAndItsCostAndGoBackWhenDeleted) {
    const Movement cases[] = {
        {"an order moves nothing",
         "PurchaseOrderAdd",
         line("PurchaseOrder", "1000001.1", "<Quantity>5</Quantity><Rate>11.00</Rate>"),
         "10 at 8.00, owed 0.00",
         "80.00"},
        {"goods at another cost",
         "ItemReceiptAdd",
         line("Item", "1000001.1", "<Quantity>5</Quantity><Cost>11.00</Cost>"),
         "15 at 9.00, owed 55.00",
         "135.00"},
        {"the cost of the item when the line tells none",
         "ItemReceiptAdd",
         line("Item", "1000001.1", "<Quantity>2</Quantity>"),
         "12 at 8.00, owed 16.00",
         "96.00"},
        {"one piece when the line tells no quantity",
         "ItemReceiptAdd",
         line("Item", "1000001.1", "<Amount>19.00</Amount>"),
         "11 at 9.00, owed 19.00",
         "99.00"},
        {"the same item twice",
         "ItemReceiptAdd",
         line("Item", "1000001.1", "<Quantity>5</Quantity><Amount>40.00</Amount>") +
             line("Item", "1000001.1", "<Quantity>5</Quantity><Amount>80.00</Amount>"),
         "20 at 10.00, owed 120.00",
         "200.00"},
        {"goods sent back at their price take their price along",
         "VendorCreditAdd",
         line("Item", "1000001.1", "<Quantity>5</Quantity><Amount>50.00</Amount>"),
         "5 at 6.00, owed -50.00",
         "30.00"},
        {"goods that are not kept in stock",
         "ItemReceiptAdd",
         line("Item", "~NONSTK", "<Quantity>3</Quantity><Amount>7.50</Amount>"),
         "10 at 8.00, owed 7.50",
         "80.00"},
        {"the item for credits books on the stock without moving it",
         "VendorCreditAdd",
         line("Item", "1", "<Quantity>1</Quantity><Amount>6.00</Amount>"),
         "10 at 8.00, owed -6.00",
         "74.00"},
        {"an expense",
         "VendorCreditAdd",
         "<ExpenseLineAdd>" + ref("AccountRef", "Cash Paid Out") +
             "<Amount>4.00</Amount></ExpenseLineAdd>",
         "10 at 8.00, owed -4.00",
         "80.00"},
    };
    for (const auto& [given, request, lines, after, value] : cases) {
        SCOPED_TRACE(given);
        const std::string txnId = textsOf(make(request, kAcme + lines), "TxnID");
        EXPECT_EQ(figures(), after);
        EXPECT_EQ(stockValue(), value);
        expectSound();
        const std::string type(request, std::string_view(request).size() - 3);
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
