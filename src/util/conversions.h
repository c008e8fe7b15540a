#pragma once

#include "util/basic_error.h"
#include "util/date_time.h"
#include "util/money.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The conversions of the language that the suite was written in, byte for byte: numbers and dates
/// from text, texts from numbers and dates. All texts are code page 1252.
namespace util {

/// Text without blanks (code 32 only) at both ends, at the left, at the right.
std::string trim(std::string_view text);
std::string ltrim(std::string_view text);
std::string rtrim(std::string_view text);
/// Letters of code page 1252 in capitals / small (a to z and the accented ones).
std::string upper(std::string_view text);
std::string lower(std::string_view text);
/// True when `text` is greater than one blank in a comparison by bytes: the suite's test for "not
/// blank". Empty, one blank and a text that begins with code 0 are not greater.
bool aboveBlank(std::string_view text);
/// Order of two texts by character codes: -1, 0 or 1; the shorter of two that begin alike is less.
int compareBinary(std::string_view left, std::string_view right);
/// True when two names are the same without regard to letter case.
bool sameName(std::string_view left, std::string_view right);
/// Pieces of `text` between separators; empty pieces stay; an empty text gives one empty piece.
std::vector<std::string> split(std::string_view text, char separator);
/// The text with every `from` replaced by `to`.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

/// The number at the start of a text; blanks, tabs and line feeds are skipped everywhere; 0 when
/// there is none. "&H1F" is hexadecimal, "&O17" octal, E and D begin an exponent.
/// @throws BasicError 6 when the number is beyond the range of a double.
double val(std::string_view text);
/// True when the whole text can be converted to a number.
bool isNumeric(std::string_view text);
/// The number that the whole text is. @throws BasicError 13, 6.
double toDouble(std::string_view text);
/// Whole numbers, half to even. @throws BasicError 6 out of range, 13 no number.
std::int16_t toInteger(double value);
std::int16_t toInteger(std::string_view text);
std::int32_t toLong(double value);
std::int32_t toLong(std::string_view text);
/// Money from text ("$1,234.56" too) or number. @throws BasicError 13, 6.
Money toCurrency(std::string_view text);
Money toCurrency(double value);
/// "True" and "False" in any case, or a number (not 0 is true). @throws BasicError 13.
bool toBoolean(std::string_view text);
/// The words of a boolean: "True", "False".
std::string booleanWord(bool value);

/// General text form of a number: 15 digits for a double, 7 for a 32-bit float, no leading blank.
std::string textOf(double value);
std::string textOf(float value);
std::string textOf(Money value);
std::string textOf(std::int64_t value);

/// Order of dates in text: month first, or day first ("E" stores).
enum class DateOrder { monthFirst, dayFirst };

/// The date that the whole text is; nothing when it is none (eight digits are none). An impossible
/// month swaps day and month. A text without year takes `currentYear`.
std::optional<DateTime> dateFromText(
    std::string_view text, DateOrder order = DateOrder::monthFirst, int currentYear = 1900
);
/// The short date form: M/D/YYYY, or D/M/YYYY for day-first stores; a time that is not midnight
/// follows only where the general form is asked for.
std::string shortDate(DateTime date, DateOrder order = DateOrder::monthFirst);

/// General text form of a date: the short date, then the time when it is not midnight, as
/// "12/5/2024 2:05:00 PM"; day zero shows the time only.
std::string textOf(DateTime date, DateOrder order = DateOrder::monthFirst);

/// `value` by one of the suite's patterns: "0", "0.00", "0.000", "0000000", "00000000" for numbers
/// (half away from zero on the decimal form with 15, or 7, digits).
std::string format(double value, std::string_view pattern);
std::string format(float value, std::string_view pattern);
std::string format(Money value, std::string_view pattern);
std::string format(std::int64_t value, std::string_view pattern);
/// Text by a number pattern or a date pattern: text that is no number (no date) passes unchanged,
/// empty stays empty. For a date pattern a number counts days from 30 December 1899; eight digits
/// are beyond the calendar and pass unchanged, but "00000000" is day zero.
std::string format(
    std::string_view text,
    std::string_view pattern,
    DateOrder order = DateOrder::monthFirst,
    int currentYear = 1900
);
/// A date by "yyyymmdd", "YYMMDD", "mm/dd/yyyy", "dd/mm/yyyy", "hh:mm" (24 hours), "Short Date".
std::string
format(DateTime date, std::string_view pattern, DateOrder order = DateOrder::monthFirst);

}  // namespace util
