#include "platform/sql_dialect/columns.h"

#include "platform/sql_dialect/moments.h"
#include "platform/sql_dialect/server_error.h"
#include "platform/sql_dialect/tokens.h"
#include "util/basic_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace platform {

namespace {

struct TypeRow {
    std::string_view name;
    ColumnKind kind;
    bool padded;
};

constexpr TypeRow kTypes[] = {
    {"CHAR", ColumnKind::text, true},          {"CHARACTER", ColumnKind::text, true},
    {"NCHAR", ColumnKind::text, true},         {"VARCHAR", ColumnKind::text, false},
    {"NVARCHAR", ColumnKind::text, false},     {"TEXT", ColumnKind::text, false},
    {"TINYINT", ColumnKind::smallInt, false},  {"BIT", ColumnKind::smallInt, false},
    {"SMALLINT", ColumnKind::smallInt, false}, {"INT", ColumnKind::integer, false},
    {"INTEGER", ColumnKind::integer, false},   {"BIGINT", ColumnKind::bigInt, false},
    {"REAL", ColumnKind::real, false},         {"FLOAT", ColumnKind::floating, false},
    {"DECIMAL", ColumnKind::decimal, false},   {"NUMERIC", ColumnKind::decimal, false},
    {"MONEY", ColumnKind::decimal, false},     {"DATETIME", ColumnKind::dateTime, false},
    {"DOUBLE", ColumnKind::floating, false},   {"TIMESTAMP", ColumnKind::dateTime, false},
    {"DATE", ColumnKind::date, false},
};

constexpr int kMoneyDecimals = 4;
/// Decimal digits that a double keeps whatever they are.
constexpr std::int64_t kExactLimit = 1'000'000'000'000'000;
constexpr std::int64_t kPowers[] = {1, 10, 100, 1000, 10000};

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

template <class Number>
std::optional<Number> wholeNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    Number number = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool all = code == std::errc() && end == text.data() + text.size();
    return all ? std::optional(number) : std::nullopt;
}

template <class Number>
std::string shortestText(Number number) {
    std::array<char, 64> text{};
    const auto [end, code] = std::to_chars(text.data(), text.data() + text.size(), number);
    return code == std::errc() ? std::string(text.data(), end) : std::string();
}

std::vector<int> numbersOf(const std::vector<Token>& tokens) {
    std::vector<int> numbers;
    for (const auto& token : tokens) {
        if (token.kind == TokenKind::number) {
            numbers.push_back(wholeNumber<int>(token.text).value_or(0));
        }
    }
    return numbers;
}

Stored textValue(const ColumnInfo& column, const Literal& literal) {
    const std::size_t last = literal.text.find_last_not_of(' ');
    std::string text = literal.text.substr(0, last == std::string::npos ? 0 : last + 1);
    std::replace(text.begin(), text.end(), '\0', ' ');
    if (column.width != 0 && text.size() > column.width) {
        throw serverError(errorTruncated, {column.name});
    }
    return text;
}

struct Range {
    std::int64_t least;
    std::int64_t greatest;
};

