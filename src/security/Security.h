// Six permissions, each by itself.
#pragma once

#include "contract.h"

namespace vela {

class Security final : public Object<Security, _Security> {
  public:
    HRESULT STDMETHODCALLTYPE put_Read(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_Read(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_Modify(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_Modify(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_Execute(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_Execute(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_FullControl(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_FullControl(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_Delete(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_Delete(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_Create(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_Create(VARIANT_BOOL* result) override;

  private:
    VARIANT_BOOL read_ = VARIANT_FALSE;
    VARIANT_BOOL modify_ = VARIANT_FALSE;
    VARIANT_BOOL execute_ = VARIANT_FALSE;
    VARIANT_BOOL fullControl_ = VARIANT_FALSE;
    VARIANT_BOOL delete_ = VARIANT_FALSE;
    VARIANT_BOOL create_ = VARIANT_FALSE;
};

}  // namespace vela
