#include "db/record_fields.h"

#include "util/conversions.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

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

template <class Field>
Field& fieldAt(void* record, const RecordField& field) {
    return *reinterpret_cast<Field*>(static_cast<std::byte*>(record) + field.offset);
}

template <class Field>
const Field& fieldAt(const void* record, const RecordField& field) {
    return *reinterpret_cast<const Field*>(static_cast<const std::byte*>(record) + field.offset);
}

std::span<char> textAt(void* record, const RecordField& field) {
    return {&fieldAt<char>(record, field), field.size};
}

/// Fills a field from a value of its own kind without a detour, and else from what the value is by
/// `convert`.
template <class Own, class Field>
void take(Field& target, const util::ValueView& value, Field (*convert)(const util::Value& value)) {
    const auto* own = std::get_if<Own>(&value);
    if constexpr (std::is_integral_v<Field>) {
        if (own != nullptr && std::in_range<Field>(*own)) {
            target = static_cast<Field>(*own);
            return;
        }
    } else if (own != nullptr) {
        target = *own;
        return;
    }
    target = convert(util::ownValue(value));
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

void fillField(void* record, const RecordField& field, const util::ValueView& value) {
    switch (field.kind) {
    case FieldKind::text:
        if (const auto* text = std::get_if<std::string_view>(&value)) {
            util::fillText(textAt(record, field), *text);
        } else {
            util::fillText(textAt(record, field), statementText(util::ownValue(value)));
        }
        break;
    case FieldKind::small:
        take<std::int64_t>(fieldAt<std::int16_t>(record, field), value, &smallFrom);
        break;
    case FieldKind::whole:
        take<std::int64_t>(fieldAt<std::int32_t>(record, field), value, &longFrom);
        break;
    case FieldKind::wide:
        take<std::int64_t>(fieldAt<std::int64_t>(record, field), value, &wholeFrom);
        break;
    case FieldKind::single:
        take<float>(fieldAt<float>(record, field), value, &singleFrom);
        break;
    case FieldKind::money:
        take<util::Money>(fieldAt<util::Money>(record, field), value, &moneyFrom);
        break;
    case FieldKind::moment:
        take<util::DateTime>(
            fieldAt<std::optional<util::DateTime>>(record, field), value, &momentFrom
        );
        break;
    }
}

util::Value fieldValue(const void* record, const RecordField& field) {
    switch (field.kind) {
    case FieldKind::small:
        return std::int64_t{fieldAt<std::int16_t>(record, field)};
    case FieldKind::whole:
        return std::int64_t{fieldAt<std::int32_t>(record, field)};
    case FieldKind::wide:
        return fieldAt<std::int64_t>(record, field);
    case FieldKind::single:
        return fieldAt<float>(record, field);
    case FieldKind::money:
        return fieldAt<util::Money>(record, field);
    case FieldKind::moment: {
        const auto& moment = fieldAt<std::optional<util::DateTime>>(record, field);
        return moment ? util::Value(*moment) : util::Value();
    }
    default: {
        const std::string_view text(&fieldAt<char>(record, field), field.size);
        return util::isUnset(text) ? std::string(field.size, ' ') : std::string(text);
    }
    }
}

}  // namespace db
