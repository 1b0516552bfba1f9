// The country that the user's settings name, as the system describes it.
#pragma once

#include <windows.h>

#include <string>

namespace vela {

// One of the system's texts about the country; empty where it has none, and where the settings name
// none.
std::wstring countryInfo(SYSGEOTYPE what);
// GEO_LATITUDE or GEO_LONGITUDE in degrees, with a decimal point; empty when unknown.
std::wstring countryPosition(SYSGEOTYPE which);
// Its official name, or the usual one where the system knows no other; empty when unknown.
std::wstring countryName();

// The country's language as a tag ("pt-pt") and as a number: the user's own where that is one of
// the country's; else, of those that the system has numbers for, the one spoken in most countries.
// Empty and 0 when unknown.
std::wstring countryLanguageTag();
LANGID countryLanguage();

}  // namespace vela
