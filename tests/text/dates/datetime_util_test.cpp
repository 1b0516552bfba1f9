// What DatetimeUtil and TickCount take from the platform.
#include "text/dates/DatetimeUtil.h"

#include "automation/late_objects.h"
#include "text/dates/core/date_text.h"
#include "text/user_locale.h"

namespace vela::test {
namespace {

TEST(TextDatetimeUtil, ReadsDatesInTheOrderOfTheLocale) {
    constexpr LCID kPortugal = 0x0816;
    constexpr LCID kAmerica = 0x0409;
    const std::tuple<LCID, const wchar_t*, const wchar_t*> table[] = {
        {kAmerica, L"05.03.2004", L"03-05-2004"}, {kPortugal, L"05.03.2004", L"05-03-2004"},
        {kAmerica, L"05-03-2004", L"03-05-2004"}, {kPortugal, L"05/03/2004", L"05-03-2004"},
        {kPortugal, L"2004-3-5", L"05-03-2004"},  {kPortugal, L"31-04-2004", L"31-04-2004"},
        {kPortugal, L"no date", L"no date"},
    };
    for (const auto& [locale, date, standard] : table) {
        EXPECT_EQ(standardDate(date, locale), standard) << locale;
    }
    EXPECT_EQ(dateSeparator(L"21/11/2026"), L'/');
    EXPECT_EQ(dateSeparator(L"20261121"), L'-');
}

TEST(TextDatetimeUtil, KnowsNoWeekdayOutsideTheCalendar) {
    const auto dates = create(L"VelaUtil10.DatetimeUtil");
    for (const Variant& year : {Variant(L"x"), Variant(99999L)}) {
        const std::vector<Variant> date{year, Variant(1L), Variant(29L)};
        EXPECT_EQ(textOf(callWith(dates.Get(), L"DiaDaSemana", date).result), L"0");
    }
}

TEST(TextDatetimeUtil, FormatsTimesOfDayAsThePlatformDoes) {
    EXPECT_EQ(formatted(Variant(L"13:2:3"), L"Long Time", 0x0409).view(), L"1:02:03 PM");
    const auto watch = create(L"VelaUtil10.TickCount");
    callWith(watch.Get(), L"Iniciar", {});
    const std::pair<std::wstring, std::wstring> table[] = {
        {L"", L""}, {L"hh:nn:ss", L"00:00:00"}, {std::wstring(3000, L'h'), L""}};
    for (const auto& [format, text] : table) {
        const Called called = callWith(watch.Get(), L"Texto", {Variant(format)});
        EXPECT_EQ(called.outcome, S_OK);
        EXPECT_EQ(textOf(called.result), text);
    }
}

}  // namespace
}  // namespace vela::test