Range rangeOf(ColumnKind kind) {
    switch (kind) {
    case ColumnKind::smallInt:
        return {std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()};
    case ColumnKind::integer:
        return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    default:
        return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

PlatformError overflow(const ColumnInfo& column, const Literal& literal) {
    const bool isSmall = column.kind == ColumnKind::smallInt;
    if (literal.isText) {
        return serverError(
            isSmall ? errorTextOverflowsSmall : errorTextOverflowsInteger, {literal.text}
        );
    }
    return isSmall ? serverError(errorSmallOverflow, {kindName(column.kind), literal.text})
                   : serverError(errorNumericOverflow, {"expression", kindName(column.kind)});
}

Stored integerValue(const ColumnInfo& column, const Literal& literal) {
    const std::string_view text = trimmed(literal.text);
    if (text.empty()) {
        return std::int64_t{0};
    }
    auto number = wholeNumber<std::int64_t>(text);
    if (!number) {
        const auto fraction = wholeNumber<double>(text);
        if (!fraction || literal.isText) {
            throw serverError(errorTextConversion, {literal.text, kindName(column.kind)});
        }
        if (std::fabs(*fraction) >= 9.2e18) {
            throw overflow(column, literal);
        }
        number = static_cast<std::int64_t>(*fraction);  // a number with a fraction loses it
    }
    const Range range = rangeOf(column.kind);
    if (*number < range.least || *number > range.greatest) {
        throw overflow(column, literal);
    }
    return *number;
}

/// The double whose shortest decimal form is that of the nearest 32-bit float, so that the value
/// reads well in any tool and compares equal to its own text.
double singleValue(double number) {
    const auto single = static_cast<float>(number);
    return wholeNumber<double>(shortestText(single)).value_or(static_cast<double>(single));
}

Stored realValue(const ColumnInfo& column, const Literal& literal) {
    const std::string_view text = trimmed(literal.text);
    if (text.empty()) {
        return 0.0;
    }
    const auto number = wholeNumber<double>(text);
    if (!number || !std::isfinite(*number)) {
        throw serverError(errorTypeConversion, {kindName(column.kind)});
    }
    if (column.kind == ColumnKind::floating) {
        return *number;
    }
    if (std::fabs(*number) > std::numeric_limits<float>::max()) {
        throw serverError(errorNumericOverflow, {"expression", kindName(column.kind)});
    }
    return singleValue(*number);
}

bool allDigits(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Units of 10^-scale that plain decimal text means, half away from zero; nothing when the text is
/// no decimal number. A number too large gives `kExactLimit`.
std::optional<std::int64_t> decimalUnits(std::string_view text, int scale) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    std::string decimals(text.substr(std::min(point + 1, text.size())));
    if (whole.size() + decimals.size() == 0 || !allDigits(whole) || !allDigits(decimals)) {
        return std::nullopt;
    }
    const auto kept = static_cast<std::size_t>(scale);
    const bool roundUp = decimals.size() > kept && decimals[kept] >= '5';
    decimals.resize(kept, '0');
    std::int64_t units = 0;
    for (const char digit : std::string(whole) + decimals) {
        units = std::min(units * 10 + (digit - '0'), kExactLimit);
    }
    units += roundUp ? 1 : 0;
    return negative ? -units : units;
}

Stored decimalValue(const ColumnInfo& column, const Literal& literal) {
    const std::string_view text = trimmed(literal.text);
    auto units = decimalUnits(text, column.scale);
    if (!units) {
        const auto number = wholeNumber<double>(text);
        if (!number || literal.isText) {
            throw serverError(errorTypeConversion, {kindName(column.kind)});
        }
        std::array<char, 400> fixed{};
        const auto [end, code] = std::to_chars(
            fixed.data(), fixed.data() + fixed.size(), *number, std::chars_format::fixed
        );
        units = code == std::errc()
                    ? decimalUnits(std::string_view(fixed.data(), end), column.scale)
                    : std::nullopt;
    }
    std::int64_t limit = kExactLimit;
    for (std::int64_t digits = 1, power = 10; digits <= column.precision && power <= kExactLimit;
         ++digits, power *= 10) {
        limit = power;
    }
    if (!units || std::abs(*units) >= limit) {
        throw serverError(errorNumericOverflow, {"numeric", kindName(column.kind)});
    }
    const std::int64_t power = kPowers[column.scale];
    if (*units % power == 0) {
        return *units / power;
    }
    return static_cast<double>(*units) / static_cast<double>(power);
}

Stored momentValue(const ColumnInfo& column, const Literal& literal) {
    const auto moment = momentFromText(literal.text);
    if (!moment) {
        throw serverError(errorDate);
    }
    return momentText(*moment, column.kind == ColumnKind::dateTime);
}

double numberOf(const ColumnInfo& column, const StoredView& value) {
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return *number;
    }
    const auto text = std::get<std::string_view>(value);
    const auto number = wholeNumber<double>(trimmed(text));
    if (!number) {
        throw serverError(errorTextConversion, {text, kindName(column.kind)});
    }
    return *number;
}

/// Decimal text as money, to the last digit.
std::optional<util::Money> exactMoney(const ColumnInfo& column, std::string_view text) {
    if (!decimalUnits(text, 0)) {
        return std::nullopt;
    }
    try {
        return util::Money::fromDecimal(text).rounded(column.scale);
    } catch (const util::BasicError& error) {
        static_cast<void>(error);
        throw serverError(errorNumericOverflow, {"numeric", kindName(column.kind)});
    }
}

util::Money moneyOf(const ColumnInfo& column, const StoredView& value) {
    if (const auto* text = std::get_if<std::string_view>(&value)) {
        const auto money = exactMoney(column, trimmed(*text));
        if (money) {
            return *money;
        }
    }
    return moneyFromStored(column, numberOf(column, value));
}

std::string moneyText(util::Money money) {
    const std::int64_t raw = money.raw();
    const auto magnitude =
        static_cast<std::uint64_t>(raw < 0 ? -(raw + 1) : raw) + (raw < 0 ? 1U : 0U);
    const auto scale = static_cast<std::uint64_t>(util::Money::kScale);
    const std::string decimals = std::to_string(scale + magnitude % scale);
    return (raw < 0 ? "-" : "") + std::to_string(magnitude / scale) + "." + decimals.substr(1);
}

struct LiteralOf {
    bool withTime = true;  ///< a moment keeps its time

    Literal operator()(std::monostate) const { return {true, false, {}}; }
    Literal operator()(const std::string& text) const { return {false, true, text}; }
    Literal operator()(std::int64_t number) const { return {false, false, std::to_string(number)}; }
    Literal operator()(float number) const { return {false, false, shortestText(number)}; }
    Literal operator()(double number) const { return {false, false, shortestText(number)}; }
    Literal operator()(util::Money money) const { return {false, false, moneyText(money)}; }
    Literal operator()(util::DateTime moment) const {
        return {false, true, momentText(moment, withTime)};
    }
};

util::Value textOut(const ColumnInfo& column, const StoredView& value) {
    std::string text;
    if (const auto* kept = std::get_if<std::string_view>(&value)) {
        text = *kept;
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        text = std::to_string(*whole);
    } else {
        text = shortestText(std::get<double>(value));
    }
    if (column.padded) {
        text.resize(column.width, ' ');
    }
    return text;
}

util::DateTime momentOut(const StoredView& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    const auto moment = text == nullptr ? std::nullopt : momentFromText(*text);
    if (!moment) {
        throw serverError(errorDate);
    }
    return *moment;
}

}  // namespace

