#pragma once

#include "platform/odbc/server_kind.h"
#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/packed_rows.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What a statement gave: rows, when it has columns.
struct OdbcResult {
    std::vector<ColumnInfo> columns;
    PackedRows rows;
    std::int64_t affected = 0;  ///< rows that it changed
};

/// One connection through the driver manager. Statements and texts of failures are UTF-8 and code
/// page 1252.
class OdbcSession {
public:
    /// Connects. @param source  who raises its errors. @param timeoutSeconds  how long the connect
    /// may take. @throws PlatformError.
    OdbcSession(
        const ServerKind& kind,
        std::string source,
        const std::string& connectionText,
        int timeoutSeconds
    );
    ~OdbcSession();
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;
    OdbcSession(OdbcSession&&) = delete;
    OdbcSession& operator=(OdbcSession&&) = delete;

    /// Runs one statement and fetches what it gives. @throws PlatformError; isOpen() is false
    /// afterwards when the server is gone.
    OdbcResult run(std::string_view statement);
    /// Runs a statement that must change exactly one row; one that changed more is undone.
    /// @return rows that it hit. @throws PlatformError as run().
    std::int64_t runOnce(std::string_view statement);
    [[nodiscard]] bool isOpen() const { return isConnected_ && !isLost_; }
    [[nodiscard]] const std::string& source() const { return source_; }
    [[nodiscard]] const ServerKind& kind() const { return kind_; }

private:
    void setAttribute(std::int32_t attribute, std::uintptr_t value);
    /// The failure that the driver has noted for a handle.
    PlatformError failure(std::int16_t handleType, void* handle);
    [[nodiscard]] PlatformError errorOf(const Diagnostic& diagnostic) const;
    [[nodiscard]] bool meansLoss(const Diagnostic& diagnostic) const;
    void close();

    const ServerKind& kind_;
    std::string source_;
    void* connection_ = nullptr;
    bool isConnected_ = false;
    bool isLost_ = false;  ///< connected to a server that is gone
};

}  // namespace platform
