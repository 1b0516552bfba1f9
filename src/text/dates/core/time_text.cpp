#include "text/dates/core/time_text.h"

#include <algorithm>

#include "text/core/digits.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

std::wstring_view leadingDigits(std::wstring_view text) {
    const auto end = std::find_if(text.begin(), text.end(), [](wchar_t c) { return !isDigit(c); });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

}  // namespace

std::int16_t readTime(std::wstring_view time) {
    time = trimmed(time);
    std::wstring digits(leadingDigits(time));
    if (digits.size() < time.size()) {
        std::wstring_view minutes = leadingDigits(trimmed(time.substr(digits.size() + 1)));
        minutes.remove_prefix(std::min(minutes.find_first_not_of(L'0'), minutes.size()));
        digits += zeroPadded(minutes, 2);
    }
    return static_cast<std::int16_t>(leadingNumber(digits.substr(0, 4)).value);
}

std::wstring timeText(std::int16_t time) {
    return zeroPadded(time / 100, 2) + L':' + zeroPadded(time % 100, 2);
}

}  // namespace vela
