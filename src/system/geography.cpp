#include "system/geography.h"

#include <algorithm>
#include <vector>

#include "automation/error.h"

namespace vela {

namespace {

constexpr int kLongest = 256;
constexpr GEOID kWorld = 39070;  // stands for no country

struct Locale {
    std::wstring name;  // as "pt-PT"
    std::wstring country;

    std::wstring language() const { return name.substr(0, name.find(L'-')); }
};

std::wstring localeInfo(const std::wstring& locale, LCTYPE what) {
    wchar_t buffer[kLongest];
    const int length = GetLocaleInfoEx(locale.c_str(), what, buffer, kLongest);
    return length > 0 ? std::wstring(buffer, length - 1) : std::wstring();
}

LANGID languageOf(const std::wstring& locale) {
    return LANGIDFROMLCID(LocaleNameToLCID(locale.c_str(), 0));
}

// Numbered locales, in one of the ways to sort where there are several.
bool isUsual(const std::wstring& locale) {
    return PRIMARYLANGID(languageOf(locale)) != LANG_NEUTRAL &&
           locale.find(L'_') == std::wstring::npos;
}

BOOL CALLBACK addLocale(LPWSTR name, DWORD, LPARAM target) {
    return SUCCEEDED(guard([&] {
        auto& locales = *reinterpret_cast<std::vector<Locale>*>(target);
        if (isUsual(name)) locales.push_back({name, localeInfo(name, LOCALE_SISO3166CTRYNAME)});
    }));
}

std::wstring userLocale() {
    wchar_t name[LOCALE_NAME_MAX_LENGTH];
    return GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH) > 0 ? name : L"";
}

std::wstring widestLocaleOf(const std::wstring& country) {
    std::vector<Locale> all;
    EnumSystemLocalesEx(addLocale, LOCALE_SPECIFICDATA, reinterpret_cast<LPARAM>(&all), nullptr);
    std::wstring widest;
    std::ptrdiff_t most = 0;
    for (const Locale& each : all) {
        if (each.country != country) continue;
        const auto spread = std::count_if(all.begin(), all.end(), [&](const Locale& other) {
            return other.language() == each.language();
        });
        if (spread > most) widest = each.name;
        most = (std::max)(most, spread);
    }
    return widest;
}

// A locale of the country; empty when there is none.
std::wstring countryLocale() {
    const std::wstring country = countryInfo(GEO_ISO2);
    if (country.empty()) return {};
    const std::wstring own = userLocale();
    const bool fits = isUsual(own) && localeInfo(own, LOCALE_SISO3166CTRYNAME) == country;
    return fits ? own : widestLocaleOf(country);
}

}  // namespace

std::wstring countryInfo(SYSGEOTYPE what) {
    const GEOID country = GetUserGeoID(GEOCLASS_NATION);
    if (country == kWorld) return {};
    wchar_t buffer[kLongest];
    const int length = GetGeoInfoW(country, what, buffer, kLongest, GetUserDefaultLangID());
    return length > 0 ? std::wstring(buffer, length - 1) : std::wstring();
}

std::wstring countryPosition(SYSGEOTYPE which) {
    // No country lies at 0, 0: a system that says so does not know.
    const auto isZero = [](const std::wstring& degrees) {
        return degrees.find_first_not_of(L"-0.") == std::wstring::npos;
    };
    const bool known = !isZero(countryInfo(GEO_LATITUDE)) || !isZero(countryInfo(GEO_LONGITUDE));
    return known ? countryInfo(which) : std::wstring();
}

std::wstring countryName() {
    for (const SYSGEOTYPE what : {GEO_OFFICIALNAME, GEO_FRIENDLYNAME}) {
        if (std::wstring name = countryInfo(what); !name.empty()) return name;
    }
    const std::wstring locale = countryLocale();
    return locale.empty() ? locale : localeInfo(locale, LOCALE_SLOCALIZEDCOUNTRYNAME);
}

std::wstring countryLanguageTag() {
    std::wstring tag = countryLocale();
    CharLowerBuffW(tag.data(), static_cast<DWORD>(tag.size()));
    return tag;
}

LANGID countryLanguage() {
    const std::wstring locale = countryLocale();
    return locale.empty() ? LANGID{0} : languageOf(locale);
}

}  // namespace vela
