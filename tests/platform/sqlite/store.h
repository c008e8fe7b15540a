#pragma once

#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "support/temp_folder.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sqlite3.h>

/// A data folder with one empty catalog and an open connection to it.
class Store : public testing::Test {
protected:
    Store() {
        management.addCatalog(files("NUVDATA1"));
        db.open(settings());
    }

    [[nodiscard]] platform::CatalogFiles files(const std::string& name) const {
        return {name, folder.file(name + ".mdf"), folder.file(name + ".ldf"), "Log" + name};
    }
    static platform::ConnectionSettings settings() {
        return {0, "embedded", "NUVDATA1", "qz", "", false};
    }
    [[nodiscard]] std::string file() const { return folder.str() + "/NUVDATA1.mdf"; }

    /// Number of the error that a statement gives, 0 for none; its text in `message`.
    std::int32_t failure(std::string_view statement) {
        try {
            static_cast<void>(db.openRowSet(statement));
        } catch (const platform::PlatformError& error) {
            message = error.description();
            return error.number();
        }
        message.clear();
        return 0;
    }

    /// The first value of the first row as text; "(none)" for no row or no value.
    std::string first(std::string_view statement, int ordinal = 0) {
        const auto rows = db.openRowSet(statement);
        if (rows->atEnd()) {
            return "(none)";
        }
        return text(rows->value(ordinal));
    }

    static std::string text(const util::Value& value) {
        if (const auto* characters = std::get_if<std::string>(&value)) {
            return *characters;
        }
        if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            return std::to_string(*whole);
        }
        if (const auto* money = std::get_if<util::Money>(&value)) {
            return "raw " + std::to_string(money->raw());
        }
        if (const auto* moment = std::get_if<util::DateTime>(&value)) {
            return "day " + std::to_string(moment->day) + " " + std::to_string(moment->seconds);
        }
        return "(none)";
    }

    /// What another program sees or does: plain SQLite, nothing of ours registered. Gives the
    /// first value, or the error.
    std::string otherProgram(const std::string& statement) const {
        sqlite3* other = nullptr;
        std::string result;
        sqlite3_open(file().c_str(), &other);
        sqlite3_stmt* query = nullptr;
        if (sqlite3_prepare_v2(other, statement.c_str(), -1, &query, nullptr) != SQLITE_OK) {
            result = sqlite3_errmsg(other);
        } else if (const int code = sqlite3_step(query); code == SQLITE_ROW) {
            const auto* bytes = sqlite3_column_text(query, 0);
            result = bytes == nullptr ? "" : reinterpret_cast<const char*>(bytes);
        } else if (code != SQLITE_DONE) {
            result = sqlite3_errmsg(other);
        }
        sqlite3_finalize(query);
        sqlite3_close(other);
        return result;
    }

    testing_support::TempFolder folder;
    platform::SqliteManagement management{[this] { return folder.str(); }};
    platform::SqliteConnection db{[this] { return folder.str(); }};
    std::string message;
};
