// Amounts in words, in European Portuguese. The rules, with examples: docs/extenso.md.
#pragma once

#include <string>
#include <string_view>

#include "text/numbers/core/fixed_point.h"

namespace vela {

// `amount` as money of the currency `name`, which may stand in double quotes; as a plain number
// when there is no name.
std::wstring inWords(Currency amount, std::wstring_view name);

}  // namespace vela
