// Numbers that callers pass as variants.
#pragma once

#include "automation/convert.h"
#include "text/dates/core/calendar.h"

namespace vela {

// The greater, or the lesser, of two values, as automation compares variants: numbers as numbers,
// texts in the order of the user's locale, any number below any text. `second` when they are equal,
// or cannot be compared: Null, objects, arrays.
Variant greater(const VARIANT& first, const VARIANT& second);
Variant lesser(const VARIANT& first, const VARIANT& second);

// integerPart() of any value that is a number: `value` - 0.5 by automation's arithmetic, rounded
// half to even. Throws Error 13 or 6.
LONG integerPart(const VARIANT& value);

// The weekday of the date built from three numbers, 1 = Sunday to 7 = Saturday; 0 outside the
// calendar. Throws Error 13 or 6.
SHORT weekday(const VARIANT& year, const VARIANT& month, SHORT day);

}  // namespace vela
