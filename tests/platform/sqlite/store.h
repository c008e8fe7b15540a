#pragma once

#include "platform/sqlite/sqlite_connection.h"
#include "platform/sqlite/sqlite_management.h"
#include "platform/store_talk.h"
#include "support/temp_folder.h"

#include <string>

#include <gtest/gtest.h>
#include <sqlite3.h>

/// A data folder with one empty catalog and an open connection to it.
class Store : public testing::Test, public StoreTalk {
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

    [[nodiscard]] platform::DataConnection& talked() override { return db; }

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
};
