// Dates held as text dd-mm-yyyy. Positions are fixed: the day is characters 1 and 2, the month 4
// and 5, the year all from 7 on. No failure is raised here.
//
// A field is a whole number: digits, with blanks around them and a sign if need be.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "text/dates/core/calendar.h"

namespace vela {

// The fields; 0 where unreadable. A year below 50 counts from 2000, one below 100 from 1900, so
// that an unreadable year is 2000.
std::int16_t dayIn(std::wstring_view date);
std::int16_t monthIn(std::wstring_view date);
std::int16_t yearIn(std::wstring_view date);

// The day that the fields name, days and months beyond their ends carried over; none when a field
// is unreadable or the calendar has no such day.
std::optional<Day> readDate(std::wstring_view date);

// `date`, whose fields are the numbers that they begin with, or 0, and `days` more, as text; empty
// outside the calendar. A two-digit year is one of 1930 to 2029.
std::wstring datePlus(std::wstring_view date, int days);

// Days from one date to another, positive when the second is later; -9999 when one is unreadable or
// they are further apart than 16 bits can tell.
std::int16_t daysBetween(std::wstring_view from, std::wstring_view to);

// 1 when the first date is later, or the second empty and the first not; 2 when they are the same
// day; 3 when the first is earlier, or empty and the second not; 0 when one is unreadable, or both
// are empty.
std::int16_t compareDates(std::wstring_view first, std::wstring_view second);

// Whether `date` lies between the other two, both included; false when one is unreadable.
bool isDateWithin(std::wstring_view date, std::wstring_view from, std::wstring_view to);

// 0 for a date, or the first of its faults, looked for in this order:
//     9  11 characters or more, without the blanks around them
//     1  the 3rd character is not the 6th         2  it is none of . - /
//     3  the year is below 1900; an 8-character text has years of the 1900s
//     4  the month is not 1 to 12                 5  the day is not 1 to 31
//     6, 7, 8  the day is above 30, 28 or 29 in a month (of such a year) with no more
std::int16_t dateFault(std::wstring_view date);

// How the user's locale reads a date; none when it is no date to it.
using DateReader = std::function<std::optional<Day>(const std::wstring& text)>;

// What separates the parts of a date as the user's locale writes it: the first character from the
// 3rd on that is no digit; '-' when there is none.
wchar_t dateSeparator(std::wstring_view today);

// A date text as dd-mm-yyyy; the text itself when it is no date. It is what `read` makes of it,
// with `separator` in the place of all that is no digit.
std::wstring standardDate(std::wstring_view date, wchar_t separator, const DateReader& read);

}  // namespace vela
