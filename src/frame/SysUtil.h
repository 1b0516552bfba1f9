// The shared objects, the last error record, and helpers for collections.
#pragma once

#include "contract.h"

namespace vela {

class SysUtil final : public Object<SysUtil, _SysUtil> {
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

    HRESULT STDMETHODCALLTYPE Apitar() override;
    HRESULT STDMETHODCALLTYPE Esperar(LONG milliseconds) override;
    HRESULT STDMETHODCALLTYPE get_AppYear(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE PoeFoco(IDispatch** control, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ClearCollection(IDispatch** collection,
                                              VARIANT_BOOL* setNothing) override;
    HRESULT STDMETHODCALLTYPE ExisteNaCollection(IDispatch** collection, BSTR key,
                                                 VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE XsltTransform(BSTR xml, BSTR xslt, BSTR* htmlFile,
                                            VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE CurrentMachineName(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE RegistryLerValorLocalMachine(BSTR key, BSTR value,
                                                           BSTR* result) override;
    HRESULT STDMETHODCALLTYPE RegistryLerValorLocalUser(BSTR key, BSTR value,
                                                        BSTR* result) override;
    HRESULT STDMETHODCALLTYPE CriarIdentificador(LONG* result) override;
    HRESULT STDMETHODCALLTYPE get_TPPixelX(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_TPPixelY(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_LoginDoUtilizador(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_NomeDoUtilizador(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_DominioDoUtilizador(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_IdentificadorDoUtilizador(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE StartService(BSTR service, BSTR computer,
                                           VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE StopService(BSTR service, BSTR computer,
                                          VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ServiceStatus(BSTR service, BSTR computer, LONG* result) override;
    HRESULT STDMETHODCALLTYPE ServiceIsRunning(BSTR service, BSTR computer,
                                               VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE ServiceIsStopped(BSTR service, BSTR computer,
                                               VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE IsConnectedToInternet(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetOSVersion(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Is64Bit(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE GetNetworkIP(BSTR* result) override;
};

}  // namespace vela
