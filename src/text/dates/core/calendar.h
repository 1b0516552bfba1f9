// The automation calendar: Gregorian, the years 100 to 9999.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace vela {

using Day = std::chrono::sys_days;

// The day of three numbers of 16 bits; months and days beyond their ends carry over into the next,
// or the one before. The years 0 to 29 stand for 2000 to 2029, 30 to 99 for 1930 to 1999. None
// outside the calendar.
std::optional<Day> dayOf(int year, int month, int day);

// The day that many days later; none outside the calendar.
std::optional<Day> dayAfter(Day day, int days);

// 1 = Sunday to 7 = Saturday.
int weekday(Day day);

// As dd-mm-yyyy; a Day is such a date, too.
std::wstring dateText(std::chrono::year_month_day date);

// The days of a month by the simple rule: every fourth year has a 29 February, also 1900 and 2100.
// 31 for what is no month.
int monthLength(int year, int month);

}  // namespace vela
