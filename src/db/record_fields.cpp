#include "db/record_fields.h"

#include "util/conversions.h"

#include <type_traits>

namespace db {

namespace {

template <class Kind>
inline constexpr bool kIsNumber = std::is_same_v<Kind, std::int64_t> ||
                                  std::is_same_v<Kind, float> || std::is_same_v<Kind, double>;

/// A number of any kind as a double; a text by the number at its start, all else 0.
double numberFrom(const util::Value& value) {
    return std::visit(
        [](const auto& held) -> double {
            using Kind = std::decay_t<decltype(held)>;
            if constexpr (kIsNumber<Kind>) {
                return static_cast<double>(held);
            } else if constexpr (std::is_same_v<Kind, util::Money>) {
                return held.toDouble();
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return util::val(held);
            } else {
                return 0;
            }
        },
        value
    );
}

bool isText(const util::Value& value) {
    return std::holds_alternative<std::string>(value);
}

bool isMoment(const util::Value& value) {
    return std::holds_alternative<util::DateTime>(value);
}

}  // namespace

std::string statementText(const util::Value& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Kind = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Kind, std::monostate>) {
                return {};
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return held;
            } else if constexpr (std::is_same_v<Kind, util::DateTime>) {
                return util::format(held, "yyyymmdd hh:mm:ss");
            } else {
                return util::textOf(held);
            }
        },
        value
    );
}

std::int64_t wholeFrom(const util::Value& value) {
    const auto* whole = std::get_if<std::int64_t>(&value);
    return whole != nullptr ? *whole : util::toLong(numberFrom(value));
}

std::int16_t smallFrom(const util::Value& value) {
    return util::toInteger(numberFrom(value));
}

std::int32_t longFrom(const util::Value& value) {
    return util::toLong(numberFrom(value));
}

float singleFrom(const util::Value& value) {
    return static_cast<float>(numberFrom(value));
}

util::Money moneyFrom(const util::Value& value) {
    if (const auto* money = std::get_if<util::Money>(&value)) {
        return *money;
    }
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return util::Money::fromWhole(*whole);
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return util::isNumeric(*text) ? util::toCurrency(*text) : util::Money();
    }
    return util::Money::fromDouble(numberFrom(value));
}

std::optional<util::DateTime> momentFrom(const util::Value& value) {
    if (const auto* moment = std::get_if<util::DateTime>(&value)) {
        return *moment;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return util::dateFromText(*text);
    }
    return std::nullopt;
}

bool readsAlike(const util::Value& present, const util::Value& wanted) {
    if (isText(present) || isText(wanted)) {
        return util::rtrim(statementText(present)) == util::rtrim(statementText(wanted));
    }
    if (isMoment(present) || isMoment(wanted)) {
        return momentFrom(present) == momentFrom(wanted);
    }
    if (std::holds_alternative<float>(present) || std::holds_alternative<float>(wanted)) {
        return singleFrom(present) == singleFrom(wanted);
    }
    if (std::holds_alternative<double>(present) || std::holds_alternative<double>(wanted)) {
        return numberFrom(present) == numberFrom(wanted);
    }
    const auto* whole = std::get_if<std::int64_t>(&present);
    const auto* wantedWhole = std::get_if<std::int64_t>(&wanted);
    if (whole != nullptr && wantedWhole != nullptr) {
        return *whole == *wantedWhole;  // a BIGINT can be greater than any amount
    }
    return moneyFrom(present) == moneyFrom(wanted);
}

}  // namespace db