const ColumnInfo* TableSchema::find(std::string_view column) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& info) {
        return sameSqlName(info.name, column);
    });
    return found == columns.end() ? nullptr : &*found;
}

const ColumnInfo& TableSchema::column(std::string_view column) const {
    const auto* found = find(column);
    if (found == nullptr) {
        throw serverError(errorColumnInvalid, {column});
    }
    return *found;
}

const IndexInfo* TableSchema::findIndex(std::string_view index) const {
    const auto found = std::find_if(indexes.begin(), indexes.end(), [&](const IndexInfo& info) {
        return sameSqlName(info.name, index);
    });
    return found == indexes.end() ? nullptr : &*found;
}

bool readType(ColumnInfo& column) {
    const auto tokens = tokenize(column.type);
    const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRow& type) {
        return tokens.front().is(type.name);
    });
    if (row == std::end(kTypes)) {
        return false;
    }
    column.kind = row->kind;
    column.padded = row->padded;
    const std::vector<int> sizes = numbersOf(tokens);
    if (column.kind == ColumnKind::decimal) {
        const bool isMoney = tokens.front().is("MONEY");
        column.precision = sizes.empty() ? 18 : sizes[0];
        column.scale = isMoney ? kMoneyDecimals : 0;
        column.scale = std::clamp(sizes.size() > 1 ? sizes[1] : column.scale, 0, kMoneyDecimals);
    } else if (column.kind == ColumnKind::text) {
        const int fallback = row->padded ? 1 : 0;
        column.width = static_cast<std::size_t>(sizes.empty() ? fallback : std::max(sizes[0], 0));
    }
    return true;
}

