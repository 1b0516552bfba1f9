#include "text/numbers/core/rounding.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "automation/core/runtime_error.h"

namespace vela {

namespace {

// The number that its text with 15 digits stands for.
double asWritten(double value) {
    char digits[32];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::scientific, 14);
    double written = value;
    std::from_chars(digits, end.ptr, written);
    return written;
}

}  // namespace

double halfToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2) != 0);
    return up ? below + 1 : below;
}

double scaled(double value, int exponent) {
    double power = 1;
    for (int i = std::abs(exponent); i > 0; --i) power *= 10;
    return exponent < 0 ? value / power : value * power;
}

std::int32_t toInt32(double whole) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(whole >= (Limits::min)() && whole <= (Limits::max)())) raise(RuntimeError::Overflow);
    return static_cast<std::int32_t>(whole);
}

std::int32_t integerPart(double value) { return toInt32(halfToEven(value - 0.5)); }

std::int32_t fractionAsWhole(double value, std::int16_t decimals) {
    if (decimals < 0) raise(RuntimeError::InvalidProcedureCall);
    const double written = asWritten(scaled(value - std::trunc(value), decimals));
    return toInt32(decimals == 0 ? halfToEven(written) : std::round(written));
}

}  // namespace vela
