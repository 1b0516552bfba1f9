#include "text/dates/core/date_text.h"

#include <algorithm>
#include <limits>

#include "text/core/digits.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

constexpr std::int16_t kNoDifference = -9999;

std::wstring_view part(std::wstring_view date, std::size_t from,
                       std::size_t count = std::wstring_view::npos) {
    return from < date.size() ? date.substr(from, count) : std::wstring_view();
}
std::wstring_view dayPart(std::wstring_view date) { return part(date, 0, 2); }
std::wstring_view monthPart(std::wstring_view date) { return part(date, 3, 2); }
std::wstring_view yearPart(std::wstring_view date) { return part(date, 6); }

// Unreadable is what does not fit 16 bits, too.
std::optional<std::int16_t> wholeNumber(std::wstring_view text) {
    const LeadingNumber number = leadingNumber(text);
    if (number.length == 0 || !trimmed(text.substr(number.length)).empty()) return std::nullopt;
    const auto value = static_cast<std::int16_t>(number.value);
    if (value != number.value) return std::nullopt;
    return value;
}

std::int16_t orZero(std::wstring_view text) { return wholeNumber(text).value_or(0); }

std::int16_t withCentury(int year) {
    if (year < 50) year += 2000;
    else if (year < 100) year += 1900;
    return static_cast<std::int16_t>(year);
}

std::optional<int> difference(std::wstring_view from, std::wstring_view to) {
    const auto first = readDate(from);
    const auto last = readDate(to);
    if (!first || !last) return std::nullopt;
    return static_cast<int>((*last - *first).count());
}

}  // namespace

std::int16_t dayIn(std::wstring_view date) { return orZero(dayPart(date)); }
std::int16_t monthIn(std::wstring_view date) { return orZero(monthPart(date)); }
std::int16_t yearIn(std::wstring_view date) { return withCentury(orZero(yearPart(date))); }

std::optional<Day> readDate(std::wstring_view date) {
    const auto day = wholeNumber(dayPart(date));
    const auto month = wholeNumber(monthPart(date));
    const auto year = wholeNumber(yearPart(date));
    if (!day || !month || !year) return std::nullopt;
    return dayOf(withCentury(*year), *month, *day);
}

std::wstring datePlus(std::wstring_view date, int days) {
    const auto number = [](std::wstring_view text) { return leadingNumber(text).value; };
    const auto start =
        dayOf(number(yearPart(date)), number(monthPart(date)), number(dayPart(date)));
    const auto end = start ? dayAfter(*start, days) : std::nullopt;
    return end ? dateText(*end) : std::wstring();
}

std::int16_t daysBetween(std::wstring_view from, std::wstring_view to) {
    const int days = difference(from, to).value_or(kNoDifference);
    const auto result = static_cast<std::int16_t>(days);
    return result == days ? result : kNoDifference;
}

std::int16_t compareDates(std::wstring_view first, std::wstring_view second) {
    if (first.empty() != second.empty()) return second.empty() ? 1 : 3;
    const auto days = difference(first, second);
    if (!days) return 0;
    if (*days == 0) return 2;
    return *days < 0 ? 1 : 3;
}

bool isDateWithin(std::wstring_view date, std::wstring_view from, std::wstring_view to) {
    return difference(from, date).value_or(-1) >= 0 && difference(date, to).value_or(-1) >= 0;
}

std::int16_t dateFault(std::wstring_view date) {
    if (trimmed(date).size() >= 11) return 9;
    const std::wstring_view separator = part(date, 2, 1);
    if (separator != part(date, 5, 1)) return 1;
    if (separator.find_first_of(L".-/") != 0) return 2;
    const int year = orZero(yearPart(date)) + (date.size() == 8 ? 1900 : 0);
    const int month = monthIn(date);
    const int day = dayIn(date);
    if (year < 1900) return 3;
    if (month < 1 || month > 12) return 4;
    if (day < 1 || day > 31) return 5;
    if (day <= monthLength(year, month)) return 0;
    if (month != 2) return 6;
    return year % 4 == 0 ? 8 : 7;
}

wchar_t dateSeparator(std::wstring_view today) {
    const std::wstring_view behind = part(today, 2);
    const auto found =
        std::find_if(behind.begin(), behind.end(), [](wchar_t c) { return !isDigit(c); });
    return found == behind.end() ? L'-' : *found;
}

std::wstring standardDate(std::wstring_view date, wchar_t separator, const DateReader& read) {
    std::wstring separated(date);
    std::replace_if(
        separated.begin(), separated.end(), [](wchar_t c) { return !isDigit(c); }, separator);
    const std::optional<Day> day = read(separated);
    return day ? dateText(*day) : std::wstring(date);
}

}  // namespace vela
