#pragma once

#include "platform/ports/data.h"
#include "platform/sql_dialect/translator.h"
#include "platform/sqlite/catalog_session.h"
#include "platform/sqlite/packed_rows.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The rows of one SELECT on the embedded store. Changing them after the connection was closed is
/// error 3704; reading them goes on.
class SqliteRowSet : public RowSet {
public:
    /// Fetches all rows of a translated SELECT.
    SqliteRowSet(const std::shared_ptr<CatalogSession>& session, const Translation& select);
    /// The empty set of a statement that gives no rows.
    SqliteRowSet() = default;

    [[nodiscard]] std::int32_t recordCount() const override;
    [[nodiscard]] int fieldCount() const override;
    [[nodiscard]] std::string fieldName(int ordinal) const override;
    [[nodiscard]] util::Value value(int ordinal) const override;
    void setValue(int ordinal, const util::Value& value) override;
    void update() override;
    void remove() override;
    void moveFirst() override;
    void moveNext() override;
    [[nodiscard]] bool atEnd() const override;

private:
    struct Check {
        std::string text;
        std::vector<Stored> values;
    };

    [[nodiscard]] std::size_t column(int ordinal) const;
    void requireRow() const;
    void load();
    [[nodiscard]] std::shared_ptr<CatalogSession> session() const;
    /// The columns of the row that tell it from all others.
    [[nodiscard]] std::vector<std::size_t> keyColumns(const TableSchema& table) const;
    [[nodiscard]] std::vector<std::size_t> changedColumns() const;
    [[nodiscard]] Check
    check(const TableSchema& table, const std::vector<std::size_t>& changed) const;
    void send(const std::string& action, std::vector<Stored> values, const Check& check) const;

    std::weak_ptr<CatalogSession> session_;
    std::string table_;
    std::vector<ColumnInfo> columns_;
    bool hasRowNumbers_ = false;  ///< the first value of each packed row is the row's number
    PackedRows rows_;
    std::size_t at_ = 0;
    bool isRemoved_ = false;      ///< the current row was deleted; at_ is the one behind it
    std::int64_t rowNumber_ = 0;  ///< of the current row
    std::vector<Stored> kept_;    ///< its values as fetched
    std::vector<Stored> edited_;  ///< and with what setValue put there
};

}  // namespace platform
