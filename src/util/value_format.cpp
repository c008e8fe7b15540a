#include "util/conversions.h"
#include "util/decimal_digits.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace util {

namespace {

constexpr std::int32_t kSecondsOfDay = 86400;
constexpr std::int32_t kSecondsOfHour = 3600;

/// "0.00": how many digits stand in front of the point, and how many behind it.
struct NumberPattern {
    std::size_t whole = 0;
    int decimals = 0;
};

/// True for patterns of "0" and one point; the others are patterns of dates.
bool isNumberPattern(std::string_view pattern) {
    return !pattern.empty() && pattern.find_first_not_of("0.") == std::string_view::npos;
}

NumberPattern numberPattern(std::string_view pattern) {
    const std::size_t point = std::min(pattern.find('.'), pattern.size());
    const std::size_t decimals = pattern.size() - std::min(point + 1, pattern.size());
    return {point, static_cast<int>(decimals)};
}

std::string formatDigits(const DecimalDigits& number, std::string_view pattern) {
    const NumberPattern places = numberPattern(pattern);
    return number.text(places.whole, places.decimals);
}

/// Number with at least `width` digits; of one that is longer the last ones, when `cut`.
std::string padded(int number, std::size_t width, bool cut = false) {
    std::string text = std::to_string(number);
    if (text.size() < width) {
        text.insert(0, width - text.size(), '0');
    }
    return cut ? text.substr(text.size() - width) : text;
}

int hourOf(DateTime date) {
    return date.seconds / kSecondsOfHour;
}

int minuteOf(DateTime date) {
    return date.seconds / 60 % 60;
}

/// The text of one run of equal letters of a date pattern; any other character stands for itself.
std::string datePiece(DateTime date, char letter, std::size_t width, bool afterHour) {
    const CalendarDate parts = calendarDate(date.day);
    const std::size_t digits = std::min<std::size_t>(width, 2);
    switch (letter) {
    case 'y':
        return padded(parts.year, width > 2 ? 4 : 2, true);
    case 'm':
        return padded(afterHour ? minuteOf(date) : parts.month, digits);
    case 'd':
        return padded(parts.day, digits);
    case 'h':
        return padded(hourOf(date), digits);
    case 's':
        return padded(date.seconds % 60, digits);
    default:
        break;
    }
    std::string literal;
    literal.append(width, letter);
    return literal;
}

/// The time as "2:05:00 PM".
std::string clockTime(DateTime date) {
    const int hour = hourOf(date);
    return padded((hour + 11) % 12 + 1, 1) + ":" + padded(minuteOf(date), 2) + ":" +
           padded(date.seconds % 60, 2) + (hour < 12 ? " AM" : " PM");
}

/// The date that lies `text` days behind day zero; nothing when it is no number or no date.
std::optional<DateTime> dateFromDayCount(std::string_view text) {
    constexpr double kFirstDay = -657434;   // 1 January 100
    constexpr double kEndOfDays = 2958466;  // 1 January 10000
    if (!isNumeric(text)) {
        return std::nullopt;
    }
    const double days = toDouble(text);
    if (days < kFirstDay || days >= kEndOfDays) {
        return std::nullopt;
    }
    // Kept: in front of day zero the fraction of a day still counts forward.
    const double whole = std::trunc(days);
    const auto seconds =
        static_cast<std::int32_t>(std::lround(std::fabs(days - whole) * kSecondsOfDay));
    return DateTime{static_cast<std::int32_t>(whole), std::min(seconds, kSecondsOfDay - 1)};
}

}  // namespace

std::string format(double value, std::string_view pattern) {
    return formatDigits(digitsOf(value), pattern);
}

std::string format(float value, std::string_view pattern) {
    return formatDigits(digitsOf(value), pattern);
}

std::string format(Money value, std::string_view pattern) {
    const auto number = numberFromText(value.text(4));
    return formatDigits(*number, pattern);
}

std::string format(std::int64_t value, std::string_view pattern) {
    const auto number = numberFromText(std::to_string(value));
    return formatDigits(*number, pattern);
}

std::string
format(std::string_view text, std::string_view pattern, DateOrder order, int currentYear) {
    if (isNumberPattern(pattern)) {
        return isNumeric(text) ? format(toDouble(text), pattern) : std::string(text);
    }
    const auto counted = dateFromDayCount(text);
    const auto date = counted ? counted : dateFromText(text, order, currentYear);
    return date ? format(*date, pattern, order) : std::string(text);
}

std::string format(DateTime date, std::string_view pattern, DateOrder order) {
    const std::string letters = lower(pattern);
    if (letters == "short date") {
        return shortDate(date, order);
    }
    std::string result;
    bool afterHour = false;
    for (std::size_t begin = 0; begin < letters.size();) {
        const std::size_t end =
            std::min(letters.find_first_not_of(letters[begin], begin), letters.size());
        result += datePiece(date, letters[begin], end - begin, afterHour);
        if (letters[begin] >= 'a' && letters[begin] <= 'z') {
            afterHour = letters[begin] == 'h';
        }
        begin = end;
    }
    return result;
}

std::string shortDate(DateTime date, DateOrder order) {
    const CalendarDate parts = calendarDate(date.day);
    const bool dayFirst = order == DateOrder::dayFirst;
    return std::to_string(dayFirst ? parts.day : parts.month) + "/" +
           std::to_string(dayFirst ? parts.month : parts.day) + "/" + padded(parts.year, 4);
}

std::string textOf(DateTime date, DateOrder order) {
    if (date.day == 0) {
        return clockTime(date);
    }
    const std::string day = shortDate(date, order);
    return date.seconds == 0 ? day : day + " " + clockTime(date);
}

}  // namespace util
