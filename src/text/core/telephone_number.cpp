#include "text/core/telephone_number.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "text/core/digits.h"

namespace vela {

namespace {

constexpr std::size_t kFullLength = 9;

// How many of nine digits are the code; 0 when no number begins like that.
std::size_t codeLength(std::wstring_view digits) {
    constexpr std::wstring_view kServices = L"3678";
    if (digits.starts_with(L"21") || digits.starts_with(L"22") || digits.starts_with(L'9')) {
        return 2;
    }
    return digits.starts_with(L'2') || kServices.find(digits.front()) != kServices.npos ? 3 : 0;
}

// Takes the country's prefix off; true when there was one.
bool takeCountry(std::wstring_view& digits) {
    for (const std::wstring_view prefix : {L"+351", L"00351"}) {
        if (!digits.starts_with(prefix)) continue;
        digits.remove_prefix(prefix.size());
        return true;
    }
    return false;
}

// The value of up to nine digits.
int valueOf(std::wstring_view digits) {
    int value = 0;
    for (const wchar_t digit : digits) value = value * 10 + (digit - L'0');
    return value;
}

}  // namespace

TelephoneNumber telephoneNumber(std::wstring_view text) {
    constexpr std::wstring_view kPunctuation = L" -./()";
    std::wstring dialled;
    std::ranges::remove_copy_if(text, std::back_inserter(dialled), [&](wchar_t unit) {
        return kPunctuation.find(unit) != kPunctuation.npos;
    });
    std::wstring_view digits = dialled;
    const bool national = !takeCountry(digits);
    if (!std::ranges::all_of(digits, isDigit)) return {};
    if (digits.size() < kFullLength) return {0, national ? valueOf(digits) : 0};
    const std::size_t length = digits.size() == kFullLength ? codeLength(digits) : 0;
    if (length == 0) return {};
    return {valueOf(digits.substr(0, length)), valueOf(digits.substr(length))};
}

}  // namespace vela
