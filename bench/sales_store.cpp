#include "sales_store.h"

#include "config/clsDataPath.h"
#include "core/brvDBSM_Interface.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_SalesHead.h"
#include "platform/ports/platform.h"
#include "time_shares.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

/// A connection whose statements are counted; what it does is the adapter's part of the time.
class CountedConnection : public platform::DataConnection {
public:
    CountedConnection(std::unique_ptr<platform::DataConnection> inner, std::int64_t& statements)
        : inner_(std::move(inner)),
          statements_(statements) {}

    void open(const platform::ConnectionSettings& settings) override { inner_->open(settings); }
    [[nodiscard]] bool isOpen() const override { return inner_->isOpen(); }
    void close() override { inner_->close(); }
    void execute(std::string_view statement) override {
        const Inside<Place::adapter> inside;
        ++statements_;
        inner_->execute(statement);
    }
    std::unique_ptr<platform::RowSet> openRowSet(std::string_view statement) override {
        const Inside<Place::adapter> inside;
        ++statements_;
        return inner_->openRowSet(statement);
    }

private:
    std::unique_ptr<platform::DataConnection> inner_;
    std::int64_t& statements_;
};

}  // namespace

SalesStore::SalesStore(testing_support::StoreAdapter adapter, std::int32_t sales)
    : adapter_(std::move(adapter)),
      catalog_(adapter_.newCatalogName()),
      settings_(folder_.str() + "/settings.ini") {
    install();
    open();
    fill(sales);
    statements = 0;
}

SalesStore::~SalesStore() {
    db::resetEngine();
    adapter_.dropCatalog(catalog_);
}

void SalesStore::install() {
    platform::Platform adapters;
    adapters.settings = &settings_;
    adapters.files = &files_;
    adapters.processes = &processes_;
    adapters.clock = &clock_;
    adapters.desktop = &desktop_;
    adapters.makeConnection = [this] {
        return std::make_unique<CountedConnection>(
            adapter_.makeConnection(folder_.str()), statements
        );
    };
    adapters.makeManagement = [this] { return adapter_.makeManagement(folder_.str()); };
    platform::install(std::move(adapters));
    gDataPath.DataPath = folder_.str();
}

void SalesStore::open() {
    settings_.save(db::kSettingsApplication, db::kSettingsSection, "Server", adapter_.server);
    settings_.save(db::kSettingsApplication, db::kSettingsSection, "DBName", catalog_);
    adapter_.makeCatalog(folder_.str(), catalog_);
    std::string message;
    gfbDB_Connect(message);
    db::bindCommon();
    gCommon.StoreNumber = 1;
    gfiDB_Operation(db::tableCommon, db::opInsert, 0);
    db_fbInterface_open();
    if (db_fbAllTables_open() == kNo) {
        throw std::runtime_error("the store does not open");
    }
}

void SalesStore::fill(std::int32_t sales) {
    constexpr std::int32_t kStride = 7919;  // a prime that no count of sales holds
    db::connection().execute("BEGIN TRANSACTION");
    for (std::int32_t number = 0; number < sales; ++number) {
        const std::int32_t sale =
            static_cast<std::int32_t>(std::int64_t{number} * kStride % sales) + 1;
        std::string invoice = std::to_string(sale);
        invoice.insert(0, 7 - invoice.size(), '0');
        gSalesHead = db::SalesHeadRecord();
        gSalesHead.SALEID = sale;
        gSalesHead.HubUID = sale;
        gSalesHead.Store = 1;
        gSalesHead.Invoice = invoice;
        gSalesHead.SaleDate = "20150110";
        gSalesHead.time = 1405;
        gSalesHead.Scode = "AB";
        gSalesHead.ARCode = "SMITH";
        gSalesHead.TotalSale = util::Money::fromRaw(10'8213 + sale);
        gSalesHead.SubTotal = util::Money::fromRaw(10'0900);
        gSalesHead.Taxes = 1;
        gSalesHead.TaxRate1 = 7.25F;
        gSalesHead.TaxAmount1 = gSalesHead.SubTotal;
        gSalesHead.TaxTax1 = util::Money::fromRaw(7313);
        gSalesHead.Tenders = 1;
        gSalesHead.TendType1 = 2;
        gSalesHead.TendAmount1 = gSalesHead.TotalSale;
        gSalesHead.TendRef1 = "XXXX-1881";
        gSalesHead.Taxed = "Y";
        if (gfiDB_Operation(db::tableSalesHead, db::opInsert, 0) == kNo) {
            throw std::runtime_error("sale " + invoice + " was refused");
        }
    }
    db::connection().execute("COMMIT TRANSACTION");
}

bool SalesStore::first() {
    gSalesHead.Invoice = "0000000";
    return gfiDB_Operation(db::tableSalesHead, db::opGreaterEqual, db::keySalesHeadInvoice) != kNo;
}

bool SalesStore::next() {
    return gfiDB_Operation(db::tableSalesHead, db::opGetNext, db::keySalesHeadInvoice) != kNo;
}

std::int64_t SalesStore::walk() {
    std::int64_t sales = 0;
    for (bool found = first(); found; found = next()) {
        ++sales;
    }
    return sales;
}

}  // namespace bench
