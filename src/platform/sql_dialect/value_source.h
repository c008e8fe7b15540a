#pragma once

#include "platform/sql_dialect/columns.h"
#include "platform/sql_dialect/dialect.h"

#include <cstdint>

namespace platform {

/// What a literal of a condition is made to.
enum class ValueForm : std::uint8_t {
    orderKey,    ///< the key that bounds a text
    exactText,   ///< a text as it stands
    comparable,  ///< a value to compare a column of numbers with
    kept         ///< as the column keeps it
};

/// Where a value of a condition comes from.
struct ValueSource {
    ColumnInfo column;
    Literal literal;
    ValueForm form;
};

/// The value that a literal in the place of the source's own gives.
/// @throws PlatformError as toStored().
Stored valueOf(const ValueSource& source, const Literal& literal, const Dialect& dialect);

}  // namespace platform
