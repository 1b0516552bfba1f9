// The way to the shared preferences.
#pragma once

#include "contract.h"

namespace vela {

class Preferences final : public Object<Preferences, _Preferences> {
  public:
    HRESULT STDMETHODCALLTYPE get_MyPreferences(_UPUtil** result) override;
};

}  // namespace vela
