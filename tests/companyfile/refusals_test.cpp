#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

/// One add that is refused; the answer carries no data and nothing of it is kept.
struct Refusal {
    const char* given;
    const char* request;
    std::string fields;
    int code;
    std::string message;
};

constexpr char kSays[] = "  QuickBooks error message: ";
constexpr char kNoRecord[] = "Invalid argument.  The specified record does not exist in the list.";

std::string line(const std::string& kind, const std::string& item, const std::string& rest) {
    return "<" + kind + "LineAdd><ItemRef><FullName>" + item + "</FullName></ItemRef>" + rest +
           "</" + kind + "LineAdd>";
}

std::string journalLine(
    const std::string& side,
    const std::string& account,
    const std::string& amount,
    const std::string& entity = ""
) {
    return "<Journal" + side + "Line><AccountRef><FullName>" + account +
           "</FullName></AccountRef><Amount>" + amount + "</Amount>" +
           (entity.empty() ? "" : "<EntityRef><FullName>" + entity + "</FullName></EntityRef>") +
           "</Journal" + side + "Line>";
}

class Refusals : public CompanyTest {
protected:
    template <std::size_t size>
    void expectRefused(const Refusal (&cases)[size]) {
        const std::string before = file_.dump();
        for (const auto& [given, request, fields, code, message] : cases) {
            SCOPED_TRACE(given);
            const Reply reply = send(request, fields);
            EXPECT_EQ(reply.code, code);
            EXPECT_EQ(reply.message, message);
            EXPECT_EQ(reply.severity, "Error");
            EXPECT_EQ(reply.body, "");
        }
        EXPECT_EQ(file_.dump(), before);
    }
};

TEST_F(Refusals, ofValuesCarryTheirCodeAndSentence) {
    const std::string name = "<Name>X</Name>";
    const Refusal cases[] = {
        {"a boolean",
         "CustomerAdd",
         name + "<IsActive>yes</IsActive>",
         3010,
         "There was an error when converting the boolean value \"yes\" in the field \"IsActive\""},
        {"a day that is none",
         "SalesReceiptAdd",
         "<TxnDate>2015-02-30</TxnDate><SalesReceiptLineAdd/>",
         3020,
         "There was an error when converting the date value \"2015-02-30\" in the field "
         "\"TxnDate\""},
        {"a day too late to be kept",
         "SalesReceiptAdd",
         "<TxnDate>2038-01-01</TxnDate><SalesReceiptLineAdd/>",
         3020,
         "There was an error when converting the date value \"2038-01-01\" in the field "
         "\"TxnDate\""},
        {"an amount with one decimal",
         "CustomerAdd",
         name + "<OpenBalance>97.5</OpenBalance>",
         3040,
         "There was an error when converting the amount \"97.5\" in the field \"OpenBalance\"."},
        {"a price of six decimals",
         "ItemOtherChargeAdd",
         name + "<SalesOrPurchase><Price>1.123456</Price><AccountRef/></SalesOrPurchase>",
         3045,
         "There was an error when converting the price \"1.123456\" in the field \"Price\"."},
        {"a rate with its sign",
         "ItemSalesTaxAdd",
         name + "<TaxRate>7%</TaxRate>",
         3050,
         "There was an error when converting the percent \"7%\" in the field \"TaxRate\"."},
        {"a quantity in words",
         "SalesReceiptAdd",
         line("SalesReceipt", "FREIGHT", "<Quantity>two</Quantity>"),
         3060,
         "There was an error when converting the quantity \"two\" in the field \"Quantity\"."},
        {"a text of 42 characters for 41",
         "CustomerAdd",
         "<Name>" + std::string(42, 'x') + "</Name>",
         3070,
         "The string \"" + std::string(42, 'x') + "\" in the field \"Name\" is too long."},
        {"a word in another case",
         "AccountAdd",
         name + "<AccountType>bank</AccountType>",
         3110,
         "The enumerated value \"bank\" in the field \"AccountType\" is unknown or invalid for "
         "the qbXML version in use."},
        {"a product beyond thirteen digits",
         "SalesReceiptAdd",
         line("SalesReceipt", "FREIGHT", "<Quantity>9999999999</Quantity><Rate>9999999999</Rate>"),
         3101,
         "The resulting amount is too large."},
    };
    expectRefused(cases);
}

