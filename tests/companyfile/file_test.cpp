#include "companyfile/company_fixture.h"
#include "support/expected_file.h"

#include <filesystem>
#include <fstream>

#include <sqlite3.h>

namespace companyfile {

namespace {

class File : public CompanyTest {
protected:
    /// Runs a statement on the file behind the program's back.
    void tamper(const std::string& sql, const std::string& path = "") {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open((path.empty() ? path_ : path).c_str(), &database), SQLITE_OK);
        char* message = nullptr;
        sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message);
        EXPECT_EQ(message, nullptr) << message;
        sqlite3_free(message);
        sqlite3_close(database);
    }
    void sellOne() {
        make(
            "SalesReceiptAdd",
            "<RefNumber>1</RefNumber><SalesReceiptLineAdd><ItemRef><FullName>1000001.1</FullName>"
            "</ItemRef></SalesReceiptLineAdd>"
        );
    }
    std::int32_t numberOf(const std::function<void()>& call) {
        try {
            call();
        } catch (const CallError& error) {
            EXPECT_FALSE(error.text.empty());
            return error.hresult;
        }
        return 0;
    }
};

TEST_F(File, keepsEverythingWhenItIsOpenedAgain) {
    sellOne();
    const std::string before = file_.dump();
    file_ = CompanyFile::open(path_);
    EXPECT_EQ(file_.dump(), before);
    sellOne();
    expectSound();
    EXPECT_EQ(file_.transactions().back().txnNumber, 3);
}

TEST_F(File, showsEachSessionWhatTheOthersHaveDone) {
    CompanyFile other = CompanyFile::open(path_);
    make("CustomerAdd", "<Name>Fresh</Name>");
    sellOne();
    EXPECT_EQ(other.dump(), file_.dump());
    const std::string taken =
        documentOf("<CustomerAddRq><CustomerAdd><Name>fresh</Name></CustomerAdd></CustomerAddRq>");
    EXPECT_EQ(replyIn(other.exchange(taken)).code, 3100);
}

struct OpenCase {
    const char* given;
    std::function<void(const std::string&)> prepare;
    std::int32_t number;
};

TEST_F(File, isRefusedWithAPlainReasonWhenItCannotBeUsed) {
    const auto write = [](const std::string& text) {
        return [text](const std::string& path) { std::ofstream(path) << text; };
    };
    const auto copyWith = [&](const std::string& sql) {
        return [this, sql](const std::string& path) {
            CompanyFile::create(path);
            tamper(sql, path);
        };
    };
    const OpenCase cases[] = {
        {"missing", [](const std::string&) {}, hresult::kCannotOpen},
        {"a folder",
         [](const std::string& path) { std::filesystem::create_directory(path); },
         hresult::kNotUsable},
        {"empty", write(""), hresult::kNotUsable},
        {"a text", write(std::string(5000, 'x')), hresult::kNotUsable},
        {"a database of something else",
         copyWith("PRAGMA application_id = 7"),
         hresult::kNotUsable},
        {"made by a newer program", copyWith("PRAGMA user_version = 99"), hresult::kNotUsable},
        {"without a table", copyWith("DROP TABLE entry"), hresult::kNotUsable},
    };
    int number = 0;
    for (const auto& [given, prepare, expected] : cases) {
        SCOPED_TRACE(given);
        const std::string path =
            (folder_.path() / ("case" + std::to_string(++number) + ".qbw")).string();
        prepare(path);
        EXPECT_EQ(numberOf([&] { CompanyFile::open(path); }), expected);
    }
    EXPECT_EQ(numberOf([&] { CompanyFile::create(path_); }), hresult::kCannotOpen);
    const std::string fresh = (folder_.path() / "fresh.qbw").string();
    EXPECT_EQ(numberOf([&] { CompanyFile::create(fresh, "bakery"); }), hresult::kCannotOpen);
    EXPECT_FALSE(std::filesystem::exists(fresh));
}

TEST_F(File, isInUseWhileAnotherProgramHoldsIt) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path_.c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    EXPECT_EQ(numberOf([&] { CompanyFile::open(path_); }), hresult::kFileInUse);
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    EXPECT_EQ(numberOf([&] { CompanyFile::open(path_); }), 0);
    sqlite3_close(other);
}

struct FaultCase {
    const char* given;
    Fault fault;
    std::int32_t number;
    bool done;
};

