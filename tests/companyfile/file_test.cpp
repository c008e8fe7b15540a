#include "companyfile/company_fixture.h"
#include "support/expected_file.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>

#include <sqlite3.h>
#include <sys/resource.h>

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
    /// A copy of the file, with a harm done to it.
    std::string harmed(const std::string& sql, int number) {
        std::string path = (folder_.path() / ("harm" + std::to_string(number) + ".qbw")).string();
        tamper("VACUUM INTO '" + path + "'");
        tamper(sql, path);
        return path;
    }
    void sellOne() {
        make("SalesReceiptAdd", "<RefNumber>1</RefNumber>" + line("SalesReceipt", "1000001.1", ""));
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

TEST_F(File, isForNobodyElse) {
    sellOne();
    for (const char* suffix : {"", "-wal", "-shm"}) {
        const auto rights = std::filesystem::status(path_ + suffix).permissions();
        EXPECT_EQ(rights & std::filesystem::perms::others_all, std::filesystem::perms::none)
            << suffix;
    }
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
    std::string suffix = {};
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
        {"a name that no file can have",
         [](const std::string&) {},
         hresult::kCannotOpen,
         std::string(5000, 'x')},
        {"a link to itself",
         [](const std::string& path) { std::filesystem::create_symlink(path, path); },
         hresult::kCannotOpen},
        {"the first half of one",
         [](const std::string& path) {
             CompanyFile::create(path);
             std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
         },
         hresult::kNotUsable},
        {"one that lacks its last bytes",
         [](const std::string& path) {
             CompanyFile::create(path);
             std::filesystem::resize_file(path, std::filesystem::file_size(path) - 300);
         },
         hresult::kNotUsable},
        {"with an entry that is its own parent",
         copyWith("UPDATE entry SET parent = id WHERE name = 'Cash'"),
         hresult::kNotUsable},
        {"with a balance that is no amount",
         copyWith("UPDATE entry SET balance = 9223372036854775807 WHERE name = 'Cash'"),
         hresult::kNotUsable},
        {"a database of something else",
         copyWith("PRAGMA application_id = 7"),
         hresult::kNotUsable},
        {"made by a newer program", copyWith("PRAGMA user_version = 99"), hresult::kNotUsable},
        {"without a table", copyWith("DROP TABLE entry"), hresult::kNotUsable},
    };
    int number = 0;
    for (const auto& [given, prepare, expected, suffix] : cases) {
        SCOPED_TRACE(given);
        const std::string path =
            (folder_.path() / ("case" + std::to_string(++number) + ".qbw" + suffix)).string();
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

TEST_F(File, tellsWhatIsWrongInIt) {
    sellOne();
    make(
        "JournalEntryAdd",
        "<JournalDebitLine>" + ref("AccountRef", "Returns") +
            "<Amount>7.00</Amount></JournalDebitLine><JournalCreditLine>" +
            ref("AccountRef", "Checking") + "<Amount>7.00</Amount></JournalCreditLine>"
    );
    make("ItemReceiptAdd", ref("VendorRef", "ACME") + line("Item", "1000001.1", ""));
    expectSound();
    int number = 0;
    for (Case& row : casesOf("harms.txt")) {
        SCOPED_TRACE(row["sql"]);
        const std::string path = harmed(row["sql"], ++number);
        std::string findings;
        for (const std::string& each : CompanyFile::open(path).check()) {
            findings += each + "\n";
        }
        EXPECT_NE(findings.find(row["given"]), std::string::npos) << findings;
    }
}

TEST_F(File, doesNotShowWhatItCannotRead) {
    sellOne();
    const char* const cases[] = {
        "UPDATE txn SET type = 'Barter' WHERE id = 2",
        "UPDATE posting SET amount = 9223372036854775807 WHERE txn = 2",
    };
    int number = 0;
    for (const char* sql : cases) {
        SCOPED_TRACE(sql);
        const std::string path = harmed(sql, ++number);
        CompanyFile odd = CompanyFile::open(path);
        EXPECT_EQ(numberOf([&] { odd.dump(); }), hresult::kNotUsable);
        EXPECT_EQ(numberOf([&] { odd.transactions(); }), hresult::kNotUsable);
    }
}

TEST_F(File, withSpoiledBytesIsReadOrRefused) {
    for (int sale = 0; sale < 20; ++sale) {
        sellOne();
    }
    const std::string whole = (folder_.path() / "whole.qbw").string();
    tamper("VACUUM INTO '" + whole + "'");
    const auto size = std::filesystem::file_size(whole);
    std::mt19937 random(1);
    int refused = 0;
    for (int number = 0; number < 60; ++number) {
        SCOPED_TRACE(number);
        const std::string path =
            (folder_.path() / ("spoiled" + std::to_string(number) + ".qbw")).string();
        std::filesystem::copy_file(whole, path);
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(random() % size));
        file << std::string(random() % 3000, static_cast<char>(random()));
        file.close();
        const std::int32_t outcome = numberOf([&] {
            CompanyFile spoiled = CompanyFile::open(path);
            spoiled.check();
            spoiled.trialBalance();
            spoiled.dump();
            spoiled.exchange(documentOf("<ItemQueryRq/><SalesReceiptQueryRq/>"));
        });
        refused += outcome == hresult::kNotUsable ? 1 : 0;
    }
    EXPECT_GT(refused, 10);
    EXPECT_LT(refused, 60);
}

/// A disk on which no file grows beyond some bytes while this lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit full{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
    void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(File, losesNothingOnAFullDisk) {
    const std::string before = file_.dump();
    const std::string fresh = (folder_.path() / "fresh.qbw").string();
    const std::string add = documentOf(
        "<CustomerAddRq><CustomerAdd><Name>Late</Name><CompanyName>" + std::string(41, 'x') +
        "</CompanyName></CustomerAdd></CustomerAddRq>"
    );
    {
        const FullDisk disk(1000);
        EXPECT_NE(numberOf([&] { CompanyFile::create(fresh, "retail"); }), 0);
        EXPECT_NE(numberOf([&] { file_.exchange(add); }), 0);
    }
    EXPECT_FALSE(std::filesystem::exists(fresh));
    EXPECT_EQ(file_.dump(), before);
    EXPECT_EQ(replyIn(file_.exchange(add)).code, 0);
    expectSound();
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
