// What DatetimeUtil and TickCount take from the platform.
#include "text/DatetimeUtil.h"

#include "automation/late_bound.h"
#include "text/date_text.h"
#include "text/user_locale.h"

namespace vela::test {
namespace {

TEST(TextDatetimeUtil, ReadsDatesInTheOrderOfTheLocale) {
    constexpr LCID kPortugal = 0x0816;
    constexpr LCID kAmerica = 0x0409;
    const std::tuple<LCID, const wchar_t*, const wchar_t*> table[] = {
        {kAmerica, L"05.03.2004", L"05-03-2004"},  {kPortugal, L"5.3.2004", L"05-03-2004"},
        {kAmerica, L"5.3.2004", L"03-05-2004"},    {kAmerica, L"05/03/2004", L"03-05-2004"},
        {kPortugal, L"05/03/2004", L"05-03-2004"}, {kPortugal, L"2004-3-5", L"05-03-2004"},
        {kPortugal, L"31-04-2004", L"31-04-2004"}, {kPortugal, L"no date", L"no date"},
        {kPortugal, L"29-02-1900", L"29-02-1900"}, {kAmerica, L"05-03-30", L"05-03-2030"},
    };
    for (const auto& [locale, date, standard] : table) {
        EXPECT_EQ(standardDate(date, locale), standard) << locale;
    }
    EXPECT_EQ(dateSeparator(L"21/11/2026"), L'/');
    EXPECT_EQ(dateSeparator(L"2026.11.21"), L'.');
    EXPECT_EQ(dateSeparator(L"20261121"), L'-');
}

TEST(TextDatetimeUtil, TakesNumbersOfAnyKindForTheWeekday) {
    const auto dates = create(L"VelaUtil10.DatetimeUtil");
    const auto weekday = [&](const Variant& year, const Variant& month) {
        return callWith(dates.Get(), L"DiaDaSemana", {year, month, Variant(29L)}).result.iVal;
    };
    EXPECT_EQ(weekday(Variant(L"2004"), Variant(arg(2.0))), 1);
    EXPECT_EQ(weekday(Variant(1900L), Variant(2L)), 5);
    EXPECT_EQ(weekday(Variant(99999L), Variant(1L)), 0);
    EXPECT_EQ(weekday(Variant(L"x"), Variant(1L)), 0);
}

TEST(TextDatetimeUtil, FormatsTimesOfDayAsThePlatformDoes) {
    const Variant time(L"13:2:3");
    EXPECT_EQ(formatted(time, L"hh:mm", 0x0409).view(), L"13:02");
    EXPECT_EQ(formatted(time, L"Long Time", 0x0409).view(), L"1:02:03 PM");
    EXPECT_EQ(formatted(time, L"hh\"h\"nn", 0x0409).view(), L"13h02");
    const std::wstring refused(3000, L'h');
    EXPECT_THROW(formatted(time, refused), RuntimeFailure);
    const auto watch = create(L"VelaUtil10.TickCount");
    callWith(watch.Get(), L"Iniciar", {});
    const std::pair<std::wstring, std::wstring> table[] = {
        {L"", L""}, {L"hh:nn:ss", L"00:00:00"}, {refused, L""}};
    for (const auto& [format, text] : table) {
        const Called called = callWith(watch.Get(), L"Texto", {Variant(format)});
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(textOf(called.result), text);
    }
}

}  // namespace
}  // namespace vela::test
