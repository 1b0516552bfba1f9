// Dates and times as text, the calendar behind them, and the stopwatch.
#include <gtest/gtest.h>

#include "text/date_text.h"
#include "text/stopwatch.h"
#include "text/time_text.h"

namespace vela {
namespace {

TEST(TextDates, ReadFieldsAtTheirPositions) {
    struct {
        const wchar_t* date;
        int day, month, year;
    } const table[] = {
        {L"31-12-2004", 31, 12, 2004},
        {L"01/02/49", 1, 2, 2049},
        {L"01.02.99", 1, 2, 1999},
        {L"01-02-100", 1, 2, 100},
        {L"", 0, 0, 2000},
        {L"1/2/2004", 0, 0, 2004},
        {L" 1- 2- 2004 ", 1, 2, 2004},
        {L"01-02-99999", 1, 2, 2000},
        {L"-1-+2--5", -1, 2, 1995},
        {L"01-02-20 4", 1, 2, 2000},
    };
    for (const auto& row : table) {
        EXPECT_EQ(dayIn(row.date), row.day) << row.date;
        EXPECT_EQ(monthIn(row.date), row.month) << row.date;
        EXPECT_EQ(yearIn(row.date), row.year) << row.date;
    }
}

TEST(TextDates, NameTheFirstFaultInOrder) {
    struct {
        const wchar_t* date;
        int fault;
    } const table[] = {
        {L"29-02-1900", 0},      {L"31.12.2004", 0}, {L"01-01-99", 0},   {L"01/01/00", 0},
        {L"01-01-2004 ", 0},     {L"31-04-2004", 6}, {L"01/02-2004", 1}, {L"01x02x2004", 2},
        {L"01-02-20045", 9},     {L"", 2},           {L"01-02", 1},      {L"010203", 1},
        {L"01-01-1899", 3},      {L"01-13-1899", 3}, {L"01-01-899", 3},  {L"01-00-2004", 4},
        {L"32-13-2004", 4},      {L"00-01-2004", 5}, {L"32-04-2004", 5}, {L"31-11-2004", 6},
        {L"29-02-2003", 7},      {L"30-02-2004", 8}, {L"30-02-2003", 7}, {L"29-02-99", 7},
        {L"29-02-00", 0},        {L"xx-01-2004", 5}, {L"01-01-xxxx", 3}, {L"            ", 2},
        {L"   01-01-2004  ", 1},
    };
    for (const auto& row : table) EXPECT_EQ(dateFault(row.date), row.fault) << row.date;
}

TEST(TextDates, AddDaysInTheRealCalendar) {
    struct {
        const wchar_t* date;
        int days;
        const wchar_t* expected;
    } const table[] = {
        {L"29-02-1900", 0, L"01-03-1900"},
        {L"28-02-2000", 1, L"29-02-2000"},
        {L"31-12-2003", 32767, L"16-09-2093"},
        {L"45-13-2004", 0, L"14-02-2005"},
        {L"01-01-30", 0, L"01-01-1930"},
        {L"01-01-29", 0, L"01-01-2029"},
        {L"01-02-2004 10:30", 0, L"01-02-2004"},
        {L"", 0, L"30-11-1999"},
        {L"31-12-9999", 1, L""},
        {L"01-01-0100", -1, L""},
        {L"01-01--5", 0, L""},
        {L"01-01-99999999999999", 0, L""},
    };
    for (const auto& row : table) EXPECT_EQ(datePlus(row.date, row.days), row.expected) << row.date;
}

TEST(TextDates, CompareDays) {
    struct {
        const wchar_t *first, *second;
        int days, order;
    } const table[] = {
        {L"01-01-2004", L"01-03-2004", 60, 3},    {L"01-03-2004", L"01-01-2004", -60, 1},
        {L"01-01-04", L"01/01/2004", 0, 2},       {L"", L"", -9999, 0},
        {L"", L"01-01-2004", -9999, 3},           {L"xx", L"", -9999, 1},
        {L"01-01-20x4", L"01-01-2004", -9999, 0}, {L"01-01-1900", L"18-09-1989", 32767, 3},
        {L"01-01-1900", L"19-09-1989", -9999, 3}, {L"01-01-2004", L"01-01-1900", -9999, 1},
        {L"01-01-2004", L"99-99-9999", -9999, 0},
    };
    for (const auto& row : table) {
        EXPECT_EQ(daysBetween(row.first, row.second), row.days) << row.first << row.second;
        EXPECT_EQ(compareDates(row.first, row.second), row.order) << row.first << row.second;
    }
    EXPECT_TRUE(isDateWithin(L"01-01-2004", L"01-01-2004", L"01-01-2004"));
    EXPECT_TRUE(isDateWithin(L"01-01-2004", L"01-01-1900", L"01-01-2200"));
    EXPECT_FALSE(isDateWithin(L"31-12-2003", L"01-01-2004", L"31-12-2004"));
    EXPECT_FALSE(isDateWithin(L"01-01-2005", L"01-01-2004", L"31-12-2004"));
    EXPECT_FALSE(isDateWithin(L"01-01-2004", L"01-01-2004", L""));
}

TEST(TextDates, KnowTheCalendar) {
    struct {
        int year, month, day, weekday;
    } const days[] = {
        {2004, 2, 29, 1}, {2026, 11, 21, 7}, {1900, 2, 29, 5},  {2004, 0, 0, 1},
        {99, 12, 31, 6},  {0, 1, 1, 7},      {2004, 14, 31, 5}, {9999, 12, 31, 6},
    };
    for (const auto& row : days) {
        const auto day = dayOf(row.year, row.month, row.day);
        ASSERT_TRUE(day) << row.year;
        EXPECT_EQ(weekday(*day), row.weekday) << row.year << " " << row.month;
    }
    EXPECT_FALSE(dayOf(-1, 1, 1));
    EXPECT_FALSE(dayOf(10000, 1, 1));
    EXPECT_FALSE(dayOf(9999, 32767, 32767));
    EXPECT_FALSE(dayOf(100, -32768, -32768));
    EXPECT_EQ(monthLength(2100, 2), 29);
    EXPECT_EQ(monthLength(2003, 2), 28);
    EXPECT_EQ(monthLength(-4, 2), 29);
    EXPECT_EQ(monthLength(2004, 4), 30);
    for (const int month : {1, 0, 13, -2, 12}) EXPECT_EQ(monthLength(2004, month), 31);
}

TEST(TextDates, BringDateTextsIntoTheStandardForm) {
    std::wstring asked;
    const DateReader month31 = [&](const std::wstring& text) {
        asked = text;
        return text == L"2004/1/31" ? dayOf(2004, 1, 31) : std::nullopt;
    };
    struct {
        const wchar_t *date, *expected, *asked;
    } const table[] = {
        {L"05.03.2004", L"05-03-2004", L""},
        {L"05-03-30", L"05-03-2030", L""},
        {L"2004-1-31", L"31-01-2004", L"2004/1/31"},
        {L"05/03/2004", L"05/03/2004", L"05/03/2004"},
        {L"29 02 1900", L"29 02 1900", L"29/02/1900"},
        {L"abc", L"abc", L"///"},
    };
    for (const auto& row : table) {
        asked.clear();
        EXPECT_EQ(standardDate(row.date, L'/', month31), row.expected);
        EXPECT_EQ(asked, row.asked);
    }
    EXPECT_EQ(dateSeparator(L"21/11/2026"), L'/');
    EXPECT_EQ(dateSeparator(L"2026-11-21"), L'-');
    EXPECT_EQ(dateSeparator(L"20261121"), L'-');
}

TEST(TextDates, ReadTimesHoweverTheyAreSeparated) {
    struct {
        const wchar_t* text;
        int time;
        const wchar_t* written;
    } const table[] = {
        {L"9:05", 905, L"09:05"},
        {L"9:5", 905, L"09:05"},
        {L"5", 5, L"00:05"},
        {L" 9h30 ", 930, L"09:30"},
        {L"9:05:30", 905, L"09:05"},
        {L"9:", 900, L"09:00"},
        {L":30", 30, L"00:30"},
        {L"abc", 0, L"00:00"},
        {L"12:345", 1234, L"12:34"},
        {L"9:12345678901234567890", 9123, L"91:23"},
        {L"99999999999999999999", 9999, L"99:99"},
        {L"9:-5", 900, L"09:00"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(readTime(row.text), row.time) << row.text;
        EXPECT_EQ(timeText(readTime(row.text)), row.written) << row.text;
    }
}

TEST(TextStopwatch, MeasuresAcrossTheEndOfTheClock) {
    Stopwatch watch;
    EXPECT_EQ(watch.milliseconds(5), 5);
    watch.start(0xFFFFFF00u);
    EXPECT_EQ(watch.milliseconds(0xFFFFFF00u), 0);
    EXPECT_EQ(watch.milliseconds(0x100u), 512);
    watch.stop(0x200u);
    EXPECT_EQ(watch.milliseconds(0x900u), 768);
    watch.start(7);
    EXPECT_EQ(watch.milliseconds(9), 2);
}

TEST(TextStopwatch, ShowsTimesByTheInheritedRounding) {
    struct {
        std::int32_t milliseconds, seconds, minutes, hours;
        const wchar_t *words, *plain, *picture;  // by "hh:mm:ss"
    } const table[] = {
        {0, 0, 0, 0, L"", L"0:0:0", L"00:00:00"},
        {3000, 2, 0, 0, L"2 Segundos ", L"0:0:2", L"00:00:02"},
        {3200, 3, 0, 0, L"3 Segundos ", L"0:0:3", L"00:00:03"},
        {60'000, 60, 0, 0, L"60 Segundos ", L"0:0:60", L"00:00:60"},
        {61'500, 61, 1, 0, L"1 Minuto 1 Segundo ", L"0:1:1", L"00:01:01"},
        {3'723'400, 3723, 62, 1, L"1 Hora 2 Minutos 3 Segundos ", L"1:2:3", L"01:02:03"},
        {90'123'200, 90123, 1502, 25, L"25 Horas 2 Minutos 3 Segundos ", L"25:2:3", L"25:02:03"},
        {-1000, -2, -1, -1, L"59 Minutos 58 Segundos ", L"-1:59:58", L"-1:59:58"},
    };
    for (const auto& row : table) {
        const ElapsedTime time(row.milliseconds);
        EXPECT_EQ(time.seconds, row.seconds) << row.milliseconds;
        EXPECT_EQ(time.minutes, row.minutes) << row.milliseconds;
        EXPECT_EQ(time.hours, row.hours) << row.milliseconds;
        EXPECT_EQ(inWords(time), row.words);
        EXPECT_EQ(plainText(time), row.plain);
        EXPECT_EQ(byPicture(time, L"hh:mm:ss"), row.picture);
        const bool shown = row.hours >= 0 && row.hours < 24 && row.milliseconds != 60'000;
        EXPECT_EQ(isTimeOfDay(time), shown);
    }
}

TEST(TextStopwatch, ReadsPicturesOfTimes) {
    const ElapsedTime time(90'123'200);  // 25:02:03
    struct {
        const wchar_t *picture, *expected;
    } const table[] = {
        {L"h:n:s", L"25:2:3"},       {L"HH\"h\"NN", L"25h02"},
        {L"hh\\hnn", L"25h02"},      {L"hh:nn AM/PM", L"25:02"},
        {L"Long Time", L"25:02:03"}, {L"short time", L"25:02"},
        {L"nn:ss", L"02:03"},        {L"hhhh", L"25"},
        {L"\"open", L"25:2:3"},      {L"s\\", L"3"},
        {L"@@@@", L"25:2:3"},        {L"", L"25:2:3"},
        {L"hh mm a/p", L"25 02"},    {L"s\"", L"3"},
        {L"h.m.s", L"25.2.3"},
    };
    for (const auto& row : table) EXPECT_EQ(byPicture(time, row.picture), row.expected);
}

}  // namespace
}  // namespace vela
