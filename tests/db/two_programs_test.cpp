#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/nuvDBSM_SalesHead.h"
#include "db/store_fixture.h"
#include "platform/ports/platform.h"

#include <map>

#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kSales = 30;
constexpr int kLateSales = 120;

std::string invoiceOf(int number) {
    std::string invoice = std::to_string(number);
    return invoice.insert(0, 7 - invoice.size(), '0');
}

/// A till beside the link: sales into the catalog through a connection of its own.
class Till {
public:
    explicit Till(const StoreTest& test, const std::string& folder, const std::string& catalog)
        : connection_(test.GetParam().makeConnection(folder)) {
        connection_->open(test.GetParam().settings(catalog));
    }

    void execute(const std::string& statement) { connection_->execute(statement); }
    void sell(int number) { execute(saleStatement(number)); }
    /// The statement as the suite writes it: every field between the keys is blank or 0.
    static std::string saleStatement(int number) {
        gSalesHead = db::SalesHeadRecord();
        gSalesHead.SALEID = number;
        gSalesHead.HubUID = number;
        gSalesHead.Store = 3;
        gSalesHead.Invoice = invoiceOf(number);
        gSalesHead.SaleDate = "20150110";
        db_pRecord_quote(db::tableSalesHead);
        return "INSERT INTO SalesHead VALUES(" + db_fsRecord_values(db::tableSalesHead) + ")";
    }

private:
    std::unique_ptr<platform::DataConnection> connection_;
};

/// The link and another program of the suite on one catalog.
class TwoPrograms : public StoreTest {
protected:
    /// How often the walk from the first sale to the end meets each invoice.
    static std::map<std::string, int> walk() {
        std::map<std::string, int> met;
        std::string before;
        LegacyBool found =
            gfiDB_Operation(db::tableSalesHead, db::opGetFirst, db::keySalesHeadInvoice);
        while (found != kNo) {
            const std::string invoice = gSalesHead.Invoice.str();
            EXPECT_LT(before, invoice);
            before = invoice;
            ++met[invoice];
            found = gfiDB_Operation(db::tableSalesHead, db::opGetNext, db::keySalesHeadInvoice);
        }
        return met;
    }
};

INSTANTIATE_TEST_SUITE_P(Store, TwoPrograms, ::testing::ValuesIn(storeAdapters()), adapterName);

TEST_P(TwoPrograms, ofWhichOneSellsWhileTheOtherWalks) {
    // Given: a till that waits for the word
    openStore();
    for (int number = 1; number <= kSales; ++number) {
        execute(Till::saleStatement(2 * number));
    }
    endProgram();
    int word[2];
    ASSERT_EQ(pipe(word), 0);
    const pid_t till = fork();
    if (till == 0) {
        close(word[1]);  // a test that ends early ends the till, too
        char go = 0;
        bool isWell = read(word[0], &go, 1) == 1;
        try {
            Till sales(*this, folder.str(), catalogName());
            for (int number = 1; number <= kLateSales; ++number) {
                sales.sell(number <= kSales ? 2 * number - 1 : kSales + number);
            }
        } catch (const platform::PlatformError&) {
            isWell = false;
        }
        _exit(isWell ? 0 : 1);
    }
    std::string message;
    ASSERT_NE(gfbDB_Connect(message), kNo);
    ASSERT_NE(db_fbInterface_open(), kNo);
    ASSERT_NE(db_fbAllTables_open(), kNo);
    // When
    ASSERT_EQ(write(word[1], "g", 1), 1);
    int status = -1;
    bool isSelling = true;
    std::map<std::string, int> met;
    for (int round = 0; isSelling || round == 0; ++round) {
        isSelling = waitpid(till, &status, WNOHANG) == 0;
        met = walk();
        // Then: every walk meets all that was there before it, and nothing twice
        for (int number = 1; number <= kSales; ++number) {
            ASSERT_EQ(met[invoiceOf(2 * number)], 1) << round;
        }
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(met.size(), static_cast<std::size_t>(kSales + kLateSales));
    EXPECT_EQ(desktop.boxTexts(), std::vector<std::string>());
    close(word[0]);
    close(word[1]);
}

/// A connection that waits for nobody.
class HastyConnection : public testing_support::WatchedConnection {
public:
    using WatchedConnection::WatchedConnection;
    void open(const platform::ConnectionSettings& settings) override {
        platform::ConnectionSettings hasty = settings;
        hasty.timeoutSeconds = 0;
        WatchedConnection::open(hasty);
    }
};

using LockedCatalog = TwoPrograms;

INSTANTIATE_TEST_SUITE_P(Store, LockedCatalog, ::testing::ValuesIn(embeddedStore()), adapterName);

TEST_P(LockedCatalog, isReadAndTellsAWriterThatItIsLocked) {
    // Given: a till in the middle of a sale
    platform::current().makeConnection = [this] {
        return std::make_unique<HastyConnection>(GetParam().makeConnection(folder.str()), watch);
    };
    openStore();
    execute(Till::saleStatement(1));
    Till till(*this, folder.str(), catalogName());
    till.execute("BEGIN TRANSACTION");
    till.sell(2);
    // When and then: who reads sees the catalog as it was
    EXPECT_EQ(walk().size(), 1U);
    // When: who writes is told
    const std::string change = "UPDATE Common SET StoreNumber=9";
    EXPECT_EQ(gfiDB_ExecuteSQL(change), 1222);
    gSalesHead.SALEID = 5;
    gSalesHead.Invoice = invoiceOf(5);
    db_pRecord_quote(db::tableSalesHead);
    EXPECT_EQ(gfiDB_Operation(db::tableSalesHead, db::opInsert, 0), kNo);
    EXPECT_THROW(gfiDB_Operation(db::tableSalesHead, db::opUpdate, 0), platform::PlatformError);
    // Then
    EXPECT_TRUE(
        fileText("PVSW.log").find("[EXE FAIL]1222 Description: Lock request time out") !=
        std::string::npos
    ) << fileText("PVSW.log");
    EXPECT_EQ(
        desktop.boxTexts(),
        std::vector<std::string>{
            "An error occurred in executing SQL. View PVSW.log in datapath for details."}
    );
    till.execute("COMMIT TRANSACTION");
    EXPECT_EQ(gfiDB_ExecuteSQL(change), 0);
    EXPECT_EQ(walk().size(), 2U);
}

}  // namespace
