#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

std::string ref(const std::string& field, const std::string& name) {
    return "<" + field + "><FullName>" + name + "</FullName></" + field + ">";
}

std::string line(const std::string& kind, const std::string& item, const std::string& rest) {
    return "<" + kind + "LineAdd>" + ref("ItemRef", item) + rest + "</" + kind + "LineAdd>";
}

std::string receiptLine(const std::string& item, const std::string& rest) {
    return line("SalesReceipt", item, rest);
}

const std::string kAbc = ref("CustomerRef", "ABC");

class Bookings : public CompanyTest {};

struct BookingCase {
    const char* given;
    const char* request;
    std::string fields;
    std::string total;
    std::string bookings;
};

TEST_F(Bookings, followTheItemsAndBalance) {
    const BookingCase cases[] = {
        {"a sale of stock: income, cost at average, money waiting for deposit",
         "SalesReceiptAdd",
         receiptLine("1000001.1", "<Quantity>2</Quantity><Amount>40.00</Amount>"),
         "40.00",
         "Merchandise Sales -40.00; Cost of Goods Sold 16.00; Inventory Asset -16.00; "
         "Undeposited Funds 40.00"},
        {"a price from the item, a deposit account of its own",
         "SalesReceiptAdd",
         ref("DepositToAccountRef", "Cash Drawer") +
             receiptLine("FREIGHT", "<Quantity>3</Quantity>"),
         "15.00",
         "Shipping Income -15.00; Cash Drawer 15.00"},
        {"a tender as a payment item nets the receipt out",
         "SalesReceiptAdd",
         receiptLine("0100", "<Amount>12.50</Amount>") +
             receiptLine("0011", "<Amount>12.50</Amount>"),
         "0.00",
         "Merchandise Sales -12.50; Undeposited Funds 12.50"},
        {"a tax amount as a line goes to the agency",
         "SalesReceiptAdd",
         receiptLine("FREIGHT", "<Amount>10.00</Amount>") +
             receiptLine("CA", "<Amount>0.83</Amount>"),
         "10.83",
         "Shipping Income -10.00; Sales Tax Payable -0.83; Undeposited Funds 10.83"},
        {"a negative line takes from the total",
         "SalesReceiptAdd",
         receiptLine("FREIGHT", "<Amount>10.00</Amount>") +
             receiptLine("Return", "<Amount>-4.00</Amount>"),
         "6.00",
         "Shipping Income -10.00; Returns 4.00; Undeposited Funds 6.00"},
        {"an empty receipt of total zero", "SalesReceiptAdd", "<SalesReceiptLineAdd/>", "0.00", ""},
        {"a pending sale is not booked",
         "SalesReceiptAdd",
         "<IsPending>true</IsPending>" + receiptLine("1000001.1", ""),
         "20.00",
         ""},
        {"an invoice is owed",
         "InvoiceAdd",
         kAbc + line("Invoice", "FREIGHT", "<Amount>30.00</Amount>"),
         "30.00",
         "Shipping Income -30.00; Accounts Receivable 30.00"},
        {"a credit memo is the other way round, goods included",
         "CreditMemoAdd",
         kAbc + line("CreditMemo", "1000001.1", "<Quantity>1</Quantity><Amount>20.00</Amount>"),
         "20.00",
         "Merchandise Sales 20.00; Cost of Goods Sold -8.00; Inventory Asset 8.00; "
         "Accounts Receivable -20.00"},
        {"a journal as it is sent, without regard to case",
         "JournalEntryAdd",
         "<JournalCreditLine>" + ref("AccountRef", "checking") +
             "<Amount>7.00</Amount>"
             "</JournalCreditLine><JournalDebitLine>" +
             ref("AccountRef", "Returns") + "<Amount>7.00</Amount></JournalDebitLine>",
         "7.00",
         "Checking -7.00; Returns 7.00"},
        {"a payment that stays a credit",
         "ReceivePaymentAdd",
         kAbc + "<TotalAmount>12.00</TotalAmount><IsAutoApply>false</IsAutoApply>",
         "12.00",
         "Undeposited Funds 12.00; Accounts Receivable -12.00"},
        {"an order is only kept",
         "PurchaseOrderAdd",
         ref("VendorRef", "ACME") + line("PurchaseOrder", "1", "<Amount>9.00</Amount>"),
         "9.00",
         ""},
        {"a receipt of goods fills the stock",
         "ItemReceiptAdd",
         ref("VendorRef", "ACME") +
             line("Item", "1000001.1", "<Quantity>5</Quantity><Cost>11.00</Cost>"),
         "55.00",
         "Inventory Asset 55.00; Accounts Payable -55.00"},
        {"a vendor credit is the other way round",
         "VendorCreditAdd",
         ref("VendorRef", "ACME") +
             line("Item", "1", "<Quantity>1</Quantity><Amount>6.00</Amount>"),
         "6.00",
         "Inventory Asset -6.00; Accounts Payable 6.00"},
    };
    for (const auto& [given, request, fields, total, bookings] : cases) {
        SCOPED_TRACE(given);
        make(request, fields);
        const TransactionSummary booked = file_.transactions().back();
        EXPECT_EQ(booked.total.text(2), total);
        EXPECT_EQ(bookingsOf(booked), bookings);
    }
    expectSound();
    const Reply item = ask("ItemQuery", "<FullName>1000001.1</FullName>");
    EXPECT_EQ(textsOf(item.body, "QuantityOnHand"), "14");    // 10 - 2 + 1 + 5
    EXPECT_EQ(textsOf(item.body, "AverageCost"), "9.07143");  // (9 * 8 + 55) / 14
    const Reply customer = ask("CustomerQuery", "<FullName>ABC</FullName>");
    EXPECT_EQ(textsOf(customer.body, "Balance"), "-2.00");  // 30 - 20 - 12
    const Reply vendor = ask("VendorQuery", "<FullName>ACME</FullName>");
    EXPECT_EQ(textsOf(vendor.body, "Balance"), "49.00");
}

