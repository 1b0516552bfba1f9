// Texts character by character: some left out, some replaced, all checked. Everything here throws
// std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

#include "text/core/wildcard.h"

namespace vela {

std::wstring withoutSpaces(std::wstring_view text);
// Without 0 to 9.
std::wstring withoutDigits(std::wstring_view text);
// Without letters of any script (see character_kinds.h).
std::wstring withoutLetters(std::wstring_view text);

// With `replacement` for each character that is none of `allowed`.
std::wstring onlyCharacters(std::wstring_view text, std::wstring_view allowed,
                            std::wstring_view replacement = {});

// With `replacement` for each character that matches `mask` on its own.
std::wstring withMatchesReplaced(std::wstring_view text, const Wildcard& mask,
                                 std::wstring_view replacement);

// With each character of `from` replaced by the one at the same place in `to`, or left out where
// there is none. Of a character that `from` has twice, the first place counts.
std::wstring translated(std::wstring_view text, std::wstring_view from, std::wstring_view to);

struct NumberForm {
    bool negative = false;               // a minus may stand in front
    std::wstring_view decimalSeparator;  // may stand once, at the ends of the digits too; or empty
};
// Whether there is a digit at least, and nothing but digits and what the form allows.
bool isNumber(std::wstring_view text, const NumberForm& form);

}  // namespace vela
