#include "text/dates/core/calendar.h"

#include "text/core/digits.h"

namespace vela {

namespace chrono = std::chrono;

std::optional<Day> dayOf(int year, int month, int day) {
    if (year < 0 || year > 9999) return std::nullopt;
    if (year < 100) year += year < 30 ? 2000 : 1900;
    const auto first = chrono::year{year} / chrono::January + chrono::months{month - 1};
    return dayAfter(Day{first / 1}, day - 1);
}

std::optional<Day> dayAfter(Day day, int days) {
    constexpr Day begin{chrono::year{100} / 1 / 1};
    constexpr Day last{chrono::year{9999} / 12 / 31};
    const Day result = day + chrono::days{days};
    if (result < begin || result > last) return std::nullopt;
    return result;
}

int weekday(Day day) { return static_cast<int>(chrono::weekday{day}.c_encoding()) + 1; }

std::wstring dateText(chrono::year_month_day date) {
    return zeroPadded(unsigned{date.day()}, 2) + L'-' + zeroPadded(unsigned{date.month()}, 2) +
           L'-' + zeroPadded(int{date.year()}, 4);
}

int monthLength(int year, int month) {
    switch (month) {
        case 2: return year % 4 == 0 ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11: return 30;
        default: return 31;
    }
}

}  // namespace vela
