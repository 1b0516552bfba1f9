// The shared objects, the last error record, and helpers for collections.
#pragma once

#include "contract.h"

namespace vela {

class SysUtil final : public Object<SysUtil, Unbuilt<_SysUtil>> {
  public:
    HRESULT STDMETHODCALLTYPE get_Directories(_DirUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_Geo(_GeoUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_Play(_PlayUtil** result) override;
    HRESULT STDMETHODCALLTYPE get_Notifications(_Notifications** result) override;
    HRESULT STDMETHODCALLTYPE get_EventHistory(_EventHistory** result) override;
    HRESULT STDMETHODCALLTYPE get_Pulsar(_Pulsar** result) override;

    HRESULT STDMETHODCALLTYPE SaveMyError(SHORT type, LONG number, BSTR description,
                                          BSTR source) override;
    HRESULT STDMETHODCALLTYPE MyError(MyErrorSettings part, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE ErroDeRede(SHORT number, VARIANT_BOOL* result) override;

    HRESULT STDMETHODCALLTYPE ClearCollection(IDispatch** collection,
                                              VARIANT_BOOL* setNothing) override;
    HRESULT STDMETHODCALLTYPE ExisteNaCollection(IDispatch** collection, BSTR key,
                                                 VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE RegistryLerValorLocalMachine(BSTR key, BSTR value,
                                                           BSTR* result) override;
    HRESULT STDMETHODCALLTYPE RegistryLerValorLocalUser(BSTR key, BSTR value,
                                                        BSTR* result) override;
};

}  // namespace vela
