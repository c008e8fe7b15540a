#pragma once

#include "platform/ports/data.h"
#include "platform/ports/management.h"
#include "util/legacy_bool.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The one connection to the store's database: finding the server, deciding on the catalog, making
/// sure that it exists.

/// Catalog in use.
extern std::string DBName;
/// Server, as "host" or "host\instance"; "embedded" for the embedded store.
extern std::string DBServerName;
extern std::string DBUserName;
extern std::string DBPassword;
/// Connect by the system's own login to the local server.
extern LegacyBool DBIntegrated;
/// The data connection is open.
extern LegacyBool DBConnected;
/// Last failure: 1 a statement on an open connection, 2 the connection is not open, 3 a statement
/// of gfiDB_ExecuteSQL or gfbDB_OpenBySQL.
extern std::int16_t DBFailureKind;
/// Switches of the engine that this program leaves off: training catalog, own local database,
/// remote copy, creation of a missing catalog, the conversion tool.
extern LegacyBool DBTrainingMode;
extern LegacyBool DBLocalMode;
extern LegacyBool DBRemoteMode;
extern LegacyBool DBAllowCreate;
extern LegacyBool DBConvertRun;
/// The management session and the data connection, for the life of the program.
extern std::unique_ptr<platform::ManagementSession> DBServerSession;
extern std::unique_ptr<platform::DataConnection> DBConnection;

/// Prepares the engine, connects the management session and makes sure of the catalog. Ends the
/// program when the settings name no server (in silence) or the catalog is missing (with a box); a
/// server that does not answer is told in a box, and the program goes on.
/// @param message  text of a failure.
/// @return kYes.
LegacyBool gfbDB_Connect(std::string& message);
/// Reads the settings ("NUV Settings", "DATABASE"), runs the configuration program when they name
/// no server, and connects the management session. A failure is told in a box titled "NUV MSDE".
LegacyBool gfbDB_ConnectServer();
/// Decides the catalog's name and looks for the catalog on the server.
LegacyBool gfbDB_DatabaseExists();
/// Makes or attaches the catalog. Ends the program when making one is not allowed here.
LegacyBool gfbDB_CreateDatabase();
/// Highest number behind "NUVDATA" among the server's catalogs, as text; "0" when there is none.
std::string gfiDB_NextDataSuffix();
/// Opens the data connection; `DBConnected` and `DBFailureKind` tell how it went.
/// @param catalog  filled with `DBName` when empty.
void gpDB_OpenConnection(std::string& catalog);
/// Runs one statement. @return 0, or the error's number; a failure is also written to "PVSW.log" of
/// the data folder and told in a box.
std::int32_t gfiDB_ExecuteSQL(const std::string& statement);

namespace db {

/// Application and section of the database settings.
inline constexpr char kSettingsApplication[] = "NUV Settings";
inline constexpr char kSettingsSection[] = "DATABASE";
/// Catalog of a station that works on a database of its own, or on the remote copy.
inline constexpr char kRemoteCatalog[] = "NUVRemote";

/// True for such a station.
bool worksLocally();

/// Opens the data connection when it is not open; `DBConnected` follows its state.
/// @return whether it is open now. Nothing is shown.
bool ensureConnected();
/// The data connection's object. @throws platform::PlatformError 91 when there is none yet.
platform::DataConnection& connection();
/// Appends a line to the start-up trace "52.txt" of the program folder, which its owner alone may
/// read (it holds the login). A failure is passed over.
void traceStart(std::string_view line);
/// Writes a failed statement to "PVSW.log", sets `DBFailureKind` to 3 and shows the box.
void reportFailedStatement(const std::string& statement, const platform::PlatformError& error);
/// Puts the connection's state back to its start.
void resetConnection();

}  // namespace db
