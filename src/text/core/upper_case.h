// Upper-casing of text, one code unit to one code unit.
//
// Invariants: the result has as many units as the text (no "ß" to "SS"), does not depend on the
// user's locale, and never changes within a process. U+0000, surrogates and, where wchar_t is wider
// than 16 bits, units above U+FFFF map to themselves.
//
// Everything here may be called from any thread. The first call builds the table; it throws
// std::bad_alloc when memory is short and std::runtime_error when the platform has no case
// mapping. Later calls to upperCaseTable() and upperCase(wchar_t) do not throw.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vela {

// The upper-case unit of every 16-bit unit, indexed by the unit.
using UpperCaseTable = std::array<char16_t, 0x10000>;

// The process-wide table, for loops that fold many units.
const UpperCaseTable& upperCaseTable();

// The upper-case unit of `unit` by `table`.
inline wchar_t upperCase(const UpperCaseTable& table, wchar_t unit) {
    const auto index = static_cast<std::uint32_t>(unit);
    return index < table.size() ? static_cast<wchar_t>(table[index]) : unit;
}

// The upper-case unit of `unit`.
wchar_t upperCase(wchar_t unit);

// `text` with every unit upper-cased; throws std::bad_alloc.
std::wstring upperCase(std::wstring_view text);

// The lower-case unit of `unit`, by the same rules; itself where the platform has no mapping.
wchar_t lowerCase(wchar_t unit);
// `text` with every unit lower-cased; throws std::bad_alloc.
std::wstring lowerCase(std::wstring_view text);

// Upper-cases `length` units where they stand.
void upperCaseInPlace(wchar_t* units, std::size_t length);

}  // namespace vela
