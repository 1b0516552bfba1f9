#include "text/numbers/core/number_bases.h"

#include <algorithm>
#include <limits>

#include "automation/core/runtime_error.h"

namespace vela {

namespace {

constexpr std::wstring_view kDigits = L"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr int kHex = 16;

void checkBase(int base) {
    if (base < 2 || base > static_cast<int>(kDigits.size())) {
        raise(RuntimeError::InvalidProcedureCall);
    }
}

// What a digit is worth in `base`, or -1.
int digitValue(wchar_t c, int base) {
    const wchar_t upper = c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    const std::size_t value = kDigits.find(upper);
    return value < static_cast<std::size_t>(base) ? static_cast<int>(value) : -1;
}

std::wstring_view leadingHex(std::wstring_view text) {
    const auto end =
        std::find_if(text.begin(), text.end(), [](wchar_t c) { return digitValue(c, kHex) < 0; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

// Of at most 8 digits.
std::uint32_t hexValue(std::wstring_view digits) {
    std::uint32_t value = 0;
    for (const wchar_t c : digits)
        value = value * kHex + static_cast<unsigned>(digitValue(c, kHex));
    return value;
}

}  // namespace

std::wstring toBase(std::int32_t value, int base) {
    checkBase(base);
    if (value <= 0) return L"0";
    std::wstring text;
    for (; value > 0; value /= base) text += kDigits[static_cast<std::size_t>(value % base)];
    std::reverse(text.begin(), text.end());
    return text;
}

std::int32_t fromBase(std::wstring_view text, int base) {
    checkBase(base);
    std::int64_t result = 0;
    for (const wchar_t c : text) {
        const int digit = digitValue(c, base);
        if (digit < 0) raise(RuntimeError::InvalidProcedureCall);
        result = result * base + digit;
        if (result > (std::numeric_limits<std::int32_t>::max)()) raise(RuntimeError::Overflow);
    }
    return static_cast<std::int32_t>(result);
}

std::wstring hexText(std::span<const std::uint8_t> bytes, std::wstring_view digits) {
    std::wstring text;
    text.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        text += digits[byte / kHex];
        text += digits[byte % kHex];
    }
    return text;
}

std::vector<std::uint8_t> bytesFromHex(std::wstring_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve((text.size() + 1) / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(hexValue(leadingHex(text.substr(i, 2)))));
    }
    return bytes;
}

std::int32_t longFromHex(std::wstring_view text) {
    std::wstring_view digits = leadingHex(text);
    if (digits.size() <= 4) return static_cast<std::int16_t>(hexValue(digits));
    digits.remove_prefix(std::min(digits.find_first_not_of(L'0'), digits.size()));
    if (digits.size() > 8) raise(RuntimeError::Overflow);
    return static_cast<std::int32_t>(hexValue(digits));
}

}  // namespace vela
