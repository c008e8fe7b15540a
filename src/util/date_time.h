#pragma once

#include <compare>
#include <cstdint>

namespace util {

/// A moment on the calendar, to the second, without zone: a day count (day 0 is 30 December 1899)
/// and the seconds of that day (0 to 86399). Usable from year 100 to 9999.
struct DateTime {
    std::int32_t day = 0;
    std::int32_t seconds = 0;

    friend constexpr auto operator<=>(const DateTime&, const DateTime&) = default;
};

/// The parts of a date on the Gregorian calendar: year 100 to 9999, month 1 to 12, day 1 to 31.
struct CalendarDate {
    int year = 1899;
    int month = 12;
    int day = 30;

    friend constexpr auto operator<=>(const CalendarDate&, const CalendarDate&) = default;
};

/// Day count of a calendar date; the parts must form a real date.
std::int32_t dayNumber(const CalendarDate& date);
/// Calendar date of a day count.
CalendarDate calendarDate(std::int32_t day);
/// True when the three numbers form a date between the years 100 and 9999.
bool isCalendarDate(int year, int month, int day);

}  // namespace util
