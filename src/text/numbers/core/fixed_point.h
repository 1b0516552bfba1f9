// Amounts of money: 64-bit fixed point with four decimals.
//
// Results that do not fit raise Overflow.
#pragma once

#include <cstdint>
#include <string>

namespace vela {

// In ten-thousandths.
using Currency = std::int64_t;

inline constexpr Currency kCurrencyOne = 10'000;

// The nearest amount, halves to the even one.
Currency currencyOf(double value);

// The exact product brought to four decimals, halves to the even one.
Currency product(Currency left, Currency right);

// `amount` rounded half away from zero to `kind` - 2 decimals: 2 rounds to units, 4 to hundredths,
// 1 to tens, 6 and above to all four decimals. 0 for kind 100. Raises DivisionByZero for a kind
// below -2, and Overflow when the amount times 10^(kind - 2) is no amount.
Currency rounded(Currency amount, std::int16_t kind);

// All digits of the amount, with a decimal point and without zeros at its end: "-0.5", "12".
std::wstring pointText(Currency amount);

}  // namespace vela
