#pragma once

#include "platform/ports/data.h"
#include "platform/ports/platform_error.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// What the tests of the stores ask and tell a connection.
class StoreTalk {
protected:
    [[nodiscard]] virtual platform::DataConnection& talked() = 0;

    void execute(std::string_view statement) { talked().execute(statement); }
    [[nodiscard]] std::unique_ptr<platform::RowSet> rowsOf(std::string_view statement) {
        return talked().openRowSet(statement);
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

    /// A value of the first row as text; "(none)" for no row or no value.
    [[nodiscard]] std::string first(std::string_view statement, int ordinal = 0) {
        const auto rows = rowsOf(statement);
        return rows->atEnd() ? "(none)" : text(rows->value(ordinal));
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

    std::string message;
};