TEST_F(File, failsAtTheExchangeThatWasChosenAndOnlyThere) {
    const FaultCase cases[] = {
        {"notRunning", Fault::notRunning, hresult::kNotRunning, false},
        {"fileInUse", Fault::fileInUse, hresult::kFileInUse, false},
        {"lostBefore", Fault::connectionLostBefore, hresult::kConnectionLost, false},
        {"lostAfter", Fault::connectionLostAfter, hresult::kConnectionLost, true},
        {"slow", Fault::slow, 0, true},
    };
    std::vector<int> waits;
    file_.onSlow([&](int milliseconds) { waits.push_back(milliseconds); });
    for (const auto& [given, fault, number, done] : cases) {
        SCOPED_TRACE(given);
        file_.failAt(2, fault, 30);
        EXPECT_EQ(ask("HostQuery", "").code, 0);
        const std::string add = std::string("<CustomerAddRq><CustomerAdd><Name>") + given +
                                "</Name></CustomerAdd></CustomerAddRq>";
        EXPECT_EQ(numberOf([&] { file_.exchange(documentOf(add)); }), number);
        const Reply found = ask("CustomerQuery", std::string("<FullName>") + given + "</FullName>");
        EXPECT_EQ(found.code, done ? 0 : 500);
    }
    EXPECT_EQ(waits, std::vector<int>{30});
    expectSound();
}

struct Harm {
    const char* sql;
    const char* finding;
};

TEST_F(File, tellsWhatIsWrongInIt) {
    const Harm cases[] = {
        {"UPDATE posting SET amount = amount + 1 WHERE txn = 2 AND position = 1",
         "The debits and credits are not equal in transaction 2."},
        {"UPDATE txn SET total = 1, tax = 5 WHERE id = 2",
         "The lines and the tax do not make the total of transaction 2."},
        {"UPDATE line SET item = 999 WHERE txn = 2",
         "A line names an item that is not there in transaction 2."},
        {"DELETE FROM txn WHERE id = 2", "There are bookings without their transaction 2."},
        {"UPDATE entry SET balance = 7 WHERE name = 'ABC'",
         "The balance of ABC is not the sum of its bookings."},
        {"UPDATE entry SET quantity = 7 WHERE name = '1000001.1'",
         "The stock of 1000001.1 is not the sum of its movements."},
        {"UPDATE entry SET kind = 'Plumber' WHERE name = 'ABCD'", "is of an unknown kind."},
        {"UPDATE txn SET type = 'Barter' WHERE id = 2", "Transaction 2 is of an unknown type."},
        {"UPDATE entry SET name = 'ABC' WHERE name = 'ABCD'", "The name ABC is there twice."},
        {"UPDATE entry SET parent = 999 WHERE name = 'ABC'", "The parent is not there of entry"},
        {"DELETE FROM entry WHERE name = 'Residential'; DELETE FROM entry WHERE name = 'House'",
         "H refers to a SalesRepEntityRef that is not there."},
        {"UPDATE meta SET value = 0 WHERE key = 'transactions'",
         "The counter of transactions is behind transaction 1."},
    };
    sellOne();
    expectSound();
    int number = 0;
    for (const auto& [sql, finding] : cases) {
        SCOPED_TRACE(sql);
        const std::string path =
            (folder_.path() / ("harm" + std::to_string(++number) + ".qbw")).string();
        tamper("VACUUM INTO '" + path + "'");
        tamper(sql, path);
        std::string findings;
        for (const std::string& each : CompanyFile::open(path).check()) {
            findings += each + "\n";
        }
        EXPECT_NE(findings.find(finding), std::string::npos) << findings;
    }
}

TEST_F(File, isShownAsOneText) {
    make(
        "CustomerAdd",
        "<Name>Caf&#233; &quot;Q&quot;</Name><BillAddress><Addr1>1 High St</Addr1></BillAddress>"
        "<TermsRef><FullName>Net 30</FullName></TermsRef>"
    );
    sellOne();
    make(
        "InvoiceAdd",
        "<CustomerRef><FullName>ABC</FullName></CustomerRef>"
        "<TxnDate>2015-02-03</TxnDate><RefNumber>7</RefNumber>"
        "<ItemSalesTaxRef><FullName>CA</FullName></ItemSalesTaxRef>"
        "<InvoiceLineAdd><ItemRef><FullName>1000001.1</FullName></ItemRef>"
        "<Quantity>2</Quantity><Rate>20.00</Rate></InvoiceLineAdd>"
    );
    testing_support::expectFile("companyfile/shop.json", file_.dump());
}

}  // namespace

}  // namespace companyfile
