#include "db/connection.h"

#include "config/clsDataPath.h"
#include "config/clsINI_Services.h"
#include "config/nuvDataPath_Ops.h"
#include "core/brvDBSM_Interface.h"
#include "core/brv_op.h"
#include "core/sm_Shell.h"
#include "platform/ports/platform.h"
#include "util/basic_error.h"
#include "util/conversions.h"

std::string DBName;
std::string DBServerName;
std::string DBUserName;
std::string DBPassword;
LegacyBool DBIntegrated = kNo;
LegacyBool DBConnected = kNo;
std::int16_t DBFailureKind = 0;
LegacyBool DBTrainingMode = kNo;
LegacyBool DBLocalMode = kNo;
LegacyBool DBRemoteMode = kNo;
LegacyBool DBAllowCreate = kNo;
LegacyBool DBConvertRun = kNo;
std::unique_ptr<platform::ManagementSession> DBServerSession;
std::unique_ptr<platform::DataConnection> DBConnection;

namespace {

constexpr int kConnectTimeoutSeconds = 25;
constexpr int kLoginTimeoutSeconds = 120;
constexpr int kServerRuns = 1;
constexpr int kBadCall = 5;
constexpr int kNoObject = 91;
constexpr std::int16_t kStatementFailed = 1;
constexpr std::int16_t kNotOpen = 2;
constexpr std::int16_t kDirectStatementFailed = 3;
constexpr char kDefaultLogin[] = "qz";
constexpr char kOwnInstance[] = "\\NUVSERVER";
constexpr char kConfigurationProgram[] = "NUVDataConfiguration.exe";

/// The management session has reached its server.
bool& hasServer() {
    static bool has = false;
    return has;
}

std::string setting(const std::string& key, const std::string& defaultValue = {}) {
    return platform::settings().get(
        db::kSettingsApplication, db::kSettingsSection, key, defaultValue
    );
}

bool isBlank(const std::string& text) {
    return util::trim(text).empty();
}

/// Lets the operator configure the connection, and reads the server's name anew.
void configure() {
    gpProgram_Run(platform::files().programFolder(), kConfigurationProgram, {});
    DBServerName = setting("Server");
}

/// Name of the start-up trace; the file is made when it is missing.
std::string readyTrace() {
    platform::FilePort& files = platform::files();
    std::string file = files.traceFolder() + "\\52.txt";
    if (!files.fileExists(file)) {
        files.truncate(file, true);
    }
    return file;
}

std::string chosenCatalog() {
    if (DBTrainingMode != kNo) {
        return setting("TrainingDB");
    }
    return db::worksLocally() ? db::kRemoteCatalog : setting("DBName");
}

void keepLocalServer() {
    const char* key = DBLocalMode != kNo ? "SERVERNAMELOCAL" : "SERVERNAME";
    gIni.WriteData(db::kSettingsSection, key, DBServerName);
}

void readSettings() {
    platform::ignoringErrors([] { readyTrace(); });
    DBServerName = setting("Server");
    if (isBlank(DBServerName)) {
        configure();
    }
    if (isBlank(DBServerName)) {
        gpApp_end();  // Kept: the one end without a word; the configuration has told the operator
    }
    DBName = chosenCatalog();
    DBPassword = util::trim(setting("Password"));
    DBUserName = setting("UserName", kDefaultLogin);
    db::traceStart(DBName);
    if (db::worksLocally()) {
        DBServerName = gfsComputer_name() + kOwnInstance;
        db::traceStart(DBServerName);
        keepLocalServer();
    }
}

/// Sets this computer's clock by the server's host, when that is another machine.
void followServerClock() {
    const std::size_t end = DBServerName.find('\\');
    if (end == std::string::npos) {
        throw util::BasicError::of(kBadCall);  // Kept: a server without an instance has no host
    }
    const std::string host = DBServerName.substr(0, end);
    db::traceStart("Server Name = " + host);
    if (!util::sameName(host, gfsComputer_name())) {
        // A system that cannot set its clock this way keeps its own time.
        platform::ignoringErrors([&] {
            platform::processes().runHidden("NET time \\\\" + host + " /set /Y");
        });
    }
    db::traceStart("Time verified");
}

void connectServer() {
    readSettings();
    db::traceStart("Servername = " + DBServerName);
    db::traceStart("set Server ");
    hasServer() = false;
    DBServerSession = platform::current().makeManagement();
    db::traceStart("Server set ");
    db::traceStart("Connect now " + DBServerName + " " + DBUserName + " " + DBPassword);
    DBServerSession->connect(DBServerName, DBUserName, DBPassword, DBIntegrated != kNo);
    hasServer() = true;
    platform::desktop().pendingEvents();
    DBServerSession->setLoginTimeout(kLoginTimeoutSeconds);
    const int status = DBServerSession->status();
    db::traceStart("Server Status = " + std::to_string(status));
    if (status == kServerRuns) {
        if (db::worksLocally()) {
            keepLocalServer();
        }
        followServerClock();
    }
}

void showServerError(const std::string& description, int number) {
    platform::desktop().messageBox(
        description + std::to_string(number),
        "NUV MSDE",
        platform::BoxButtons::ok,
        platform::BoxIcon::error
    );
}

platform::ConnectionSettings connectionSettings(const std::string& catalog) {
    platform::ConnectionSettings settings;
    settings.timeoutSeconds = kConnectTimeoutSeconds;
    settings.initialCatalog = catalog;
    if (DBIntegrated != kNo) {
        settings.dataSource = "(local)";
        settings.integratedSecurity = true;
    } else {
        settings.dataSource = DBServerName;
        settings.userId = DBUserName;
        settings.password = DBPassword;
    }
    return settings;
}

bool isConnectionOpen() {
    return DBConnection != nullptr && DBConnection->isOpen();
}

}  // namespace

