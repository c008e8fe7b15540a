#pragma once

#include "platform/sql_dialect/translator.h"

#include <string>
#include <string_view>
#include <utility>

/// A catalog with one table.
class OneTable : public platform::SchemaView {
public:
    OneTable() {
        table_.name = "T";
        for (const auto& [name, type] : {
                 std::pair{"Code", "CHAR (5)"},
                 {"Town", "CHAR (5)"},
                 {"N", "INTEGER"},
                 {"LIMIT", "DECIMAL(18,2)"},
             }) {
            platform::ColumnInfo column{name, type};
            platform::readType(column);
            table_.columns.push_back(column);
        }
        table_.indexes.push_back({"idx_0", true, {"N"}});
    }
    [[nodiscard]] const platform::TableSchema* table(std::string_view name) const override {
        return name == "T" || name == "t" ? &table_ : nullptr;
    }

private:
    platform::TableSchema table_;
};

/// The embedded dialect with short names for its long expressions.
inline platform::Dialect readable() {
    platform::Dialect dialect = platform::kEmbeddedDialect;
    dialect.orderKey = [](const std::string& column) { return "KEY(" + column + ")"; };
    dialect.identity = [](const std::string& column) { return "ID(" + column + ")"; };
    dialect.exactly = "~";
    return dialect;
}
