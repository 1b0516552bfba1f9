// Numbers, dates and times as the user's locale reads and writes them: the platform's conversions.
// `locale` may be another one everywhere.
#pragma once

#include <string>
#include <string_view>

#include "automation/convert.h"
#include "text/dates/core/date_text.h"

namespace vela {

// The number that `text` holds, fractions rounded half to even where the type has none; 0 when it
// holds none or one too large. Nothing is raised. After such a failure the thread has no error info
// left with currencyIn() and doubleIn(); the others leave it what it had.
CY currencyIn(BSTR text, LCID locale = LOCALE_USER_DEFAULT);
DOUBLE doubleIn(BSTR text, LCID locale = LOCALE_USER_DEFAULT);
SHORT shortIn(BSTR text, LCID locale = LOCALE_USER_DEFAULT);
LONG longIn(BSTR text, LCID locale = LOCALE_USER_DEFAULT);
FLOAT singleIn(BSTR text, LCID locale = LOCALE_USER_DEFAULT);

// The number that doubleIn() finds, with a decimal point, as SQL writes it.
std::wstring sqlNumber(BSTR text, LCID locale = LOCALE_USER_DEFAULT);

// The 2nd and the 6th character of 1234.5 written by "#,###.#"; empty where there is none.
std::wstring thousandsSeparator(LCID locale = LOCALE_USER_DEFAULT);
std::wstring decimalSeparator(LCID locale = LOCALE_USER_DEFAULT);

// What a picture of automation's Format function makes of a value. Throws Error 5 for a picture
// that the platform refuses, as too long ones.
Bstr formatted(const Variant& value, std::wstring_view picture, LCID locale = LOCALE_USER_DEFAULT);

// standardDate() with the locale's separator, order of day, month and year, and century.
std::wstring standardDate(std::wstring_view date, LCID locale = LOCALE_USER_DEFAULT);

}  // namespace vela
