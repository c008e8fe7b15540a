#include "platform/sql_dialect/value_source.h"

#include <string>

namespace platform {

namespace {

bool isWhole(const std::string& number) {
    return number.find_first_not_of("+-0123456789") == std::string::npos;
}

/// A literal as a value to compare a column of numbers with: a text is converted to the column's
/// type as the server does, a number stays what it is.
Stored comparable(const ColumnInfo& column, const Literal& literal) {
    const bool isNumber = !literal.isText && !literal.isNull;
    if (!isNumber || column.kind == ColumnKind::real || column.kind == ColumnKind::date ||
        column.kind == ColumnKind::dateTime) {
        return toStored(column, literal);
    }
    ColumnInfo number = column;
    number.kind = isWhole(literal.text) ? ColumnKind::bigInt : ColumnKind::floating;
    return toStored(number, literal);
}

}  // namespace

Stored valueOf(const ValueSource& source, const Literal& literal, const Dialect& dialect) {
    switch (source.form) {
    case ValueForm::orderKey:
        return dialect.orderKeyOf(literal.text);
    case ValueForm::exactText:
        return literal.isNull ? Stored() : Stored(literal.text);
    case ValueForm::comparable:
        return comparable(source.column, literal);
    default:
        return toStored(source.column, literal);
    }
}

}  // namespace platform
