// Keys and text values of the registry. Every member answers with the system's code, 0 for success,
// which is also the thread's last error when the call returns.
#pragma once

#include "contract.h"

namespace vela {

class RegistryUtil final : public Object<RegistryUtil, _RegistryUtil> {
  public:
    HRESULT STDMETHODCALLTYPE GetRegistryValue(regChaves root, BSTR key, BSTR value, BSTR* content,
                                               LONG* result) override;
    HRESULT STDMETHODCALLTYPE SetRegistryValue(regChaves root, BSTR key, BSTR value, BSTR* content,
                                               LONG* result) override;
    HRESULT STDMETHODCALLTYPE GetFirstKey(regChaves root, BSTR key, BSTR* content,
                                          LONG* result) override;
    HRESULT STDMETHODCALLTYPE GetNextKey(regChaves root, BSTR key, BSTR* content,
                                         LONG* result) override;
    HRESULT STDMETHODCALLTYPE DeleteKey(regChaves root, BSTR key, BSTR child,
                                        LONG* result) override;
    HRESULT STDMETHODCALLTYPE DeleteValue(regChaves root, BSTR key, BSTR value,
                                          LONG* result) override;

  private:
    DWORD index_ = 0;  // of the next subkey, whichever key is enumerated
};

}  // namespace vela
