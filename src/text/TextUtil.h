// Text for identities, SQL, templates and searches.
#pragma once

#include "contract.h"

namespace vela {

class TextUtil final : public Object<TextUtil, Unbuilt<_TextUtil>> {
  public:
    HRESULT STDMETHODCALLTYPE MudaChar(BSTR* onde, BSTR oQueMuda, BSTR paraQueMuda) override;
    HRESULT STDMETHODCALLTYPE SubstituirAcentos(BSTR* text) override;
    HRESULT STDMETHODCALLTYPE UTrim(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE QueConteudoSql(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE PreparaTextoComVars(BSTR text, SAFEARRAY** values,
                                                  BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Compactar(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Descompactar(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Encriptar(BSTR text, BSTR* key, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Desencriptar(BSTR text, BSTR* key, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE CodificarStr64(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE DescodificarStr64(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Compactar64(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Descompactar64(BSTR text, BSTR* result) override;
};

}  // namespace vela
