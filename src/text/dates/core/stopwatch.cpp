#include "text/dates/core/stopwatch.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

#include "text/core/digits.h"
#include "text/core/text_normalisation.h"
#include "text/core/upper_case.h"
#include "text/numbers/core/rounding.h"

namespace vela {

namespace {

void appendPart(std::wstring& text, std::int32_t number, std::wstring_view one,
                std::wstring_view more) {
    if (number < 1) return;
    text += std::to_wstring(number);
    text += number >= 2 ? more : one;
}

// The picture behind the names that have one.
std::wstring_view pictureOf(std::wstring_view name) {
    const std::wstring upper = upperCase(name);
    if (upper == L"LONG TIME" || upper == L"GENERAL DATE") return L"h:nn:ss";
    if (upper == L"MEDIUM TIME" || upper == L"SHORT TIME") return L"hh:nn";
    return name;
}

// The length of the mark for the half of the day that `picture` begins with; 0 when there is none.
std::size_t halfOfDayMark(std::wstring_view picture) {
    const std::wstring upper = upperCase(picture.substr(0, 5));
    for (const std::wstring_view mark : {L"AM/PM", L"AMPM", L"A/P"}) {
        if (upper.starts_with(mark)) return mark.size();
    }
    return 0;
}

// The part that a letter stands for behind the part of letter `before`.
std::optional<std::int32_t> partFor(wchar_t letter, wchar_t before, const ElapsedTime& time) {
    if (letter == L'H') return time.hours;
    if (letter == L'S') return time.restSeconds();
    if (letter == L'N' || (letter == L'M' && before == L'H')) return time.restMinutes();
    return std::nullopt;
}

}  // namespace

ElapsedTime::ElapsedTime(std::int32_t milliseconds)
    : seconds(integerPart(milliseconds / 1000.0)),
      minutes(integerPart(seconds / 60.0)),
      hours(integerPart(minutes / 60.0)) {}

std::wstring inWords(const ElapsedTime& time) {
    std::wstring text;
    appendPart(text, time.hours, L" Hora ", L" Horas ");
    appendPart(text, time.restMinutes(), L" Minuto ", L" Minutos ");
    appendPart(text, time.restSeconds(), L" Segundo ", L" Segundos ");
    return text;
}

std::wstring plainText(const ElapsedTime& time) {
    return std::to_wstring(time.hours) + L':' + std::to_wstring(time.restMinutes()) + L':' +
           std::to_wstring(time.restSeconds());
}

bool isTimeOfDay(const ElapsedTime& time) {
    const auto within = [](std::int32_t value, std::int32_t end) {
        return value >= 0 && value < end;
    };
    return within(time.hours, 24) && within(time.restMinutes(), 60) &&
           within(time.restSeconds(), 60);
}

std::wstring byPicture(const ElapsedTime& time, std::wstring_view picture) {
    picture = pictureOf(picture);
    std::wstring text;
    wchar_t last = 0;  // letter of the part before
    for (std::size_t at = 0; at < picture.size();) {
        const wchar_t c = picture[at];
        if (const auto part = partFor(upperCase(c), last, time)) {
            const std::size_t end = std::min(picture.find_first_not_of(c, at), picture.size());
            text += zeroPadded(*part, std::min<std::size_t>(end - at, 2));
            last = upperCase(c);
            at = end;
        } else if (c == L'"') {
            const std::size_t close = std::min(picture.find(L'"', at + 1), picture.size());
            text += picture.substr(at + 1, close - at - 1);
            at = close + 1;
        } else if (const std::size_t mark = halfOfDayMark(picture.substr(at))) {
            at += mark;
        } else {
            if (c == L'\\') ++at;
            if (at < picture.size()) text += picture[at++];
        }
    }
    return last == 0 ? plainText(time) : std::wstring(trimmed(text));
}

}  // namespace vela
