// Decimal digits in text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vela {

constexpr bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// A whole number at the beginning of a text.
struct LeadingNumber {
    int value = 0;  // at most 999,999 either way
    std::size_t length =
        0;  // with the blanks and the sign before the digits; 0 when there are none
};

constexpr LeadingNumber leadingNumber(std::wstring_view text) {
    std::size_t at = std::min(text.find_first_not_of(L' '), text.size());
    const bool negative = at < text.size() && text[at] == L'-';
    if (negative || (at < text.size() && text[at] == L'+')) ++at;
    const std::size_t first = at;
    int value = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        value = std::min(value * 10 + (text[at] - L'0'), 999'999);
    }
    if (at == first) return {};
    return {negative ? -value : value, at};
}

// A number as text, with zeros before it up to a width.
inline std::wstring zeroPadded(std::wstring_view number, std::size_t width) {
    std::wstring text(width - std::min(width, number.size()), L'0');
    return text.append(number);
}
inline std::wstring zeroPadded(std::int64_t number, std::size_t width) {
    return zeroPadded(std::to_wstring(number), width);
}

}  // namespace vela
