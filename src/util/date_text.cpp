#include "util/conversions.h"
#include "util/decimal_digits.h"

#include <algorithm>
#include <array>
#include <utility>

namespace util {

namespace {

constexpr std::string_view kMonthNames[] = {
    "january",
    "february",
    "march",
    "april",
    "may",
    "june",
    "july",
    "august",
    "september",
    "october",
    "november",
    "december",
};
constexpr std::size_t kShortName = 3;
constexpr std::size_t kLongestNumber = 4;
constexpr std::size_t kMostNumbers = 3;

/// A number of a date as it was written.
struct DateNumber {
    int value = 0;
    std::size_t digits = 0;

    /// True for a number that can only be a year.
    [[nodiscard]] bool isYear() const { return digits > 2 || value > 31; }
    /// The year that is meant: of two digits 0 to 49 are 20xx, the others 19xx.
    [[nodiscard]] int year() const {
        if (digits > 2) {
            return value;
        }
        return value + (value < 50 ? 2000 : 1900);
    }
};

/// What a text says about a date, in the order of the text.
struct DateParts {
    std::array<DateNumber, kMostNumbers> numbers;
    std::size_t count = 0;
    int month = 0;  ///< from a name; 0: none
    bool hasTime = false;
    std::int32_t seconds = 0;

    bool add(DateNumber number) {
        if (count == numbers.size()) {
            return false;
        }
        numbers[count++] = number;
        return true;
    }
};

/// Reads a text from its start to its end. Every take... gives false when the text is no date.
class DateReader {
public:
    explicit DateReader(std::string_view text) : rest_(text) {}

    bool read(DateParts& parts) {
        skipBlanks();
        while (!rest_.empty()) {
            const bool taken = isDigit(rest_.front()) ? takeNumber(parts) : takeName(parts);
            if (!taken || !takeSeparator()) {
                return false;
            }
        }
        return true;
    }

private:
    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

    /// A separator may follow an element; behind a slash or a hyphen another element must stand.
    bool takeSeparator() {
        skipBlanks();
        if (rest_.empty() || (rest_.front() != '/' && rest_.front() != '-')) {
            rest_.remove_prefix(!rest_.empty() && rest_.front() == ',' ? 1 : 0);
            skipBlanks();
            return true;
        }
        rest_.remove_prefix(1);
        skipBlanks();
        return !rest_.empty();
    }

    DateNumber takeDigits() {
        DateNumber number;
        while (!rest_.empty() && isDigit(rest_.front()) && number.digits <= kLongestNumber) {
            number.value = number.value * 10 + (rest_.front() - '0');
            ++number.digits;
            rest_.remove_prefix(1);
        }
        return number;
    }

    std::string takeWord() {
        const auto isLetter = [](char character) {
            return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
        };
        const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isLetter);
        const auto length = static_cast<std::size_t>(end - rest_.begin());
        std::string word = lower(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return word;
    }

    bool takeName(DateParts& parts) {
        const std::string word = takeWord();
        for (std::size_t i = 0; i < std::size(kMonthNames); ++i) {
            if (word == kMonthNames[i] || word == kMonthNames[i].substr(0, kShortName)) {
                const bool isFirst = parts.month == 0;
                parts.month = static_cast<int>(i) + 1;
                return isFirst;
            }
        }
        return false;
    }

    bool takeNumber(DateParts& parts) {
        const DateNumber number = takeDigits();
        if (number.digits > kLongestNumber) {
            return false;
        }
        const bool isTime = startsWithTimeMark() || startsWithHalfOfDay();
        return isTime ? takeTime(number, parts) : parts.add(number);
    }

    // A point parts hours and minutes as well as a colon does.
    [[nodiscard]] bool startsWithTimeMark() const {
        return rest_.size() > 1 && (rest_[0] == ':' || rest_[0] == '.') && isDigit(rest_[1]);
    }

    [[nodiscard]] bool startsWithHalfOfDay() const {
        DateReader ahead(rest_);
        ahead.skipBlanks();
        const std::string word = ahead.takeWord();
        return word == "am" || word == "pm";
    }

    bool takeTime(const DateNumber& first, DateParts& parts) {
        std::array<int, 3> clock = {first.value, 0, 0};
        for (std::size_t i = 1; i < clock.size() && startsWithTimeMark(); ++i) {
            rest_.remove_prefix(1);
            clock[i] = takeDigits().value;
        }
        if (startsWithHalfOfDay()) {
            skipBlanks();
            const bool afternoon = takeWord() == "pm";
            if (clock[0] > 12) {
                return false;
            }
            clock[0] = clock[0] % 12 + (afternoon ? 12 : 0);
        }
        const auto [hour, minute, second] = clock;
        const bool isFirst = !parts.hasTime;
        parts.hasTime = true;
        parts.seconds = (hour * 60 + minute) * 60 + second;
        return isFirst && hour < 24 && minute < 60 && second < 60;
    }

    std::string_view rest_;
};

std::optional<std::int32_t> dayOf(int year, int month, int day) {
    if (!isCalendarDate(year, month, day)) {
        return std::nullopt;
    }
    return dayNumber({year, month, day});
}

/// The day of a year by two numbers; an impossible month swaps them.
std::optional<std::int32_t> dayOf(int year, int first, int second, DateOrder order) {
    int month = order == DateOrder::dayFirst ? second : first;
    int day = order == DateOrder::dayFirst ? first : second;
    if (month > 12) {
        std::swap(month, day);
    }
    return dayOf(year, month, day);
}

std::optional<std::int32_t> dayByName(const DateParts& parts, int currentYear) {
    const DateNumber& first = parts.numbers[0];
    const DateNumber& second = parts.numbers[1];
    if (parts.count == 1) {
        return first.isYear() ? dayOf(first.year(), parts.month, 1)
                              : dayOf(currentYear, parts.month, first.value);
    }
    if (parts.count != 2) {
        return std::nullopt;
    }
    return first.isYear() ? dayOf(first.year(), parts.month, second.value)
                          : dayOf(second.year(), parts.month, first.value);
}

std::optional<std::int32_t> dayByTwo(const DateParts& parts, DateOrder order, int currentYear) {
    const DateNumber& first = parts.numbers[0];
    const DateNumber& second = parts.numbers[1];
    if (first.isYear()) {
        return dayOf(first.year(), second.value, 1);
    }
    return second.isYear() ? dayOf(second.year(), first.value, 1)
                           : dayOf(currentYear, first.value, second.value, order);
}

std::optional<std::int32_t> dayByThree(const DateParts& parts, DateOrder order) {
    const auto& [first, second, third] = parts.numbers;
    return first.isYear() ? dayOf(first.year(), second.value, third.value, DateOrder::monthFirst)
                          : dayOf(third.year(), first.value, second.value, order);
}

std::optional<std::int32_t> dayOfParts(const DateParts& parts, DateOrder order, int currentYear) {
    if (parts.month != 0) {
        return dayByName(parts, currentYear);
    }
    switch (parts.count) {
    case 0:
        return parts.hasTime ? std::optional<std::int32_t>(0) : std::nullopt;
    case 2:
        return dayByTwo(parts, order, currentYear);
    case 3:
        return dayByThree(parts, order);
    default:
        return std::nullopt;
    }
}

}  // namespace

std::optional<DateTime> dateFromText(std::string_view text, DateOrder order, int currentYear) {
    DateParts parts;
    if (!DateReader(text).read(parts)) {
        return std::nullopt;
    }
    const auto day = dayOfParts(parts, order, currentYear);
    if (!day) {
        return std::nullopt;
    }
    return DateTime{*day, parts.seconds};
}

}  // namespace util
