#include "platform/odbc/odbc_session.h"

#include "platform/odbc/connection_text.h"
#include "platform/odbc/odbc_api.h"
#include "platform/odbc/odbc_fetch.h"
#include "platform/odbc/odbc_text.h"
#include "platform/sql_dialect/client_row_set.h"
#include "util/text_codec.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

constexpr std::size_t kMessageSize = 2048;
/// Messages that only go along with another one: the statement was ended, the catalog or the
/// language changed.
constexpr std::int32_t kCompanions[] = {0, 3621, 5701, 5703};

bool succeeded(SQLRETURN code) {
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

/// The one environment of the process.
class Environment {
public:
    Environment() {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle_);
        SQLSetEnvAttr(
            handle_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0
        );
    }
    ~Environment() { SQLFreeHandle(SQL_HANDLE_ENV, handle_); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    Environment(Environment&&) = delete;
    Environment& operator=(Environment&&) = delete;
    [[nodiscard]] SQLHENV handle() const { return handle_; }

private:
    SQLHENV handle_ = nullptr;
};

SQLHENV environment() {
    static const Environment kEnvironment;
    return kEnvironment.handle();
}

/// A statement's handle for as long as it is needed.
class StatementHandle {
public:
    explicit StatementHandle(SQLHDBC connection) {
        SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_);
    }
    ~StatementHandle() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }
    StatementHandle(const StatementHandle&) = delete;
    StatementHandle& operator=(const StatementHandle&) = delete;
    StatementHandle(StatementHandle&&) = delete;
    StatementHandle& operator=(StatementHandle&&) = delete;
    [[nodiscard]] SQLHSTMT get() const { return handle_; }

private:
    SQLHSTMT handle_ = nullptr;
};

SQLWCHAR* wide(std::u16string& text) {
    return reinterpret_cast<SQLWCHAR*>(text.data());
}

std::u16string_view received(const SQLWCHAR* text, SQLSMALLINT length, std::size_t capacity) {
    const std::size_t size =
        std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), capacity - 1);
    return {reinterpret_cast<const char16_t*>(text), size};
}

