#pragma once

#include "platform/odbc/connection_text.h"
#include "platform/odbc/odbc_session.h"
#include "platform/sql_dialect/translator.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The tables of a catalog as its server describes them; read when they are asked for and kept
/// until they are forgotten.
class ServerSchema : public SchemaView {
public:
    ServerSchema(const ServerKind& kind, OdbcSession& session) : kind_(kind), session_(session) {}

    [[nodiscard]] const TableSchema* table(std::string_view name) const override;
    /// @return false when there was nothing to forget.
    bool forget();
    /// Takes up what a statement of ours has done to the tables, or forgets them.
    void note(const Statement& statement);

private:
    [[nodiscard]] std::string presentName(std::string_view name) const;
    void readColumns(TableSchema& table) const;
    void readIndexes(TableSchema& table) const;

    const ServerKind& kind_;
    OdbcSession& session_;
    mutable std::map<std::string, std::unique_ptr<TableSchema>, std::less<>> tables_;
};

/// Rows of a statement, with the table that they are of; empty when that cannot be told.
struct StoreRows {
    OdbcResult result;
    std::string table;
};

/// An open catalog on a server. Takes statements of the SQL Server's dialect (code page 1252): a
/// SQL Server gets them letter for letter, another server translated.
class OdbcStore {
public:
    OdbcStore(const ConnectionSettings& settings, const OdbcOptions& options);

    /// @throws PlatformError with the SQL Server's number and text.
    StoreRows run(std::string_view statement);
    /// Runs a change of one row: the number of rows that it hit. @param isCertain  no two rows can
    /// fulfil its condition; otherwise a change of more than one is undone.
    std::int64_t change(std::string_view statement, bool isCertain);
    /// The table with its indexes, for the check of a change.
    [[nodiscard]] TableSchema tableForCheck(const std::string& name) const;
    [[nodiscard]] const OdbcSession& session() const { return session_; }

private:
    OdbcStore(const ConnectionSettings& settings, const ConnectionText& text);
    StoreRows runAsIs(std::string_view statement);
    StoreRows runTranslated(std::string_view statement);
    [[nodiscard]] Translation translated(std::string_view statement);

    const ServerKind& kind_;
    OdbcSession session_;
    ServerSchema schema_;
};

}  // namespace platform
