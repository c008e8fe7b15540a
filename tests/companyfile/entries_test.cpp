#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

std::string ref(const std::string& field, const std::string& name) {
    return "<" + field + "><FullName>" + name + "</FullName></" + field + ">";
}

/// A kind of list entry: how one is added, found, and what it takes to refer to it.
struct Kind {
    const char* kind;
    std::string fields;
    const char* name;       ///< under which it is found afterwards
    const char* query;      ///< request that finds it
    const char* nameField;  ///< element of the answer that holds the name
    const char* user;       ///< request of an entry or transaction that refers to it; empty: none
    std::string userFields;
};

std::string sold(const char* name) {
    return "<Name>" + std::string(name) + "</Name><SalesOrPurchase><Price>1.00</Price>" +
           ref("AccountRef", "Merchandise Sales") + "</SalesOrPurchase>";
}

std::string receiptOf(const char* item) {
    return "<SalesReceiptLineAdd>" + ref("ItemRef", item) + "</SalesReceiptLineAdd>";
}

std::string customerWith(const char* field, const char* name) {
    return "<Name>User of " + std::string(name) + "</Name>" + ref(field, name);
}

class Entries : public CompanyTest {
protected:
    /// The answer to a query by the name; sales reps are looked for in the whole list.
    Reply find(const Kind& row) {
        const bool byName = std::string(row.nameField) == "Name";
        return ask(
            row.query, byName ? "<FullName>" + std::string(row.name) + "</FullName>" : std::string()
        );
    }
    Reply remove(const Kind& row, const std::string& listId) {
        return ask(
            "ListDel",
            "<ListDelType>" + std::string(row.kind) + "</ListDelType><ListID>" + listId +
                "</ListID>"
        );
    }
};

TEST_F(Entries, ofEveryKindAreFoundUsedAndDeleted) {
    const Kind kinds[] = {
        {"Account",
         "<Name>Till</Name><AccountType>Bank</AccountType>",
         "Till",
         "AccountQuery",
         "Name",
         "SalesReceiptAdd",
         ref("DepositToAccountRef", "Till") + receiptOf("FREIGHT")},
        {"Vendor",
         "<Name>Mill</Name>",
         "Mill",
         "VendorQuery",
         "Name",
         "PurchaseOrderAdd",
         ref("VendorRef", "Mill") + "<PurchaseOrderLineAdd/>"},
        {"Employee",
         "<FirstName>Ann</FirstName><LastName>Lee</LastName>",
         "Ann Lee",
         "EmployeeQuery",
         "Name",
         "SalesRepAdd",
         "<Initial>AL</Initial>" + ref("SalesRepEntityRef", "Ann Lee")},
        {"OtherName",
         "<Name>Ben Rep</Name>",
         "Ben Rep",
         "OtherNameQuery",
         "Name",
         "SalesRepAdd",
         "<Initial>BR</Initial>" + ref("SalesRepEntityRef", "ben rep")},
        {"SalesRep",
         "<Initial>X</Initial>" + ref("SalesRepEntityRef", "House"),
         "X",
         "SalesRepQuery",
         "Initial",
         "InvoiceAdd",
         ref("CustomerRef", "ABC") + ref("SalesRepRef", "X")},
        {"ItemNonInventory",
         sold("KIT"),
         "KIT",
         "ItemQuery",
         "Name",
         "SalesReceiptAdd",
         receiptOf("KIT")},
        {"ItemOtherCharge",
         sold("BAG"),
         "BAG",
         "ItemQuery",
         "Name",
         "SalesReceiptAdd",
         receiptOf("BAG")},
        {"ItemPayment",
         "<Name>CASH</Name>" + ref("DepositToAccountRef", "Cash Drawer"),
         "CASH",
         "ItemQuery",
         "Name",
         "SalesReceiptAdd",
         receiptOf("CASH")},
        {"ItemSalesTax",
         "<Name>TX</Name><TaxRate>5</TaxRate>" + ref("TaxVendorRef", "State"),
         "TX",
         "ItemQuery",
         "Name",
         "SalesReceiptAdd",
         ref("ItemSalesTaxRef", "TX") + receiptOf("FREIGHT")},
        {"SalesTaxCode",
         "<Name>Z</Name><IsTaxable>false</IsTaxable>",
         "Z",
         "SalesTaxCodeQuery",
         "Name",
         "CustomerAdd",
         customerWith("SalesTaxCodeRef", "Z")},
        {"PaymentMethod",
         "<Name>Gift Card</Name>",
         "Gift Card",
         "PaymentMethodQuery",
         "Name",
         "SalesReceiptAdd",
         ref("PaymentMethodRef", "Gift Card") + receiptOf("FREIGHT")},
        {"ShipMethod",
         "<Name>Van</Name>",
         "Van",
         "ShipMethodQuery",
         "Name",
         "SalesReceiptAdd",
         ref("ShipMethodRef", "Van") + receiptOf("FREIGHT")},
        {"CustomerMsg",
         "<Name>Bye</Name>",
         "Bye",
         "CustomerMsgQuery",
         "Name",
         "InvoiceAdd",
         ref("CustomerRef", "ABC") + ref("CustomerMsgRef", "Bye")},
        {"JobType",
         "<Name>Trade</Name>",
         "Trade",
         "JobTypeQuery",
         "Name",
         "CustomerAdd",
         customerWith("JobTypeRef", "Trade")},
    };
    for (const Kind& row : kinds) {
        SCOPED_TRACE(row.kind);
        const std::string made = make(std::string(row.kind) + "Add", row.fields);
        const std::string listId = textsOf(made.substr(0, made.find("<TimeCreated>")), "ListID");
        EXPECT_EQ(send(std::string(row.kind) + "Add", row.fields).code, 3100);
        const Reply found = find(row);
        EXPECT_EQ(found.code, 0) << found.message;
        const std::string names = "|" + textsOf(found.body, row.nameField) + "|";
        EXPECT_NE(names.find("|" + std::string(row.name) + "|"), std::string::npos) << names;

        EXPECT_EQ(remove(row, listId).code, 0);
        EXPECT_EQ(remove(row, listId).code, 3120);
        const Reply unknown = send(row.user, row.userFields);
        EXPECT_EQ(unknown.code, 3140) << unknown.message;

        const std::string again = make(std::string(row.kind) + "Add", row.fields);
        make(row.user, row.userFields);
        EXPECT_EQ(
            remove(row, textsOf(again.substr(0, again.find("<TimeCreated>")), "ListID")).code, 3160
        );
        expectSound();
    }
}

}  // namespace

}  // namespace companyfile
