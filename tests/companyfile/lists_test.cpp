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
    /// Asks the queries of a table and compares the texts of `element` in their answers.
    void expectFound(const std::string& table, const std::string& element) {
        for (Case& row : casesOf(table)) {
            SCOPED_TRACE(row["given"]);
            const Reply reply = ask(row["query"], row["fields"]);
            EXPECT_EQ(std::to_string(reply.code), row["code"]);
            EXPECT_EQ(textsOf(reply.body, element), row["found"]);
        }
    }
};

TEST_F(EntryLists, areSearchedWithoutCaseInTheOrderOfNames) {
    make("CustomerAdd", "<Name>abb</Name><IsActive>false</IsActive>");
    make("CustomerAdd", "<Name>ABCE</Name><OpenBalance>10.00</OpenBalance>");
    make("CustomerAdd", "<Name>Job</Name><ParentRef><FullName>ABC</FullName></ParentRef>");
    expectFound("list_queries.txt", "Name");
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

TEST_F(EntryLists, refuseModifiesThatWouldHarmThem) {
    make("CustomerAdd", "<Name>Job</Name><ParentRef><FullName>ABC</FullName></ParentRef>");
    const std::string keys = keysOf("ABC");
    const std::string before = file_.dump();
    for (Case& row : casesOf("refused_modifies.txt")) {
        SCOPED_TRACE(row["given"]);
        const Reply reply = send("CustomerMod", keys + row["fields"]);
        EXPECT_EQ(std::to_string(reply.code), row["code"]);
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
    expectFound("ticket_queries.txt", "RefNumber");
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
