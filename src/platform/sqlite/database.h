#pragma once

#include "platform/ports/platform_error.h"
#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/packed_rows.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace platform {

/// One open catalog file. Texts that go in and out are code page 1252, statements UTF-8.
class Database {
public:
    enum class Mode : std::uint8_t { existing, create };

    /// Opens `file`. @param catalog  its name in messages; @param timeoutSeconds  how long a
    /// statement waits for another program's lock. @throws PlatformError 5120, 5171 and others.
    Database(const std::string& file, std::string catalog, int timeoutSeconds, Mode mode);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    Database(Database&&) = delete;
    Database& operator=(Database&&) = delete;

    /// Runs one statement to its end.
    void run(const std::string& statement, const std::vector<Stored>& values = {});
    /// Rows that the last statement changed.
    [[nodiscard]] std::int64_t changes() const;
    /// False also when the store itself undid a transaction after a failure of the disk.
    [[nodiscard]] bool inTransaction() const;
    [[nodiscard]] const std::string& catalog() const { return catalog_; }

private:
    friend class Query;
    [[noreturn]] void fail(int code) const;
    struct Prepared {
        std::int64_t number;
        std::string text;
        sqlite3_stmt* statement = nullptr;
    };
    /// A prepared statement that is at rest, from those that were kept when it is among them.
    [[nodiscard]] Prepared take(const std::string& text, std::int64_t number) const;
    /// Keeps a statement for the next time: the same few are run over and over.
    void keep(Prepared prepared) const;
    void forget() const;

    sqlite3* handle_ = nullptr;
    mutable std::vector<Prepared> kept_;  ///< the one that was used last is the last
    std::string file_;
    std::string catalog_;
};

/// A prepared statement with its rows; holds no lock once it is reset or gone.
class Query {
public:
    /// @param number  stands for this text and no other, so that texts need not be compared; 0: it
    /// has none.
    Query(const Database& database, const std::string& statement, std::int64_t number = 0);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    Query(Query&&) = delete;
    Query& operator=(Query&&) = delete;

    void bind(const std::vector<Stored>& values);
    /// Goes to the next row; false behind the last.
    bool step();
    void reset();
    [[nodiscard]] Stored value(int column) const;
    /// Adds the values of the row to `rows`.
    void packRow(PackedRows& rows) const;
    /// The value as text; empty for no value.
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t number(int column) const;

private:
    int bindText(int place, std::string_view utf8);
    [[nodiscard]] std::string_view bytes(int column) const;

    const Database& database_;
    Database::Prepared prepared_;
    sqlite3_stmt* statement_ = nullptr;
};

/// Runs `body` as a whole or not at all.
template <class Body>
void asOneStep(Database& database, Body&& body) {
    database.run("SAVEPOINT step");
    try {
        body();
    } catch (const PlatformError&) {
        ignoringErrors([&] { database.run("ROLLBACK TO step"); });
        ignoringErrors([&] { database.run("RELEASE step"); });
        throw;
    }
    database.run("RELEASE step");
}

}  // namespace platform
