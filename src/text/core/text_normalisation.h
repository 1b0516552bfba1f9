// Text in the forms that identities, SQL literals, message templates and plain searches need.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vela {

// Replaces every occurrence of `search`, left to right, going on behind each replacement; a
// replacement that contains `search` is not replaced again. An empty `search` changes nothing.
std::wstring replaceAll(std::wstring_view text, std::wstring_view search,
                        std::wstring_view replacement);

// Without leading and trailing spaces; tabs and other blanks stay.
std::wstring_view trimmed(std::wstring_view text);

// trimmed(), then upper-cased: how identities are compared.
std::wstring normalisedIdentity(std::wstring_view text);

// A quoted SQL text literal: '' for the empty text, apostrophes doubled.
std::wstring sqlLiteral(std::wstring_view text);

// Fills the placeholders @X1, @X2, ... : the one for `lowerBound` + i + 1 with values[i]. The
// highest number goes first, so that @X10 is never taken for @X1 and a "0".
std::wstring filledTemplate(std::wstring_view text, const std::vector<std::wstring>& values,
                            long lowerBound);

// As many characters as `text`: the accented letters of Portuguese without their accents, other
// letters without accents, full stops and spaces as they are, everything else as a space.
std::wstring withoutAccents(std::wstring_view text);

}  // namespace vela
