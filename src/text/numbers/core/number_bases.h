// Numbers as digits of other bases: 2 to 36, and hexadecimal bytes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vela {

// `value` in `base`, letters in upper case; "0" for zero and for negative values. Raises
// InvalidProcedureCall for a base outside 2 to 36.
std::wstring toBase(std::int32_t value, int base);

// The number that `text` holds in `base`, letters in any case; 0 for the empty text. Raises
// InvalidProcedureCall for a base outside 2 to 36 or at the first bad digit, Overflow at the digit
// that leads beyond 32 bits.
std::int32_t fromBase(std::wstring_view text, int base);

// Two digits for each byte.
std::wstring hexText(std::span<const std::uint8_t> bytes,
                     std::wstring_view digits = L"0123456789ABCDEF");

// A byte for each two characters; a last single one is read alone. A character that is no digit
// ends the reading of its two, so that a byte never fails.
std::vector<std::uint8_t> bytesFromHex(std::wstring_view text);

// The number that the leading hexadecimal digits hold; 0 when there are none. Up to 4 digits are a
// signed 16-bit number, more a signed 32-bit one. Raises Overflow beyond that; zeros in front do
// not count then.
std::int32_t longFromHex(std::wstring_view text);

}  // namespace vela
