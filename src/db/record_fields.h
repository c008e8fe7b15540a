#pragma once

#include "platform/ports/data.h"
#include "util/date_time.h"
#include "util/fixed_text.h"
#include "util/money.h"
#include "util/value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

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

using platform::FieldKind;
using platform::RecordField;

/// What a field of this type holds.
template <class Field>
consteval FieldKind kindOf() {
    if constexpr (std::is_same_v<Field, std::int16_t>) {
        return FieldKind::small;
    } else if constexpr (std::is_same_v<Field, std::int32_t>) {
        return FieldKind::whole;
    } else if constexpr (std::is_same_v<Field, std::int64_t>) {
        return FieldKind::wide;
    } else if constexpr (std::is_same_v<Field, float>) {
        return FieldKind::single;
    } else if constexpr (std::is_same_v<Field, util::Money>) {
        return FieldKind::money;
    } else if constexpr (std::is_same_v<Field, std::optional<util::DateTime>>) {
        return FieldKind::moment;
    } else {
        static_assert(sizeof(Field) == Field::kWidth, "a text is nothing but its characters");
        return FieldKind::text;
    }
}

/// Fills a field of a record from a value of a row. @throws util::BasicError 6 when a number does
/// not fit.
void fillField(void* record, const RecordField& field, const util::ValueView& value);
/// The value of a field: all characters of a text, blanks for one that was never filled.
util::Value fieldValue(const void* record, const RecordField& field);

}  // namespace db
