#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

const std::string kAbc = ref("CustomerRef", "ABC");

class Bookings : public CompanyTest {};

TEST_F(Bookings, followTheItemsAndBalance) {
    for (Case& row : casesOf("bookings.txt")) {
        SCOPED_TRACE(row["given"]);
        make(row["send"], row["fields"]);
        const TransactionSummary booked = file_.transactions().back();
        EXPECT_EQ(booked.total.text(2), row["total"]);
        EXPECT_EQ(bookingsOf(booked), row["bookings"]);
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

TEST_F(Bookings, computeTaxOnTaxableLines) {
    make("CustomerAdd", "<Name>Exempt</Name>" + ref("SalesTaxCodeRef", "Non"));
    for (Case& row : casesOf("sales_tax.txt")) {
        SCOPED_TRACE(row["given"]);
        const std::string record = make("SalesReceiptAdd", row["header"] + row["lines"]);
        EXPECT_EQ(textsOf(record, "SalesTaxTotal"), row["tax"]);
        EXPECT_EQ(file_.transactions().back().tax.text(2), row["tax"]);
    }
    expectSound();
}

TEST_F(Bookings, deriveWhatALineLeavesOut) {
    for (Case& row : casesOf("line_amounts.txt")) {
        SCOPED_TRACE(row["given"]);
        const std::string record =
            make("SalesReceiptAdd", line("SalesReceipt", "FREIGHT", row["fields"]));
        EXPECT_EQ(textsOf(record, "Rate"), row["rate"]);
        EXPECT_EQ(textsOf(record, "Amount"), row["amount"]);
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
    EXPECT_EQ(ask("TxnDel", deletion("Invoice", first)).code, 3160);
    expectSound();
}

TEST_F(Bookings, areTakenBackWithTheirTransaction) {
    // Given
    const auto before = file_.trialBalance();
    const std::string txnId =
        textsOf(make("InvoiceAdd", kAbc + line("Invoice", "1000001.1", "")), "TxnID");
    // When
    const Reply reply = ask("TxnDel", deletion("Invoice", txnId));
    // Then
    EXPECT_EQ(reply.code, 0);
    EXPECT_EQ(textsOf(reply.body, "TxnID"), txnId);
    const auto after = file_.trialBalance();
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].debit, after[i].debit) << before[i].account;
    }
    EXPECT_EQ(textsOf(ask("CustomerQuery", "<FullName>ABC</FullName>").body, "Balance"), "0.00");
    EXPECT_EQ(ask("TxnDel", deletion("Invoice", txnId)).code, 3120);
    expectSound();
}

}  // namespace

}  // namespace companyfile
