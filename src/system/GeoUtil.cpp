#include "system/GeoUtil.h"

#include "system/geography.h"

namespace vela {

namespace {

HRESULT answerInfo(BSTR* result, SYSGEOTYPE what) {
    return answerQuietly(result, [&] { return countryInfo(what); });
}

}  // namespace

HRESULT GeoUtil::get_OSGeoISO3(BSTR* result) { return answerInfo(result, GEO_ISO3); }

HRESULT GeoUtil::get_OSGeoOfficialName(BSTR* result) { return answerQuietly(result, countryName); }

HRESULT GeoUtil::get_OSGeoNation(BSTR* result) { return answerInfo(result, GEO_NATION); }

HRESULT GeoUtil::get_GeoLanguageID(BSTR* result) {
    return answerQuietly(result, [] {
        const LANGID language = countryLanguage();
        return language == 0 ? std::wstring() : std::to_wstring(language);
    });
}

HRESULT GeoUtil::get_GeoLatitude(BSTR* result) {
    return answerQuietly(result, [] { return countryPosition(GEO_LATITUDE); });
}

HRESULT GeoUtil::get_GeoLongitude(BSTR* result) {
    return answerQuietly(result, [] { return countryPosition(GEO_LONGITUDE); });
}

HRESULT GeoUtil::get_GeoISO2(BSTR* result) { return answerInfo(result, GEO_ISO2); }

HRESULT GeoUtil::get_GeoRFC1766(BSTR* result) { return answerQuietly(result, countryLanguageTag); }

HRESULT ClassOf<_GeoUtil>::create(REFIID id, void** result) {
    return createObject<GeoUtil>(id, result);
}

}  // namespace vela
