// What DatetimeUtil and TickCount take from the platform.
#include "text/DatetimeUtil.h"

#include "automation/late_bound.h"
#include "text/user_locale.h"

namespace vela::test {
namespace {

TEST(TextDatetimeUtil, ReadsDatesInTheOrderOfTheLocale) {
    constexpr LCID kPortugal = 0x0816;
    constexpr LCID kAmerica = 0x0409;
    struct {
        LCID locale;
        const wchar_t *date, *expected;
    } const table[] = {
        {kAmerica, L"05.03.2004", L"05-03-2004"},  {kPortugal, L"5.3.2004", L"05-03-2004"},
        {kAmerica, L"5.3.2004", L"03-05-2004"},    {kAmerica, L"05/03/2004", L"03-05-2004"},
        {kPortugal, L"05/03/2004", L"05-03-2004"}, {kPortugal, L"2004-3-5", L"05-03-2004"},
        {kPortugal, L"31-04-2004", L"31-04-2004"}, {kPortugal, L"no date", L"no date"},
        {kPortugal, L"29-02-1900", L"29-02-1900"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(standardDate(row.date, row.locale), row.expected) << row.locale;
    }
}

TEST(TextDatetimeUtil, TakesNumbersOfAnyKindForTheWeekday) {
    const auto dates = create(L"VelaUtil10.DatetimeUtil");
    struct {
        Variant year, month;
        short day;
        short expected;
    } const table[] = {
        {Variant(L"2004"), Variant(arg(2.0)), 29, 1}, {Variant(1900L), Variant(2L), 29, 5},
        {Variant(2004L), Variant(0L), 0, 1},          {Variant(99999L), Variant(1L), 1, 0},
        {Variant(L"x"), Variant(1L), 1, 0},           {Variant(-5L), Variant(1L), 1, 0},
    };
    for (const auto& row : table) {
        const Called called =
            call(dates.Get(), L"DiaDaSemana", {row.year, row.month, arg(row.day)});
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(called.result.iVal, row.expected) << row.day;
    }
}

TEST(TextDatetimeUtil, FormatsTimesOfDayAsThePlatformDoes) {
    const Variant time(L"13:2:3");
    struct {
        const wchar_t *picture, *expected;
    } const table[] = {
        {L"hh:nn:ss", L"13:02:03"},    {L"h:n:s", L"13:2:3"},     {L"hh:mm", L"13:02"},
        {L"Long Time", L"1:02:03 PM"}, {L"Short Time", L"13:02"}, {L"hh\"h\"nn", L"13h02"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(formatted(time, row.picture, 0x0409).view(), row.expected);
    }
    EXPECT_THROW(formatted(time, std::wstring(3000, L'h')), RuntimeFailure);
}

TEST(TextDatetimeUtil, MeasuresWithTheSystemsTick) {
    const auto watch = createAs<_TickCount>(L"VelaUtil10.TickCount");
    LONG first = -1, second = -1;
    EXPECT_EQ(watch->Iniciar(), S_OK);
    Sleep(60);
    EXPECT_EQ(watch->Milisegundos(&first), S_OK);
    EXPECT_GE(first, 45);
    EXPECT_EQ(watch->Parar(), S_OK);
    watch->Milisegundos(&first);
    Sleep(40);
    watch->Milisegundos(&second);
    EXPECT_EQ(first, second);
    Bstr words, byFormat, tooLong;
    EXPECT_EQ(watch->Texto(nullptr, words.put()), S_OK);
    EXPECT_EQ(words.view(), L"");
    EXPECT_EQ(watch->Texto(Bstr(L"hh:nn:ss").get(), byFormat.put()), S_OK);
    EXPECT_EQ(byFormat.view(), L"00:00:00");
    EXPECT_EQ(watch->Texto(Bstr(std::wstring(3000, L'h')).get(), tooLong.put()), S_OK);
    EXPECT_EQ(tooLong.view(), L"");
}

TEST(TextDatetimeUtil, SharesOneStopwatch) {
    const auto dates = createAs<_DatetimeUtil>(L"VelaUtil10.DatetimeUtil");
    const auto others = createAs<_DatetimeUtil>(L"VelaUtil10.DatetimeUtil");
    ComPtr<_TickCount> first, second;
    EXPECT_EQ(dates->get_Contador(&first), S_OK);
    EXPECT_EQ(others->get_Contador(&second), S_OK);
    EXPECT_TRUE(first);
    EXPECT_EQ(first.Get(), second.Get());
}

}  // namespace
}  // namespace vela::test