TEST_F(Refusals, ofListEntriesCarryTheirCodeAndSentence) {
    const std::string taken = " of the list element is already in use.";
    const auto ref = [](const char* field, const char* name) {
        return "<" + std::string(field) + "><FullName>" + name + "</FullName></" + field + ">";
    };
    const Refusal cases[] = {
        {"a name in use, in another case",
         "CustomerAdd",
         "<Name>abc</Name>",
         3100,
         "The name \"abc\"" + taken},
        {"a vendor by the name of a customer",
         "VendorAdd",
         "<Name>ABC</Name>",
         3100,
         "The name \"ABC\"" + taken},
        {"an employee by the name of another name",
         "EmployeeAdd",
         "<FirstName>House</FirstName>",
         3100,
         "The name \"House\"" + taken},
        {"an item by the name of one of another kind",
         "ItemPaymentAdd",
         "<Name>ca</Name>",
         3100,
         "The name \"ca\"" + taken},
        {"a colon in a name",
         "CustomerAdd",
         "<Name>A:B</Name>",
         3090,
         std::string("There was an error when storing \"A:B\" in the \"Name\" field.") + kSays +
             "Names in this list cannot contain a colon.  The colon is a special character used "
             "to indicate a parent/child relationship."},
        {"a blank name",
         "CustomerAdd",
         "<Name> </Name>",
         3150,
         "There is a missing element: \"Name\"."},
        {"unknown terms",
         "CustomerAdd",
         "<Name>X</Name>" + ref("TermsRef", "Never"),
         3140,
         std::string("There is an invalid reference to QuickBooks Terms \"Never\" in the "
                     "Customer.") +
             kSays + kNoRecord},
        {"an unknown parent",
         "CustomerAdd",
         "<Name>X</Name>" + ref("ParentRef", "Nobody"),
         3130,
         "There is an invalid reference to the parent \"Nobody\" in the Customer list."},
        {"a sales rep who is a customer",
         "SalesRepAdd",
         "<Initial>X</Initial>" + ref("SalesRepEntityRef", "ABC"),
         3140,
         std::string("There is an invalid reference to QuickBooks Entity \"ABC\" in the "
                     "SalesRep.") +
             kSays + kNoRecord},
        {"an id that has not the form of one",
         "CustomerAdd",
         "<Name>X</Name><TermsRef><ListID>12</ListID></TermsRef>",
         3000,
         "The given object ID \"12\" in the field \"ListID\" is invalid."},
        {"a fourth line beside city, state and code",
         "CustomerAdd",
         "<Name>X</Name><BillAddress><Addr4>4</Addr4><City>C</City><State>S</State>"
         "<PostalCode>P</PostalCode></BillAddress>",
         3210,
         std::string("The \"address\" field has an invalid value \"\".") + kSays +
             "The parameter is incorrect."},
    };
    expectRefused(cases);
}

