#pragma once

#include "platform/ports/data.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

/// One empty catalog and an open connection to it, under each data adapter.
class EachStore : public testing::TestWithParam<testing_support::StoreAdapter> {
protected:
    EachStore() : catalog(GetParam().newCatalogName()) {
        GetParam().makeCatalog(folder.str(), catalog);
        connection = newConnection();
    }
    ~EachStore() override {
        connection.reset();
        GetParam().dropCatalog(catalog);
    }

    /// A connection to the catalog beside the first one, as another station has it.
    [[nodiscard]] std::unique_ptr<platform::DataConnection> newConnection() const {
        auto opened = GetParam().makeConnection(folder.str());
        opened->open(GetParam().settings(catalog));
        return opened;
    }

    void execute(std::string_view statement) const { connection->execute(statement); }
    [[nodiscard]] std::unique_ptr<platform::RowSet> rowsOf(std::string_view statement) const {
        return connection->openRowSet(statement);
    }

    /// Number of the error of a step, 0 for none; its text in `message`.
    std::int32_t errorOf(const std::function<void()>& step) {
        message.clear();
        try {
            step();
        } catch (const platform::PlatformError& error) {
            message = error.description();
            return error.number();
        }
        return 0;
    }
    std::int32_t failure(std::string_view statement) {
        return errorOf([&] { execute(statement); });
    }

    /// The first value of the first row as text; "(none)" for no row or no value.
    [[nodiscard]] std::string first(std::string_view statement) const {
        const auto rows = rowsOf(statement);
        return rows->atEnd() ? "(none)" : text(rows->value(0));
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

    testing_support::TempFolder folder;
    std::string catalog;
    std::unique_ptr<platform::DataConnection> connection;
    std::string message;
};
