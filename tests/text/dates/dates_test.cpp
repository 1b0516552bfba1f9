// Dates and times as text, the calendar behind them, and the stopwatch.
#include <gtest/gtest.h>

#include "text/dates/core/date_text.h"
#include "text/dates/core/stopwatch.h"
#include "text/dates/core/time_text.h"

namespace vela {
namespace {

using Text = const wchar_t*;

TEST(TextDates, ReadFieldsAtTheirPositions) {
    const std::tuple<Text, int, int, int> table[] = {
        {L"01/02/49", 1, 2, 2049},     {L"01.02.50", 1, 2, 1950}, {L"", 0, 0, 2000},
        {L" 1- 2- 2004 ", 1, 2, 2004}, {L"1/2/2004", 0, 0, 2004}, {L"-1-+2--5", -1, 2, 1995},
        {L"01-02-99999", 1, 2, 2000},
    };
    for (const auto& [date, day, month, year] : table) {
        EXPECT_EQ(std::tuple(dayIn(date), monthIn(date), yearIn(date)),
                  std::tuple(day, month, year))
            << date;
    }
}

TEST(TextDates, NameTheFirstFaultInOrder) {
    const std::pair<Text, int> table[] = {
        {L"29-02-1900", 0}, {L"31.12.2004", 0}, {L"01/01/00", 0},    {L"29-02-99", 7},
        {L"01/02-2004", 1}, {L"01x02x2004", 2}, {L"01-02-20045", 9}, {L"", 2},
        {L"01-13-1899", 3}, {L"01-01-xxxx", 3}, {L"32-13-2004", 4},  {L"00-01-2004", 5},
        {L"32-04-2004", 5}, {L"31-11-2004", 6}, {L"29-02-2003", 7},  {L"30-02-2004", 8},
    };
    for (const auto& [date, fault] : table) EXPECT_EQ(dateFault(date), fault) << date;
}

TEST(TextDates, AddDaysInTheRealCalendar) {
    const std::tuple<Text, int, Text> table[] = {
        {L"29-02-1900", 0, L"01-03-1900"},     {L"01-02-30 10:30", -1, L"31-01-1930"},
        {L"31-12-2003", 32767, L"16-09-2093"}, {L"45-13-2004", 0, L"14-02-2005"},
        {L"09-08-999", 0, L"09-08-0999"},      {L"31-12-9999", 1, L""},
        {L"01-01-99999999999999", 0, L""},     {L"", 0, L"30-11-1999"},
    };
    for (const auto& [date, days, later] : table) EXPECT_EQ(datePlus(date, days), later) << date;
}

TEST(TextDates, CompareDays) {
    // With whether the second is no earlier than the first, and not after 2200.
    const std::tuple<Text, Text, int, int, bool> table[] = {
        {L"01-01-2004", L"01-03-2004", 60, 3, true},
        {L"01-01-04", L"01/01/2004", 0, 2, true},
        {L"", L"", -9999, 0, false},
        {L"", L"01-01-2004", -9999, 3, false},
        {L"01-01-20x4", L"01-01-2004", -9999, 0, false},
        {L"01-01-1900", L"19-09-1989", -9999, 3, true},
        {L"01-01-2004", L"02-01-2200", -9999, 3, false},
    };
    for (const auto& [first, second, days, order, within] : table) {
        EXPECT_EQ(daysBetween(first, second), days) << first << second;
        EXPECT_EQ(compareDates(first, second), order) << first << second;
        EXPECT_EQ(isDateWithin(second, first, L"01-01-2200"), within) << first << second;
    }
    EXPECT_TRUE(isDateWithin(L"01-01-2004", L"01-01-2004", L"01-01-2004"));
}

TEST(TextDates, KnowTheCalendar) {
    EXPECT_EQ(weekday(dayOf(2004, 2, 29).value()), 1);
    EXPECT_EQ(weekday(dayOf(2004, 14, 31).value()), 5);
    EXPECT_FALSE(dayOf(-1, 1, 1) || dayOf(10000, 1, 1));
    EXPECT_FALSE(dayOf(9999, 32767, 32767) || dayOf(100, -32768, -32768));
    EXPECT_EQ(monthLength(2100, 2), 29);
    const int lengths[] = {31, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31};
    for (int month = 0; month < 14; ++month) EXPECT_EQ(monthLength(2003, month), lengths[month]);
}

TEST(TextDates, ReadTimesHoweverTheyAreSeparated) {
    const std::tuple<Text, int, Text> table[] = {
        {L" 9h30 ", 930, L"09:30"},  {L"9:5", 905, L"09:05"}, {L"12:345", 1234, L"12:34"},
        {L"9:05:30", 905, L"09:05"}, {L"9:", 900, L"09:00"},  {L":30", 30, L"00:30"},
        {L"9:-5", 900, L"09:00"},    {L"abc", 0, L"00:00"},   {L"9999999999", 9999, L"99:99"},
    };
    for (const auto& [text, time, written] : table) {
        EXPECT_EQ(readTime(text), time) << text;
        EXPECT_EQ(timeText(readTime(text)), written) << text;
    }
}

TEST(TextStopwatch, MeasuresAcrossTheEndOfTheClock) {
    Stopwatch watch;
    EXPECT_EQ(watch.milliseconds(5), 5);
    watch.start(0xFFFFFF00u);
    EXPECT_EQ(watch.milliseconds(0x100u), 512);
    watch.stop(0x200u);
    EXPECT_EQ(watch.milliseconds(0x900u), 768);
}

TEST(TextStopwatch, ShowsTimesByTheInheritedRounding) {
    // Milliseconds; seconds, minutes, hours; in words; by picture; whether a clock shows it.
    const std::tuple<std::int32_t, std::array<std::int32_t, 3>, Text, Text, bool> table[] = {
        {0, {0, 0, 0}, L"", L"00:00:00", true},
        {3200, {3, 0, 0}, L"3 Segundos ", L"00:00:03", true},
        {60'000, {60, 0, 0}, L"60 Segundos ", L"00:00:60", false},
        {3'723'400, {3723, 62, 1}, L"1 Hora 2 Minutos 3 Segundos ", L"01:02:03", true},
        {90'061'500, {90061, 1501, 25}, L"25 Horas 1 Minuto 1 Segundo ", L"25:01:01", false},
        {-1000, {-2, -1, -1}, L"59 Minutos 58 Segundos ", L"-1:59:58", false},
    };
    for (const auto& [milliseconds, parts, words, picture, shown] : table) {
        const ElapsedTime time(milliseconds);
        EXPECT_EQ((std::array{time.seconds, time.minutes, time.hours}), parts) << milliseconds;
        EXPECT_EQ(inWords(time), words);
        EXPECT_EQ(byPicture(time, L"hh:mm:ss"), picture);
        EXPECT_EQ(isTimeOfDay(time), shown);
    }
}

TEST(TextStopwatch, ReadsPicturesOfTimes) {
    const ElapsedTime time(90'123'200);  // 25:02:03
    const std::pair<Text, Text> table[] = {
        {L"HH\"h\"NN", L"25h02"},   {L"h:n:s", L"25:2:3"}, {L"hhhh", L"25"},
        {L"hh:nn AM/PM", L"25:02"}, {L"s\\", L"3"},        {L"Long Time", L"25:02:03"},
        {L"\"open", L"25:2:3"},     {L"", L"25:2:3"},      {L"hh mm a/p", L"25 02"},
    };
    for (const auto& [picture, shown] : table) EXPECT_EQ(byPicture(time, picture), shown);
}

}  // namespace
}  // namespace vela
