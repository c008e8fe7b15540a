#include "util/date_time.h"

namespace util {

namespace {

constexpr int kDaysInEra = 146097;  // 400 years of the Gregorian calendar
constexpr int kYearsInEra = 400;
/// Days from 1 March of year 0 to day 0 of the count, 30 December 1899.
constexpr int kDayZero = 693899;

constexpr bool isLeap(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int daysInMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : kDays[month - 1];
}

}  // namespace

// Both directions count years from March, so that the leap day is the last day of its year, and use
// the fact that months from March on repeat in groups of five with 153 days.

std::int32_t dayNumber(const CalendarDate& date) {
    const int year = date.month > 2 ? date.year : date.year - 1;
    const int era = year / kYearsInEra;
    const int yearOfEra = year % kYearsInEra;
    const int monthFromMarch = (date.month + 9) % 12;
    const int dayOfYear = (153 * monthFromMarch + 2) / 5 + date.day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysInEra + dayOfEra - kDayZero;
}

CalendarDate calendarDate(std::int32_t day) {
    const int shifted = day + kDayZero;
    const int era = shifted / kDaysInEra;
    const int dayOfEra = shifted % kDaysInEra;
    const int yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / (kDaysInEra - 1)) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int dayOfMonth = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const int month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const int year = era * kYearsInEra + yearOfEra + (month <= 2 ? 1 : 0);
    return {year, month, dayOfMonth};
}

bool isCalendarDate(int year, int month, int day) {
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= daysInMonth(year, month);
}

}  // namespace util