/// The text without the names in brackets that drivers put in front.
std::string withoutPrefixes(std::string text) {
    while (text.starts_with('[') && text.find(']') != std::string::npos) {
        text.erase(0, text.find(']') + 1);
    }
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

std::vector<Diagnostic> diagnostics(SQLSMALLINT type, SQLHANDLE handle) {
    std::vector<Diagnostic> found;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, kMessageSize> text{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    for (SQLSMALLINT record = 1; succeeded(SQLGetDiagRecW(
             type,
             handle,
             record,
             state.data(),
             &native,
             text.data(),
             static_cast<SQLSMALLINT>(text.size()),
             &length
         ));
         ++record) {
        found.push_back(
            {textFromUtf16(received(state.data(), 5, state.size())),
             native,
             withoutPrefixes(textFromUtf16(received(text.data(), length, text.size())))}
        );
    }
    return found;
}

/// The record that tells what happened: the first one that does not merely go along with it.
Diagnostic tellingRecord(const std::vector<Diagnostic>& records) {
    const auto telling = std::find_if(records.begin(), records.end(), [](const Diagnostic& record) {
        return std::find(std::begin(kCompanions), std::end(kCompanions), record.native) ==
               std::end(kCompanions);
    });
    if (telling != records.end()) {
        return *telling;
    }
    return records.empty() ? Diagnostic{"HY000", 0, "The driver does not tell why."}
                           : records.front();
}

}  // namespace

std::vector<std::string> installedDrivers() {
    std::vector<std::string> names;
    std::array<SQLWCHAR, 256> name{};
    std::array<SQLWCHAR, 256> attributes{};
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributesLength = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (succeeded(SQLDriversW(
        environment(),
        direction,
        name.data(),
        static_cast<SQLSMALLINT>(name.size()),
        &nameLength,
        attributes.data(),
        static_cast<SQLSMALLINT>(attributes.size()),
        &attributesLength
    ))) {
        names.push_back(textFromUtf16(received(name.data(), nameLength, name.size())));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

OdbcSession::OdbcSession(
    const ServerKind& kind,
    std::string source,
    const std::string& connectionText,
    int timeoutSeconds
)
    : kind_(kind),
      source_(std::move(source)) {
    SQLAllocHandle(SQL_HANDLE_DBC, environment(), &connection_);
    setAttribute(SQL_ATTR_LOGIN_TIMEOUT, static_cast<std::uintptr_t>(timeoutSeconds));
    std::u16string text = utf16FromUtf8(connectionText);
    const SQLRETURN code = SQLDriverConnectW(
        connection_,
        nullptr,
        wide(text),
        static_cast<SQLSMALLINT>(text.size()),
        nullptr,
        0,
        nullptr,
        SQL_DRIVER_NOPROMPT
    );
    isConnected_ = succeeded(code);
    if (!isConnected_) {
        const Diagnostic cause = tellingRecord(diagnostics(SQL_HANDLE_DBC, connection_));
        close();
        throw errorOf(cause);
    }
}

OdbcSession::~OdbcSession() {
    close();
}

void OdbcSession::close() {
    if (isConnected_) {
        SQLDisconnect(connection_);
    }
    isConnected_ = false;
    if (connection_ != nullptr) {
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    }
    connection_ = nullptr;
}

void OdbcSession::setAttribute(std::int32_t attribute, std::uintptr_t value) {
    // The interface takes numbers in the place of a pointer.
    auto* const number = reinterpret_cast<SQLPOINTER>(value);  // NOLINT(performance-no-int-to-ptr)
    SQLSetConnectAttr(connection_, attribute, number, SQL_IS_UINTEGER);
}

/// Drivers tell in one of three ways that the server is gone.
bool OdbcSession::meansLoss(const Diagnostic& diagnostic) const {
    if (diagnostic.state.starts_with("08") || diagnostic.state.starts_with("57P")) {
        return true;
    }
    SQLUINTEGER isDead = SQL_CD_FALSE;
    SQLGetConnectAttr(connection_, SQL_ATTR_CONNECTION_DEAD, &isDead, 0, nullptr);
    return isDead == SQL_CD_TRUE;
}

PlatformError OdbcSession::failure(std::int16_t handleType, void* handle) {
    Diagnostic telling = tellingRecord(diagnostics(handleType, handle));
    if (isOpen() && meansLoss(telling)) {
        isLost_ = true;
        telling.state = telling.state.starts_with("08") ? telling.state : "08S01";
    }
    return errorOf(telling);
}

PlatformError OdbcSession::errorOf(const Diagnostic& diagnostic) const {
    const PlatformError error = kind_.error(diagnostic);
    return {error.number(), error.description(), source_};
}

OdbcResult OdbcSession::run(std::string_view statement) {
    if (!isOpen()) {
        throw PlatformError(
            kClosedError, "Operation is not allowed when the object is closed.", source_
        );
    }
    const StatementHandle handle(connection_);
    const auto raise = [&] { throw failure(SQL_HANDLE_STMT, handle.get()); };
    std::u16string text = utf16FromUtf8(statement);
    const SQLRETURN code =
        SQLExecDirectW(handle.get(), wide(text), static_cast<SQLINTEGER>(text.size()));
    if (code == SQL_NO_DATA) {
        return {};  // it changed no row
    }
    if (!succeeded(code)) {
        raise();
    }
    return fetchResult(handle.get(), raise);
}

std::int64_t OdbcSession::runOnce(std::string_view statement) {
    setAttribute(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_OFF);
    std::int64_t hit = 0;
    try {
        hit = run(statement).affected;
    } catch (const PlatformError&) {
        if (isOpen()) {
            SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
            setAttribute(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_ON);
        }
        throw;
    }
    const SQLRETURN code =
        SQLEndTran(SQL_HANDLE_DBC, connection_, hit == 1 ? SQL_COMMIT : SQL_ROLLBACK);
    if (!succeeded(code)) {
        throw failure(SQL_HANDLE_DBC, connection_);
    }
    setAttribute(SQL_ATTR_AUTOCOMMIT, SQL_AUTOCOMMIT_ON);
    return hit;
}

}  // namespace platform