struct TaxCase {
    const char* given;
    std::string header;
    std::string lines;
    std::string tax;
};

TEST_F(Bookings, computeTaxOnTaxableLines) {
    make("CustomerAdd", "<Name>Exempt</Name>" + ref("SalesTaxCodeRef", "Non"));
    const std::string county = ref("ItemSalesTaxRef", "CA");
    const std::string tax = ref("SalesTaxCodeRef", "Tax");
    const std::string non = ref("SalesTaxCodeRef", "Non");
    const TaxCase cases[] = {
        {"the item's code is taxable",
         county,
         receiptLine("1000001.1", "<Amount>20.00</Amount>"),
         "1.65"},
        {"the line's code goes before the item's",
         county,
         receiptLine("1000001.1", "<Amount>20.00</Amount>" + non),
         "0.00"},
        {"a line made taxable beside one that is not",
         county,
         receiptLine("FREIGHT", "<Amount>10.00</Amount>" + tax) +
             receiptLine("FREIGHT", "<Amount>10.00</Amount>"),
         "0.83"},
        {"the lines together are rounded once, a half goes up",
         county,
         receiptLine("FREIGHT", "<Amount>0.10</Amount>" + tax) +
             receiptLine("FREIGHT", "<Amount>0.50</Amount>" + tax) +
             receiptLine("FREIGHT", "<Amount>5.40</Amount>" + tax),
         "0.50"},
        {"a customer code that is not taxable frees the sale",
         county + ref("CustomerSalesTaxCodeRef", "Non"),
         receiptLine("1000001.1", "<Amount>20.00</Amount>"),
         "0.00"},
        {"the customer's own code counts when the sale has none",
         ref("CustomerRef", "Exempt") + county,
         receiptLine("1000001.1", "<Amount>20.00</Amount>"),
         "0.00"},
        {"the sale's code goes before the customer's",
         ref("CustomerRef", "Exempt") + county + ref("CustomerSalesTaxCodeRef", "Tax"),
         receiptLine("1000001.1", "<Amount>20.00</Amount>"),
         "1.65"},
        {"no tax item, no tax", "", receiptLine("1000001.1", "<Amount>20.00</Amount>"), "0.00"},
        {"the item Non has no rate",
         ref("ItemSalesTaxRef", "Non"),
         receiptLine("1000001.1", "<Amount>20.00</Amount>"),
         "0.00"},
        {"tenders are not taxed",
         county,
         receiptLine("1000001.1", "<Amount>20.00</Amount>") +
             receiptLine("0011", "<Amount>10.00</Amount>" + tax),
         "1.65"},
    };
    for (const auto& [given, header, lines, expected] : cases) {
        SCOPED_TRACE(given);
        const std::string record = make("SalesReceiptAdd", header + lines);
        EXPECT_EQ(textsOf(record, "SalesTaxTotal"), expected);
        EXPECT_EQ(file_.transactions().back().tax.text(2), expected);
    }
    expectSound();
}

struct AmountCase {
    const char* given;
    const char* fields;
    const char* rate;
    const char* amount;
};

TEST_F(Bookings, deriveWhatALineLeavesOut) {
    const AmountCase cases[] = {
        {"nothing but the item", "", "5.00", "5.00"},
        {"quantity alone", "<Quantity>2.5</Quantity>", "5.00", "12.50"},
        {"rate and quantity", "<Quantity>3</Quantity><Rate>0.335</Rate>", "0.335", "1.01"},
        {"quantity and amount", "<Quantity>3</Quantity><Amount>10.00</Amount>", "3.33333", "10.00"},
        {"amount alone", "<Amount>97</Amount>", "", "97.00"},
    };
    for (const auto& [given, fields, rate, amount] : cases) {
        SCOPED_TRACE(given);
        const std::string record = make("SalesReceiptAdd", receiptLine("FREIGHT", fields));
        EXPECT_EQ(textsOf(record, "Rate"), rate);
        EXPECT_EQ(textsOf(record, "Amount"), amount);
    }
}

