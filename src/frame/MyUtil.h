// The way in: hands out the shared utility objects.
#pragma once

#include "contract.h"

namespace vela {

class MyUtil final : public Object<MyUtil, _MyUtil> {
  public:
    HRESULT STDMETHODCALLTYPE get_MyMath(_MathUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MyText(_TextUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MyFile(_FileUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MyDatetime(_DatetimeUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MySys(_SysUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MyRegistry(_RegistryUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_MySecurity(_SecurityUtil** result) override;
};

}  // namespace vela
