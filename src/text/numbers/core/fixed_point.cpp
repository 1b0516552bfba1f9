#include "text/numbers/core/fixed_point.h"

#include <cmath>
#include <limits>

#include "automation/core/runtime_error.h"
#include "text/numbers/core/rounding.h"

namespace vela {

namespace {

constexpr Currency kMost = (std::numeric_limits<Currency>::max)();
constexpr auto kScale = static_cast<std::uint64_t>(kCurrencyOne);

constexpr std::uint64_t magnitude(Currency amount) {
    return amount < 0 ? 0 - static_cast<std::uint64_t>(amount) : static_cast<std::uint64_t>(amount);
}

Currency withSign(std::uint64_t magnitude, bool negative) {
    constexpr auto most = static_cast<std::uint64_t>(kMost);
    if (magnitude > most + (negative ? 1 : 0)) raise(RuntimeError::Overflow);
    return static_cast<Currency>(negative ? 0 - magnitude : magnitude);
}

// The sum of two amounts that are not negative.
Currency sumOf(Currency left, Currency right) {
    if (left > kMost - right) raise(RuntimeError::Overflow);
    return left + right;
}

}  // namespace

Currency currencyOf(double value) {
    const double units = halfToEven(value * kCurrencyOne);
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(units >= -limit && units < limit)) raise(RuntimeError::Overflow);
    return static_cast<Currency>(units);
}

Currency product(Currency left, Currency right) {
    const std::uint64_t a = magnitude(left);
    const std::uint64_t b = magnitude(right);
    // a * b / scale with b split at the decimal point, then a: each part fits 64 bits.
    const std::uint64_t aWhole = a / kScale;
    if (aWhole != 0 && b > (magnitude(kMost) + 1) / aWhole) raise(RuntimeError::Overflow);
    const std::uint64_t decimals = (a % kScale) * (b % kScale);
    std::uint64_t result = aWhole * b + (a % kScale) * (b / kScale) + decimals / kScale;
    const std::uint64_t rest = decimals % kScale;
    if (rest > kScale / 2 || (rest == kScale / 2 && result % 2 == 1)) ++result;
    return withSign(result, (left < 0) != (right < 0));
}

Currency rounded(Currency amount, std::int16_t kind) {
    if (kind == 100) return 0;
    const Currency factor = currencyOf(scaled(1, kind - 2));
    if (factor == 0) raise(RuntimeError::DivisionByZero);
    const Currency half = currencyOf(scaled(5, 1 - kind));
    const Currency positive = withSign(magnitude(amount), false);
    const Currency whole = product(sumOf(positive, half), factor) / kCurrencyOne;
    const double result =
        static_cast<double>(whole) / (static_cast<double>(factor) / double{kCurrencyOne});
    return currencyOf(amount < 0 ? -result : result);
}

std::wstring pointText(Currency amount) {
    const std::uint64_t size =
        amount < 0 ? 0 - static_cast<std::uint64_t>(amount) : static_cast<std::uint64_t>(amount);
    std::wstring fraction =
        std::to_wstring(kCurrencyOne + static_cast<Currency>(size % kCurrencyOne));
    fraction.front() = L'.';
    fraction.erase(fraction.find_last_not_of(L"0.") + 1);
    return (amount < 0 ? L"-" : L"") + std::to_wstring(size / kCurrencyOne) + fraction;
}

}  // namespace vela