TEST_F(Refusals, ofTransactionsCarryTheirCodeAndSentence) {
    const std::string customer = "<CustomerRef><FullName>ABC</FullName></CustomerRef>";
    const auto saving = [](const std::string& what, const std::string& why) {
        return "There was an error when saving a " + what + "." + kSays + why;
    };
    const std::string positive = "Transaction amount must be positive.";
    const Refusal cases[] = {
        {"an unknown customer",
         "InvoiceAdd",
         "<CustomerRef><FullName>Nobody</FullName></CustomerRef>",
         3140,
         std::string("There is an invalid reference to QuickBooks Customer \"Nobody\" in the "
                     "Invoice.") +
             kSays + kNoRecord},
        {"an unknown item",
         "InvoiceAdd",
         customer + line("Invoice", "Nothing", ""),
         3140,
         std::string("There is an invalid reference to QuickBooks Item \"Nothing\" in the "
                     "Invoice line.") +
             kSays + kNoRecord},
        {"a sales tax code where a tax item belongs",
         "InvoiceAdd",
         customer + "<ItemSalesTaxRef><FullName>Tax</FullName></ItemSalesTaxRef>",
         3140,
         std::string("There is an invalid reference to QuickBooks Item \"Tax\" in the Invoice.") +
             kSays + kNoRecord},
        {"a receipt below zero",
         "SalesReceiptAdd",
         line("SalesReceipt", "FREIGHT", "<Amount>-1.00</Amount>"),
         3180,
         saving("Sales Receipt", positive)},
        {"an invoice below zero",
         "InvoiceAdd",
         customer + line("Invoice", "FREIGHT", "<Amount>-1.00</Amount>"),
         3180,
         saving("Invoice", positive)},
        {"money without an item",
         "SalesReceiptAdd",
         "<SalesReceiptLineAdd><Amount>1.00</Amount></SalesReceiptLineAdd>",
         3180,
         saving("Sales Receipt", "A line with an amount must have an item.")},
        {"tax for nobody",
         "SalesReceiptAdd",
         "<ItemSalesTaxRef><FullName>NoVendor</FullName></ItemSalesTaxRef>" +
             line("SalesReceipt", "1000001.1", "<Amount>20.00</Amount>"),
         3180,
         saving("Sales Receipt", "Sales tax detail line must have a vendor")},
        {"a deposit on an income account",
         "SalesReceiptAdd",
         "<DepositToAccountRef><FullName>Returns</FullName></DepositToAccountRef>" +
             line("SalesReceipt", "FREIGHT", ""),
         3180,
         saving("Sales Receipt", "The posting account is invalid")},
        {"an invoice on an account that is no receivable",
         "InvoiceAdd",
         customer + "<ARAccountRef><FullName>Checking</FullName></ARAccountRef>",
         3180,
         saving("Invoice", "The posting account is invalid")},
        {"a journal out of balance",
         "JournalEntryAdd",
         journalLine("Debit", "Checking", "5.00") + journalLine("Credit", "Returns", "4.99"),
         3180,
         saving("General Journal transaction", "Transaction not in balance.")},
        {"a journal line without an account",
         "JournalEntryAdd",
         "<JournalDebitLine><Amount>1.00</Amount></JournalDebitLine>",
         3150,
         "There is a missing element: \"AccountRef\"."},
        {"receivables without a customer",
         "JournalEntryAdd",
         journalLine("Debit", "Accounts Receivable", "5.00", "ACME") +
             journalLine("Credit", "Returns", "5.00"),
         3180,
         saving(
             "General Journal transaction",
             "When you use Accounts Receivable, you must choose a customer in the Name "
             "field."
         )},
        {"payables without a vendor",
         "JournalEntryAdd",
         journalLine("Debit", "Accounts Payable", "5.00") +
             journalLine("Credit", "Returns", "5.00"),
         3180,
         saving(
             "General Journal transaction",
             "When you use Accounts Payable, you must choose a vendor in the Name field."
         )},
        {"receivables twice",
         "JournalEntryAdd",
         journalLine("Debit", "Accounts Receivable", "5.00", "ABC") +
             journalLine("Credit", "Accounts Receivable", "5.00", "ABCD"),
         3180,
         saving(
             "General Journal transaction",
             "You can use only one Accounts Receivable or Accounts Payable account in a "
             "transaction."
         )},
        {"a negative payment",
         "ReceivePaymentAdd",
         customer + "<TotalAmount>-1.00</TotalAmount><IsAutoApply>false</IsAutoApply>",
         3180,
         saving("Received Payment", positive)},
        {"an order without a vendor",
         "PurchaseOrderAdd",
         line("PurchaseOrder", "1", "<Quantity>1</Quantity>"),
         3150,
         "There is a missing element: \"VendorRef\"."},
    };
    expectRefused(cases);
}

TEST_F(Refusals, areWarningsWhereOnlyAFieldOfAnotherEditionIsLeftOut) {
    const Reply reply = send(
        "JournalEntryAdd",
        journalLine("Debit", "Checking", "5.00") + journalLine("Credit", "Returns", "5.00") +
            "<Memo>why</Memo>"
    );
    EXPECT_EQ(reply.code, 530);
    EXPECT_EQ(reply.severity, "Warn");
    EXPECT_EQ(reply.message, "The field \"Memo\" is not supported by this implementation.");
    EXPECT_NE(textsOf(reply.body, "TxnID"), "");
    expectSound();
}

}  // namespace

}  // namespace companyfile