namespace db {

bool worksLocally() {
    return DBLocalMode != kNo || DBRemoteMode != kNo;
}

platform::DataConnection& connection() {
    if (!DBConnection) {
        throw platform::PlatformError(kNoObject, util::BasicError::of(kNoObject).what());
    }
    return *DBConnection;
}

bool ensureConnected() {
    DBConnected = legacyBool(isConnectionOpen());
    if (DBConnected == kNo) {
        std::string catalog;
        gpDB_OpenConnection(catalog);
    }
    return DBConnected != kNo;
}

void traceStart(std::string_view line) {
    platform::ignoringErrors([&] {
        platform::files().append(readyTrace(), std::string(line) + "\r\n");
    });
}

void reportFailedStatement(const std::string& statement, const platform::PlatformError& error) {
    DBFailureKind = kDirectStatementFailed;
    platform::ignoringErrors([&] {
        platform::files().append(
            gDataPath.DataPath + "\\PVSW.log",
            platform::processes().programName() + " [EXE FAIL]" + std::to_string(error.number()) +
                " Description: " + error.description() + " Source: " + error.source() + "\r\n" +
                statement + "\r\n"
        );
    });
    core::showMessage("An error occurred in executing SQL. View PVSW.log in datapath for details.");
}

void resetConnection() {
    hasServer() = false;
    DBConnection.reset();
    DBServerSession.reset();
    DBFailureKind = 0;
    for (LegacyBool* flag :
         {&DBIntegrated,
          &DBConnected,
          &DBTrainingMode,
          &DBLocalMode,
          &DBRemoteMode,
          &DBAllowCreate,
          &DBConvertRun}) {
        *flag = kNo;
    }
    for (std::string* text : {&DBName, &DBServerName, &DBUserName, &DBPassword}) {
        text->clear();
    }
}

}  // namespace db

LegacyBool gfbDB_Connect(std::string& message) {
    message.clear();
    gfbDB_ConnectServer();
    // Without a server there is no catalog to look for: the program goes on, and each opening of a
    // table tries the connection again.
    if (hasServer() && gfbDB_DatabaseExists() == kNo) {
        db::traceStart("Database Create");
        if (gfbDB_CreateDatabase() == kNo) {
            message = "DataBase Create failed call Support";
            core::showMessage(message);
            gpApp_end();
        }
    }
    return kYes;
}

LegacyBool gfbDB_ConnectServer() {
    try {
        connectServer();
        return kYes;
    } catch (const platform::PlatformError& error) {
        showServerError(error.description(), error.number());
    } catch (const util::BasicError& error) {
        showServerError(error.what(), error.number());
    }
    return kNo;
}

void gpDB_OpenConnection(std::string& catalog) {
    if (catalog.empty()) {
        catalog = DBName;
    }
    try {
        if (!DBConnection) {
            DBConnection = platform::current().makeConnection();
        }
        DBConnection->open(connectionSettings(catalog));
    } catch (const platform::PlatformError& error) {
        static_cast<void>(error);  // the caller reports
        DBFailureKind = isConnectionOpen() ? kStatementFailed : kNotOpen;
    }
    DBConnected = legacyBool(isConnectionOpen());
}

std::int32_t gfiDB_ExecuteSQL(const std::string& statement) {
    try {
        db::connection().execute(statement);
        return 0;
    } catch (const platform::PlatformError& error) {
        db::reportFailedStatement(statement, error);
        return error.number();
    }
}
