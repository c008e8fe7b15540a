#include "db/record_fields.h"

#include "db/NuvDBSM_MSDE.h"
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

/// A number below 100 with two digits.
std::string twoDigits(std::int32_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string momentText(util::DateTime moment) {
    constexpr std::int32_t kMinute = 60;
    const std::int32_t minutes = moment.seconds / kMinute;
    return util::format(moment, "yyyymmdd") + " " + twoDigits(minutes / kMinute) + ":" +
           twoDigits(minutes % kMinute) + ":" + twoDigits(moment.seconds % kMinute);
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
                return momentText(held);
            } else {
                return util::textOf(held);
            }
        },
        value
    );
}

std::string textFrom(const util::Value& value) {
    return statementText(value);
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
        return util::Money::fromDecimal(util::textOf(*whole));
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
        return util::rtrim(textFrom(present)) == util::rtrim(textFrom(wanted));
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
    return moneyFrom(present) == moneyFrom(wanted);
}

}  // namespace db
