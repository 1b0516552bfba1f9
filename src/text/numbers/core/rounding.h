// Rounding of floating point numbers, and the integer and decimal parts as callers know them.
#pragma once

#include <cstdint>

namespace vela {

// The nearest whole number, halves to the even one, whatever rounding the host has set.
double halfToEven(double value);

// `value` times 10^`exponent`, alike on every platform: its power functions differ in the last
// digit.
double scaled(double value, int exponent);

// Raises Overflow for numbers beyond 32 bits and for what is no number.
std::int32_t toInt32(double whole);

// `value` - 0.5 rounded half to even. That is the integer part of a number with decimals; of whole
// numbers the even ones are kept and the odd ones give the one below. Raises Overflow.
std::int32_t integerPart(double value);

// The fraction of `value`, with its sign, times 10^`decimals`, as a whole number. The product is
// taken with the 15 digits that text would show, and rounded half away from zero; half to even for
// 0 decimals. Raises Overflow, and InvalidProcedureCall for negative `decimals`.
std::int32_t fractionAsWhole(double value, std::int16_t decimals);

}  // namespace vela