ColumnForm::ColumnForm(const ColumnInfo& column)
    : kind(column.kind),
      cut(column.padded ? static_cast<std::uint32_t>(column.width)
                        : std::numeric_limits<std::uint32_t>::max()) {}

ColumnList::ColumnList(std::vector<ColumnInfo> infos)
    : infos_(std::move(infos)),
      forms_(infos_.begin(), infos_.end()) {}

Stored toStored(const ColumnInfo& column, const Literal& literal) {
    if (literal.isNull) {
        return std::monostate{};
    }
    switch (column.kind) {
    case ColumnKind::text:
        return textValue(column, literal);
    case ColumnKind::real:
    case ColumnKind::floating:
        return realValue(column, literal);
    case ColumnKind::decimal:
        return decimalValue(column, literal);
    case ColumnKind::dateTime:
    case ColumnKind::date:
        return momentValue(column, literal);
    default:
        return integerValue(column, literal);
    }
}

Stored toStored(const ColumnInfo& column, const util::Value& value) {
    return toStored(column, std::visit(LiteralOf{}, value));
}

Stored toExact(const ColumnInfo& column, const Literal& literal) {
    const bool isExact =
        column.kind == ColumnKind::decimal && decimalUnits(trimmed(literal.text), 0).has_value();
    return isExact ? Stored(std::string(trimmed(literal.text))) : toStored(column, literal);
}

Stored toExact(const ColumnInfo& column, const util::Value& value) {
    return toExact(column, std::visit(LiteralOf{}, value));
}

StoredView viewOf(const Stored& value) {
    return std::visit([](const auto& held) { return StoredView(held); }, value);
}

Stored ownStored(const StoredView& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    if (text != nullptr) {
        return std::string(*text);
    }
    const auto* whole = std::get_if<std::int64_t>(&value);
    if (whole != nullptr) {
        return *whole;
    }
    const auto* number = std::get_if<double>(&value);
    return number == nullptr ? Stored() : Stored(*number);
}

util::Money moneyFromStored(const ColumnInfo& column, double number) {
    const double units = number * static_cast<double>(kPowers[column.scale]);
    if (std::fabs(units) >= static_cast<double>(kExactLimit)) {
        throw serverError(errorNumericOverflow, {"numeric", kindName(column.kind)});
    }
    return util::Money::fromRaw(std::llround(units) * kPowers[kMoneyDecimals - column.scale]);
}

util::ValueView viewFromStored(const ColumnInfo& column, const StoredView& value) {
    if (std::holds_alternative<std::monostate>(value)) {
        return std::monostate{};
    }
    switch (column.kind) {
    case ColumnKind::text:
        return std::get<std::string_view>(value).substr(0, ColumnForm(column).cut);
    case ColumnKind::real:
        return static_cast<float>(numberOf(column, value));
    case ColumnKind::floating:
        return numberOf(column, value);
    case ColumnKind::decimal:
        return moneyOf(column, value);
    case ColumnKind::dateTime:
    case ColumnKind::date:
        return momentOut(value);
    default:
        return std::holds_alternative<std::int64_t>(value)
                   ? std::get<std::int64_t>(value)
                   : static_cast<std::int64_t>(numberOf(column, value));
    }
}

util::Value fromStored(const ColumnInfo& column, const StoredView& value) {
    const bool isNone = std::holds_alternative<std::monostate>(value);
    if (column.kind == ColumnKind::text && !isNone) {
        return textOut(column, value);
    }
    return util::ownValue(viewFromStored(column, value));
}

std::string_view kindName(ColumnKind kind) {
    static constexpr std::string_view kNames[] = {
        "char", "smallint", "int", "bigint", "real", "float", "numeric", "datetime", "date"};
    return kNames[static_cast<std::size_t>(kind)];
}

}  // namespace platform
