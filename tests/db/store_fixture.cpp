#include "db/store_fixture.h"

#include "config/clsDataPath.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "db/NuvDBSM_MSDE.h"
#include "db/connection.h"
#include "db/nuvDBSM_Common.h"
#include "db/nuvDBSM_Names.h"
#include "platform/ports/platform.h"

StoreTest::StoreTest()
    : catalogName_(GetParam().newCatalogName()),
      settings_(folder.str() + "/config/brevane/settings.ini"),
      files_(folder.str() + "/program") {
    std::filesystem::create_directories(folder.path() / "program");
    platform::Platform adapters;
    adapters.settings = &settings_;
    adapters.files = &files_;
    adapters.processes = &processes_;
    adapters.clock = &clock_;
    adapters.desktop = &desktop;
    adapters.makeConnection = [this] {
        auto inner = GetParam().makeConnection(folder.str());
        return std::make_unique<testing_support::WatchedConnection>(std::move(inner), watch);
    };
    adapters.makeManagement = [this] {
        auto inner = GetParam().makeManagement(folder.str());
        return std::make_unique<testing_support::WatchedManagement>(std::move(inner), watch);
    };
    platform::install(std::move(adapters));
    setSetting("Server", GetParam().server);
    setSetting("DBName", catalogName_);
    gDataPath.DataPath = folder.str();
    gsDataPath = folder.str();
}

StoreTest::~StoreTest() {
    endProgram();
    config::resetConfig();
    core::resetOp();
    GetParam().dropCatalog(catalogName_);
}

void StoreTest::connect() {
    GetParam().makeCatalog(folder.str(), catalogName_);
    if (!GetParam().isEmbedded()) {
        folder.write(catalogName_ + ".mdf", "");  // as the data folder of a server shows it
    }
    std::string message;
    ASSERT_NE(gfbDB_Connect(message), kNo);
    ASSERT_TRUE(db::ensureConnected());
}

void StoreTest::openStore() {
    connect();
    db::bindCommon();
    gCommon = db::CommonRecord();
    gCommon.StoreNumber = 3;
    ASSERT_NE(gfiDB_Operation(db::tableCommon, db::opInsert, 0), kNo);
    ASSERT_NE(db_fbInterface_open(), kNo);
    ASSERT_NE(db_fbAllTables_open(), kNo);
}

void StoreTest::endProgram() {
    db::resetEngine();
}

bool StoreTest::endsProgram(const std::function<void()>& work) {
    try {
        work();
        return false;
    } catch (const platform::ProgramEnd&) {
        return true;
    }
}

void StoreTest::execute(const std::string& statement) {
    db::connection().execute(statement);
}

std::string StoreTest::query(const std::string& statement) {
    const auto rows = db::connection().openRowSet(statement);
    return rows->recordCount() < 1 ? std::string() : db::statementText(rows->value(0));
}

std::string StoreTest::fileText(const std::string& name) const {
    return folder.has(name) ? folder.read(name) : std::string();
}

void StoreTest::setSetting(const std::string& key, const std::string& value) {
    settings_.save(db::kSettingsApplication, db::kSettingsSection, key, value);
}

void addName(std::int32_t number, const std::string& code, const std::string& lastName) {
    gNames = db::NamesRecord();
    gNames.NameID = number;
    gNames.ARCode = code;
    gNames.LASTNAME = lastName;
    ASSERT_NE(gfiDB_Operation(db::tableNames, db::opInsert, 0), kNo) << code;
}
