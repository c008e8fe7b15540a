#include "support/link_fixture.h"

#include "config/clsDataPath.h"
#include "config/clsINI_Services.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_main.h"
#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "platform/ports/platform.h"
#include "platform/qbxml/session_manager.h"
#include "platform/standin/standin_channel.h"
#include "samplestore/store_writer.h"

namespace testing_support {

namespace {

constexpr char kCatalog[] = "NUVDATA1";  // as a sample store names it

}  // namespace

LinkFixture::LinkFixture(StoreAdapter adapter)
    : adapter_(std::move(adapter)),
      settings_(folder_.str() + "/config/brevane/settings.ini"),
      files_(folder_.str() + "/program") {
    install();
}

LinkFixture::~LinkFixture() {
    setup.reset();
    core::resetLink();
    adapter_.dropCatalog(kCatalog);
}

void LinkFixture::install() {
    platform::Platform adapters;
    adapters.settings = &settings_;
    adapters.files = &files_;
    adapters.processes = &processes_;
    adapters.clock = &clock_;
    adapters.desktop = &desktop;
    adapters.makeConnection = [this] {
        return std::make_unique<WatchedConnection>(adapter_.makeConnection(folder()), store);
    };
    adapters.makeManagement = [this] {
        auto management = adapter_.makeManagement(folder());
        management->connect(adapter_.server, "qz", "", false);
        return management;
    };
    adapters.makeSessionManager = [this]() -> std::unique_ptr<platform::IQBSessionManager> {
        return std::make_unique<platform::QbxmlSessionManager>(
            std::make_unique<FaultChannel>(std::make_unique<platform::StandinChannel>(), faults)
        );
    };
    platform::install(std::move(adapters));
}

void LinkFixture::makeStore(int sales, int days) {
    samplestore::Options options;
    options.folder = folder();
    options.sales = sales;
    options.days = days;
    options.seed = 7;
    samplestore::makeStore(options);
    if (!adapter_.isEmbedded()) {
        settings_.save(db::kSettingsApplication, db::kSettingsSection, "Server", adapter_.server);
        desktop.boxes.clear();  // of the connect under the name of the embedded store
    }
    openTables();
}

void LinkFixture::openTables() {
    gbPOExportArmed = kYes;
    gbSalesExportArmed = kYes;
    ASSERT_NE(gfbNUV_DataPath_open(kNo, 0, ""), kNo);
    gsDataPath = gDataPath.DataPath;
    ASSERT_NE(db_fbInterface_open(), kNo);
    ASSERT_NE(db_fbAllTables_open(), kNo);
}

void LinkFixture::openSetup() {
    setup = std::make_unique<frmSetup>();
    desktop.showModeless(*setup);
}

void LinkFixture::restart() {
    setup.reset();
    core::resetLink();
    openTables();
    openSetup();
}

bool LinkFixture::runProgram(const std::function<void(frmSetup&)>& script) {
    setup.reset();
    core::resetLink();
    desktop.boxes.clear();
    desktop.onForm["frmSetup"] = [&script](ui::Form& form) {
        if (script) {
            script(dynamic_cast<frmSetup&>(form));
        }
    };
    try {
        gpMain_start();
    } catch (const platform::ProgramEnd&) {
        return true;
    }
    return false;
}

void LinkFixture::exportChecked(int index) {
    setup->setOn("chkExport", true, index);
    click("Cmdexport");
}

void LinkFixture::click(std::string_view control) {
    setup->raise(control, ui::Signal::click);
}

void LinkFixture::execute(const std::string& statement) {
    DBConnection->execute(statement);
}

void LinkFixture::addSale(const db::SalesHeadRecord& head, std::vector<db::SalesItemRecord> items) {
    gSalesHead = head;
    gSalesHead.SALEID = ++lastSaleId_;
    gSalesHead.HubUID = lastSaleId_;
    gSalesHead.Store = 1;
    if (gSalesHead.SaleDate.isUnset()) {
        gSalesHead.SaleDate = "20150110";
    }
    ASSERT_NE(gfiDB_Operation(db::tableSalesHead, db::opInsert, 0), kNo);
    std::int64_t number = 0;
    for (db::SalesItemRecord& item : items) {
        gSalesItem = item;
        gSalesItem.SaleID = lastSaleId_;
        gSalesItem.LineNum = util::Money::fromWhole(++number);
        gSalesItem.Invoice = head.Invoice.view();
        ASSERT_NE(gfiDB_Operation(db::tableSalesItem, db::opInsert, 0), kNo);
    }
}

std::string LinkFixture::status() {
    return setup->control("LblStatus").caption;
}

std::string LinkFixture::setupValue(const std::string& section, const std::string& key) {
    clsINI_Services ini;
    ini.File(folder() + "\\QBLINK.NUV");
    return ini.getvalue(section, key, "");
}

void LinkFixture::setSetupValue(
    const std::string& section, const std::string& key, const std::string& value
) {
    clsINI_Services ini;
    ini.File(folder() + "\\QBLINK.NUV");
    ASSERT_NE(ini.WriteData(section, key, value), kNo);
}

std::string LinkFixture::fileText(const std::string& name) const {
    return folder_.has(name) ? folder_.read(name) : std::string();
}

std::size_t LinkFixture::logged(std::string_view part) const {
    const std::string log = fileText("QBLINK.LOG");
    std::size_t count = 0;
    for (std::size_t at = log.find(part); at != std::string::npos; at = log.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::vector<companyfile::TransactionSummary> LinkFixture::transactions(std::string_view type
) const {
    std::vector<companyfile::TransactionSummary> found;
    for (auto& transaction : companyfile::CompanyFile::open(companyFile()).transactions()) {
        if (type.empty() || transaction.type == type) {
            found.push_back(std::move(transaction));
        }
    }
    return found;
}

std::string describe(const companyfile::TransactionSummary& transaction) {
    std::string text = transaction.type + " " + transaction.total.text(2);
    if (!transaction.tax.isZero()) {
        text += " tax " + transaction.tax.text(2);
    }
    if (transaction.type == "JournalEntry") {
        for (const companyfile::PostingSummary& posting : transaction.postings) {
            text += " | " + posting.account + " " + (posting.debit - posting.credit).text(2);
        }
        return text;
    }
    for (const companyfile::LineSummary& line : transaction.lines) {
        text += " | " + line.item;
        text += line.quantity.empty() ? "" : " x" + line.quantity;
        text += " " + line.amount.text(2) + " " + line.taxCode;
    }
    return text;
}

}  // namespace testing_support
