#include "support/link_fixture.h"
#include "util/conversions.h"

#include <set>

namespace {

using testing_support::LinkFixture;
using testing_support::StoreAdapter;

constexpr int kItems = 0;
constexpr int kSales = 3;
constexpr int kCount = 24;
constexpr char kComplete[] = "Sales Files Importing Complete...";

/// A shop of `kCount` sales whose tables lie under an adapter, with its export, from the making of
/// the store to the books. One lives at a time.
class Shop : public LinkFixture {
public:
    explicit Shop(const StoreAdapter& adapter) : LinkFixture(adapter) {
        makeStore(kCount, 2);
        openSetup();
        click("CmdInitialized");
        exportChecked(kItems);
        setup->setOn("chkExport", false, kItems);
    }
    void TestBody() override {}

    void exportSales() { exportChecked(kSales); }
    /// Ends the connection to the server in front of the next statement that begins so.
    void loseServerAt(const std::string& beginning) {
        store.onStatement = [this, beginning](std::string_view statement) {
            if (statement.starts_with(beginning)) {
                store.onStatement = {};
                testing_support::cutConnections(*adapter().at, "NUVDATA1");
            }
        };
    }
    /// All that the books hold, in order.
    [[nodiscard]] std::vector<std::string> books() const {
        std::vector<std::string> texts;
        for (const auto& transaction : transactions()) {
            texts.push_back(transaction.refNumber + " " + testing_support::describe(transaction));
        }
        return texts;
    }
    /// Numbers of the sales in the books.
    [[nodiscard]] std::multiset<std::string> posted() const {
        std::multiset<std::string> numbers;
        for (const std::string_view type : {"SalesReceipt", "Invoice", "CreditMemo"}) {
            for (const auto& transaction : transactions(type)) {
                numbers.insert(transaction.refNumber);
            }
        }
        return numbers;
    }
    /// What the log says of the loss of the server: sales, or the step of the walk.
    [[nodiscard]] std::multiset<std::string> loggedLosses() const {
        constexpr std::string_view kHead = "gpSales_export ";
        std::multiset<std::string> subjects;
        for (const std::string& line : util::split(fileText("QBLINK.LOG"), '\n')) {
            const std::size_t start = line.find(kHead);
            const std::size_t end = line.find(" Error: 11 ");
            if (start != std::string::npos && end != std::string::npos) {
                const std::size_t subject = start + kHead.size();
                subjects.insert(line.substr(subject, end - subject));
            }
        }
        return subjects;
    }
    using LinkFixture::restart;
    using LinkFixture::status;
};

StoreAdapter server() {
    return testing_support::serverStores().front();
}

TEST(ServerExport, booksWhatTheEmbeddedStoreBooks) {
    const auto run = [](const StoreAdapter& adapter) {
        Shop shop(adapter);
        shop.exportSales();
        EXPECT_EQ(shop.status(), kComplete);
        return shop.books();
    };
    const std::vector<std::string> embedded = run(testing_support::embeddedStore().front());
    EXPECT_GT(embedded.size(), 20U);
    EXPECT_EQ(run(server()), embedded);
}

struct LossCase {
    const char* given;
    const char* statement;  ///< beginning of the one that meets it
    bool isOfWalk;
};

TEST(ServerExport, thatLosesItsServerPostsEverySaleOnceOrLogsIt) {
    static constexpr LossCase kCases[] = {
        {"at a step of the walk", "SELECT  TOP 1 * FROM SalesHead", true},
        {"at the lines of a sale", "SELECT TOP 1 * FROM SalesItem", false},
        {"at an item", "SELECT TOP 1 * FROM Inventory WHERE", false},
    };
    std::multiset<std::string> expected;
    {
        Shop whole(server());
        whole.exportSales();
        expected = whole.posted();
    }
    Shop shop(server());
    std::size_t lostSales = 0;
    for (const auto& [given, statement, isOfWalk] : kCases) {
        SCOPED_TRACE(given);
        shop.loseServerAt(statement);
        shop.exportSales();
        EXPECT_EQ(shop.status(), "Exporting Sales Cancelled");
        lostSales += isOfWalk ? 0 : 1;
        EXPECT_EQ(shop.loggedLosses().size() - shop.loggedLosses().count("Get Next"), lostSales);
        shop.restart();
    }
    shop.exportSales();
    EXPECT_EQ(shop.status(), kComplete);

    std::multiset<std::string> seen = shop.loggedLosses();
    seen.erase("Get Next");
    seen.merge(shop.posted());
    EXPECT_EQ(seen, expected);
}

}  // namespace
