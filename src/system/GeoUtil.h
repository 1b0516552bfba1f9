// The country that the user's settings name.
#pragma once

#include "contract.h"

namespace vela {

class GeoUtil final : public Object<GeoUtil, _GeoUtil> {
  public:
    HRESULT STDMETHODCALLTYPE get_OSGeoISO3(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_OSGeoOfficialName(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_OSGeoNation(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_GeoLanguageID(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_GeoLatitude(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_GeoLongitude(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_GeoISO2(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_GeoRFC1766(BSTR* result) override;
};

}  // namespace vela
