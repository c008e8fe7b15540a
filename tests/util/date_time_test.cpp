#include "util/date_time.h"

#include <gtest/gtest.h>

TEST(DayNumber, countsFromTheEndOf1899AndBack) {
    struct Case {
        util::CalendarDate date;
        std::int32_t day;
    };
    constexpr Case kCases[] = {
        {{1899, 12, 30}, 0},
        {{1899, 12, 31}, 1},
        {{1900, 3, 1}, 61},
        {{2000, 2, 29}, 36585},
        {{2024, 1, 31}, 45322},
    };
    for (const Case& example : kCases) {
        SCOPED_TRACE(example.day);
        EXPECT_EQ(util::dayNumber(example.date), example.day);
        EXPECT_EQ(util::calendarDate(example.day), example.date);
    }
}

TEST(CalendarDate, hasAMonthAndAYearOfFourDigits) {
    EXPECT_TRUE(util::isCalendarDate(100, 4, 30));
    EXPECT_FALSE(util::isCalendarDate(2024, 13, 1));
    EXPECT_FALSE(util::isCalendarDate(2024, 4, 31));
    EXPECT_FALSE(util::isCalendarDate(99, 1, 1));
    EXPECT_FALSE(util::isCalendarDate(10000, 1, 1));
}
