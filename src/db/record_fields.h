#pragma once

#include "util/date_time.h"
#include "util/fixed_text.h"
#include "util/money.h"
#include "util/value.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// Between the fields of a record and the values of a row. What a row does not hold (NULL) reads as
/// blanks, 0 or no date.
namespace db {

/// A value as text, as it stands between the quotes of a statement too: text as it is, numbers in
/// decimal, a moment as "yyyymmdd hh:mm:ss", no value as an empty text.
std::string statementText(const util::Value& value);
/// The value as whole number (half to even), single, money or moment.
/// @throws util::BasicError 6 when a number does not fit.
std::int64_t wholeFrom(const util::Value& value);
std::int16_t smallFrom(const util::Value& value);
std::int32_t longFrom(const util::Value& value);
float singleFrom(const util::Value& value);
util::Money moneyFrom(const util::Value& value);
std::optional<util::DateTime> momentFrom(const util::Value& value);

/// True when a column that holds `present` reads the same as one that would hold `wanted`: trailing
/// blanks and the kind of number do not matter.
bool readsAlike(const util::Value& present, const util::Value& wanted);

template <std::size_t Width>
void store(util::FixedText<Width>& field, const util::Value& value) {
    field = statementText(value);
}
inline void store(std::int16_t& field, const util::Value& value) {
    field = smallFrom(value);
}
inline void store(std::int32_t& field, const util::Value& value) {
    field = longFrom(value);
}
inline void store(std::int64_t& field, const util::Value& value) {
    field = wholeFrom(value);
}
inline void store(float& field, const util::Value& value) {
    field = singleFrom(value);
}
inline void store(util::Money& field, const util::Value& value) {
    field = moneyFrom(value);
}
inline void store(std::optional<util::DateTime>& field, const util::Value& value) {
    field = momentFrom(value);
}

/// Fills a field from a value of a row; one of the field's own kind without a detour.
template <class Field>
void read(Field& field, const util::ValueView& value) {
    if constexpr (std::is_same_v<Field, float> || std::is_same_v<Field, util::Money>) {
        if (const auto* own = std::get_if<Field>(&value)) {
            field = *own;
            return;
        }
    }
    store(field, util::ownValue(value));
}
template <std::size_t Width>
void read(util::FixedText<Width>& field, const util::ValueView& value) {
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        field = *text;
    } else {
        store(field, util::ownValue(value));
    }
}
template <std::integral Field>
void read(Field& field, const util::ValueView& value) {
    const auto* whole = std::get_if<std::int64_t>(&value);
    if (whole != nullptr && std::in_range<Field>(*whole)) {
        field = static_cast<Field>(*whole);
    } else {
        store(field, util::ownValue(value));
    }
}

/// All characters of a text field; one that was never filled gives blanks.
template <std::size_t Width>
util::Value valueOf(const util::FixedText<Width>& field) {
    return field.isUnset() ? std::string(Width, ' ') : field.str();
}
inline util::Value valueOf(std::int16_t field) {
    return std::int64_t{field};
}
inline util::Value valueOf(std::int32_t field) {
    return std::int64_t{field};
}
inline util::Value valueOf(std::int64_t field) {
    return field;
}
inline util::Value valueOf(float field) {
    return field;
}
inline util::Value valueOf(util::Money field) {
    return field;
}
inline util::Value valueOf(const std::optional<util::DateTime>& field) {
    return field ? util::Value(*field) : util::Value();
}

}  // namespace db
