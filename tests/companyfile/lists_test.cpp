#include "companyfile/company_fixture.h"

namespace companyfile {

namespace {

class EntryLists : public CompanyTest {
protected:
    std::string idOf(const std::string& query, const std::string& name) {
        const Reply reply = ask(query, "<FullName>" + name + "</FullName>");
        return textsOf(reply.body.substr(0, reply.body.find("<TimeCreated>")), "ListID");
    }
    /// ListID and EditSequence of a customer, as a modify wants them.
    std::string keysOf(const std::string& customer) {
        const Reply reply = ask("CustomerQuery", "<FullName>" + customer + "</FullName>");
        return "<ListID>" + idOf("CustomerQuery", customer) + "</ListID><EditSequence>" +
               textsOf(reply.body, "EditSequence") + "</EditSequence>";
    }
};

struct QueryCase {
    const char* given;
    const char* query;
    const char* fields;
    int code;
    const char* names;
};

TEST_F(EntryLists, areSearchedWithoutCaseInTheOrderOfNames) {
    make("CustomerAdd", "<Name>abb</Name><IsActive>false</IsActive>");
    make("CustomerAdd", "<Name>ABCE</Name><OpenBalance>10.00</OpenBalance>");
    make("CustomerAdd", "<Name>Job</Name><ParentRef><FullName>ABC</FullName></ParentRef>");
    const QueryCase cases[] = {
        {"a beginning finds the exact name first",
         "CustomerQuery",
         "<NameFilter><MatchCriterion>StartsWith</MatchCriterion><Name>abc</Name></NameFilter>",
         0,
         "ABC|Job|ABCD|ABCE"},
        {"an end",
         "CustomerQuery",
         "<NameFilter><MatchCriterion>EndsWith</MatchCriterion><Name>D</Name></NameFilter>",
         0,
         "ABCD"},
        {"a part in the middle",
         "CustomerQuery",
         "<NameFilter><MatchCriterion>Contains</MatchCriterion><Name>bc:j</Name></NameFilter>",
         0,
         "Job"},
        {"nobody",
         "CustomerQuery",
         "<NameFilter><MatchCriterion>StartsWith</MatchCriterion><Name>Z</Name></NameFilter>",
         1,
         ""},
        {"those who are away",
         "CustomerQuery",
         "<ActiveStatus>InactiveOnly</ActiveStatus>",
         0,
         "abb"},
        {"without a condition all who are there", "CustomerQuery", "", 0, "ABC|Job|ABCD|ABCE"},
        {"the first two",
         "CustomerQuery",
         "<MaxReturned>2</MaxReturned><ActiveStatus>All</ActiveStatus>",
         0,
         "abb|ABC"},
        {"by balance",
         "CustomerQuery",
         "<TotalBalanceFilter><Operator>GreaterThanEqual</Operator><Amount>10.00</Amount>"
         "</TotalBalanceFilter>",
         0,
         "ABCE"},
        {"by full name, the away included",
         "CustomerQuery",
         "<FullName>abc:job</FullName><FullName>ABB</FullName>",
         0,
         "Job|abb"},
        {"a name that nobody has brings the others and a warning",
         "CustomerQuery",
         "<FullName>Nobody</FullName><FullName>ABC</FullName>",
         500,
         "ABC"},
        {"a vendor is no customer", "CustomerQuery", "<FullName>ACME</FullName>", 500, ""},
        {"a range of names",
         "CustomerQuery",
         "<NameRangeFilter><FromName>abcd</FromName><ToName>abcd</ToName></NameRangeFilter>",
         0,
         "ABCD"},
        {"a range the wrong way round",
         "CustomerQuery",
         "<NameRangeFilter><FromName>b</FromName><ToName>a</ToName></NameRangeFilter>",
         3031,
         ""},
        {"dates the wrong way round",
         "CustomerQuery",
         "<FromModifiedDate>2015-02-01</FromModifiedDate>"
         "<ToModifiedDate>2015-01-01</ToModifiedDate>",
         3030,
         ""},
        {"an id that nobody has", "CustomerQuery", "<ListID>FFFF-1</ListID>", 3120, ""},
        {"accounts by type",
         "AccountQuery",
         "<AccountType>AccountsPayable</AccountType>",
         0,
         "Accounts Payable"},
        {"items of all kinds",
         "ItemQuery",
         "<NameFilter><MatchCriterion>StartsWith</MatchCriterion><Name>0</Name></NameFilter>"
         "<IncludeRetElement>Name</IncludeRetElement>",
         0,
         "0011|0012|0013|0014|0015|0016|0017|0018|0019|0020|0021|0022|0023|0024|0025|0026|0027|"
         "0028|0029|0099|0100|0200|0300|0400|0500|0600|0700"},
        {"terms of both lists", "TermsQuery", "<FullName>net 45</FullName>", 0, "Net 45"},
    };
    for (const auto& [given, query, fields, code, names] : cases) {
        SCOPED_TRACE(given);
        const Reply reply = ask(query, fields);
        EXPECT_EQ(reply.code, code);
        EXPECT_EQ(textsOf(reply.body, "Name"), names);
    }
}

TEST_F(EntryLists, changeOnlyWhatAModifySends) {
    make(
        "CustomerAdd",
        "<Name>Mod</Name><CompanyName>Old</CompanyName><BillAddress><Addr1>1</Addr1>"
        "<City>Town</City></BillAddress><Phone>555</Phone>"
    );
    // When
    const std::string stale = keysOf("Mod");
    const Reply changed = send(
        "CustomerMod",
        stale + "<Name>Modern</Name><CompanyName/><BillAddress><Addr1>2</Addr1><Addr2>b</Addr2>"
                "</BillAddress>"
    );
    const Reply late = send("CustomerMod", stale + "<Name>Late</Name>");
    // Then
    EXPECT_EQ(changed.code, 0) << changed.message;
    const std::string record = ask("CustomerQuery", "<FullName>Modern</FullName>").body;
    EXPECT_EQ(textsOf(record, "CompanyName"), "");
    EXPECT_NE(
        record.find("<BillAddress><Addr1>2</Addr1><Addr2>b</Addr2><City>Town</City>"),
        std::string::npos
    );
    EXPECT_EQ(textsOf(record, "Phone"), "555");
    EXPECT_EQ(late.code, 3200);
    EXPECT_EQ(ask("CustomerQuery", "<FullName>Mod</FullName>").code, 500);
    expectSound();
}

struct ChangeCase {
    const char* given;
    const char* fields;
    int code;
};

TEST_F(EntryLists, refuseModifiesThatWouldHarmThem) {
    make("CustomerAdd", "<Name>Job</Name><ParentRef><FullName>ABC</FullName></ParentRef>");
    const ChangeCase cases[] = {
        {"a name in use", "<Name>ABCD</Name>", 3100},
        {"no name", "<Name/>", 3190},
        {"unknown terms", "<TermsRef><FullName>Never</FullName></TermsRef>", 3140},
        {"a parent that is below it", "<ParentRef><FullName>ABC:Job</FullName></ParentRef>", 3130},
        {"an address of too many lines",
         "<BillAddress><Addr5>5</Addr5><City>C</City><State>S</State><PostalCode>1</PostalCode>"
         "</BillAddress>",
         3210},
    };
    const std::string keys = keysOf("ABC");
    const std::string before = file_.dump();
    for (const auto& [given, fields, code] : cases) {
        SCOPED_TRACE(given);
        EXPECT_EQ(send("CustomerMod", keys + fields).code, code);
    }
    EXPECT_EQ(file_.dump(), before);
}

TEST_F(EntryLists, renameWhatStandsBelow) {
    make("CustomerAdd", "<Name>Job</Name><ParentRef><FullName>ABC</FullName></ParentRef>");
    make("CustomerAdd", "<Name>Room</Name><ParentRef><FullName>ABC:Job</FullName></ParentRef>");
    EXPECT_EQ(send("CustomerMod", keysOf("ABC") + "<Name>XYZ</Name>").code, 0);
    const Reply room = ask("CustomerQuery", "<FullName>xyz:job:room</FullName>");
    EXPECT_EQ(room.code, 0);
    EXPECT_EQ(textsOf(room.body, "Sublevel"), "2");
    expectSound();
}

TEST_F(EntryLists, loseOnlyEntriesThatNothingUses) {
    make("InvoiceAdd", "<CustomerRef><FullName>ABC</FullName></CustomerRef>");
    const auto remove = [&](const std::string& type, const std::string& listId) {
        return ask(
            "ListDel", "<ListDelType>" + type + "</ListDelType><ListID>" + listId + "</ListID>"
        );
    };
    const std::string free = idOf("CustomerQuery", "ABCD");
    EXPECT_EQ(remove("Customer", idOf("CustomerQuery", "ABC")).code, 3160);
    EXPECT_EQ(remove("SalesTaxCode", idOf("SalesTaxCodeQuery", "Tax")).code, 3160);
    EXPECT_EQ(remove("Vendor", free).code, 3120);
    EXPECT_EQ(remove("Customer", "no id").code, 3000);
    const Reply gone = remove("Customer", free);
    EXPECT_EQ(gone.code, 0);
    EXPECT_EQ(textsOf(gone.body, "FullName"), "ABCD");
    EXPECT_EQ(remove("Customer", free).code, 3120);
    EXPECT_EQ(send("VendorAdd", "<Name>ABCD</Name>").code, 0);
    expectSound();
}

struct SearchCase {
    const char* given;
    const char* fields;
    int code;
    const char* references;
};

TEST_F(EntryLists, ofTransactionsAreSearchedByNumberAndDate) {
    const auto receipt = [&](const char* date, const char* reference) {
        make(
            "SalesReceiptAdd",
            std::string("<TxnDate>") + date + "</TxnDate><RefNumber>" + reference +
                "</RefNumber><SalesReceiptLineAdd><Desc>Note</Desc></SalesReceiptLineAdd>"
        );
    };
    receipt("2015-03-02", "0000123");
    receipt("2015-03-01", "A0123");
    receipt("2015-03-03", "0000124");
    make("SalesReceiptAdd", "<TxnDate>2015-03-09</TxnDate><SalesReceiptLineAdd/>");
    const SearchCase cases[] = {
        {"a part of the number, by date",
         "<RefNumberFilter><MatchCriterion>Contains</MatchCriterion><RefNumber>0123</RefNumber>"
         "</RefNumberFilter>",
         0,
         "A0123|0000123"},
        {"the number without case", "<RefNumber>a0123</RefNumber>", 0, "A0123"},
        {"the number with case", "<RefNumberCaseSensitive>a0123</RefNumberCaseSensitive>", 1, ""},
        {"a number that is not there", "<RefNumber>9</RefNumber>", 1, ""},
        {"days",
         "<TxnDateRangeFilter><FromTxnDate>2015-03-02</FromTxnDate>"
         "<ToTxnDate>2015-03-03</ToTxnDate></TxnDateRangeFilter>",
         0,
         "0000123|0000124"},
        {"days the wrong way round",
         "<TxnDateRangeFilter><FromTxnDate>2015-03-03</FromTxnDate>"
         "<ToTxnDate>2015-03-02</ToTxnDate></TxnDateRangeFilter>",
         3030,
         ""},
        {"the next number was given where none was sent",
         "<TxnDateRangeFilter><FromTxnDate>2015-03-09</FromTxnDate></TxnDateRangeFilter>",
         0,
         "125"},
        {"somebody's", "<EntityFilter><FullName>ABC</FullName></EntityFilter>", 1, ""},
        {"a badly formed id", "<TxnID>x</TxnID>", 3000, ""},
        {"an id of nothing", "<TxnID>ABC-1</TxnID>", 3120, ""},
    };
    for (const auto& [given, fields, code, references] : cases) {
        SCOPED_TRACE(given);
        const Reply reply = ask("SalesReceiptQuery", fields);
        EXPECT_EQ(reply.code, code);
        EXPECT_EQ(textsOf(reply.body, "RefNumber"), references);
    }
    const std::string bare = ask("SalesReceiptQuery", "<RefNumber>A0123</RefNumber>").body;
    EXPECT_EQ(bare.find("SalesReceiptLineRet"), std::string::npos);
    const std::string full =
        ask("SalesReceiptQuery",
            "<RefNumber>A0123</RefNumber><IncludeLineItems>true</IncludeLineItems>")
            .body;
    EXPECT_NE(full.find("SalesReceiptLineRet"), std::string::npos);
}

}  // namespace

}  // namespace companyfile