TEST_F(Bookings, ofOpeningFiguresStandWithTheEntry) {
    make("CustomerAdd", "<Name>Old</Name><OpenBalance>50.00</OpenBalance>");
    EXPECT_EQ(
        bookingsOf(file_.transactions().back()),
        "Accounts Receivable 50.00; Uncategorized Income -50.00"
    );
    make(
        "VendorAdd",
        "<Name>Supplier</Name><OpenBalance>20.00</OpenBalance>"
        "<OpenBalanceDate>2015-01-02</OpenBalanceDate>"
    );
    EXPECT_EQ(
        bookingsOf(file_.transactions().back()),
        "Accounts Payable -20.00; Uncategorized Expenses 20.00"
    );
    EXPECT_EQ(file_.transactions().back().date, "2015-01-02");
    make(
        "AccountAdd",
        "<Name>Loan</Name><AccountType>LongTermLiability</AccountType>"
        "<OpenBalance>99.00</OpenBalance>"
    );
    EXPECT_EQ(bookingsOf(file_.transactions().back()), "Loan -99.00; Opening Balance Equity 99.00");
    expectSound();
}

TEST_F(Bookings, ofPaymentsSettleInvoicesUpToTheirAmount) {
    const auto invoice = [&](const char* amount) {
        return textsOf(
            make(
                "InvoiceAdd",
                kAbc + line("Invoice", "FREIGHT", std::string("<Amount>") + amount + "</Amount>")
            ),
            "TxnID"
        );
    };
    const auto pay = [&](const std::string& amount, const std::string& how) {
        return send("ReceivePaymentAdd", kAbc + "<TotalAmount>" + amount + "</TotalAmount>" + how);
    };
    const auto told = [](const std::string& txnId, const std::string& amount) {
        return "<AppliedToTxnAdd><TxnID>" + txnId + "</TxnID><PaymentAmount>" + amount +
               "</PaymentAmount></AppliedToTxnAdd>";
    };
    // Given
    const std::string first = invoice("30.00");
    const std::string second = invoice("20.00");
    // When
    const Reply tooMuch = pay("40.00", told(first, "30.01"));
    const Reply exact = pay("10.00", told(first, "10.00"));
    const Reply automatic = pay("35.00", "<IsAutoApply>true</IsAutoApply>");
    // Then
    EXPECT_EQ(tooMuch.code, 3210);
    EXPECT_EQ(
        tooMuch.message,
        "The \"AppliedToTxnAdd payment amount\" field has an invalid value \"30.01\".  "
        "QuickBooks error message: You cannot pay more than the amount due."
    );
    EXPECT_EQ(textsOf(exact.body, "UnusedPayment"), "0.00");
    EXPECT_EQ(textsOf(automatic.body, "Amount"), "20.00|15.00");
    const Reply open = ask("InvoiceQuery", "<PaidStatus>NotPaidOnly</PaidStatus>");
    EXPECT_EQ(textsOf(open.body, "TxnID"), second);
    EXPECT_EQ(textsOf(open.body, "BalanceRemaining"), "5.00");
    EXPECT_EQ(
        ask("TxnDel", "<TxnDelType>Invoice</TxnDelType><TxnID>" + first + "</TxnID>").code, 3160
    );
    expectSound();
}

TEST_F(Bookings, areTakenBackWithTheirTransaction) {
    // Given
    const auto before = file_.trialBalance();
    const std::string txnId =
        textsOf(make("InvoiceAdd", kAbc + line("Invoice", "1000001.1", "")), "TxnID");
    // When
    const Reply reply =
        ask("TxnDel", "<TxnDelType>Invoice</TxnDelType><TxnID>" + txnId + "</TxnID>");
    // Then
    EXPECT_EQ(reply.code, 0);
    EXPECT_EQ(textsOf(reply.body, "TxnID"), txnId);
    const auto after = file_.trialBalance();
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].debit, after[i].debit) << before[i].account;
    }
    EXPECT_EQ(textsOf(ask("CustomerQuery", "<FullName>ABC</FullName>").body, "Balance"), "0.00");
    EXPECT_EQ(
        ask("TxnDel", "<TxnDelType>Invoice</TxnDelType><TxnID>" + txnId + "</TxnID>").code, 3120
    );
    expectSound();
}

}  // namespace

}  // namespace companyfile
