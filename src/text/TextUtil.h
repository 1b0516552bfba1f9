// Text searched, split, filtered, put in form for identities, SQL and templates, compressed,
// hidden.
#pragma once

#include "contract.h"

namespace vela {

class TextUtil final : public Object<TextUtil, _TextUtil> {
  public:
    HRESULT STDMETHODCALLTYPE ProcTras(BSTR where, BSTR what, SHORT from, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ProcuraAbrirFechar(BSTR where, BSTR marks, SHORT* opened,
                                                 SHORT* closed, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ProcurarPar(SHORT from, BSTR where, BSTR marks,
                                          SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ProcuraPrimeiroDeVarios(SHORT from, BSTR where, BSTR characters,
                                                      SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ProcuraUmDeVarios(BSTR where, SHORT from, SAFEARRAY** what,
                                                SHORT* place, SHORT* position) override;
    HRESULT STDMETHODCALLTYPE OrdenarArrayStr(SAFEARRAY** array) override;
    HRESULT STDMETHODCALLTYPE QuantosChar(BSTR where, BSTR what, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE QuantosCaracteres(BSTR where, BSTR character, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE MudaChar(BSTR* where, BSTR what, BSTR replacement) override;
    HRESULT STDMETHODCALLTYPE MudaChar2(BSTR* where, BSTR what, BSTR replacements) override;
    HRESULT STDMETHODCALLTYPE MudaCharComMascara(BSTR* where, BSTR pattern,
                                                 BSTR replacement) override;
    HRESULT STDMETHODCALLTYPE ParteTexto(BSTR* text, SAFEARRAY** lines, SHORT width,
                                         SHORT* result) override;
    HRESULT STDMETHODCALLTYPE SeparaPorChar(BSTR* text, BSTR* separator, SAFEARRAY** parts,
                                            SHORT* result) override;
    HRESULT STDMETHODCALLTYPE StrCharValidos(BSTR* text, BSTR allowed, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE CopyStr(VARIANT* from, VARIANT* to) override;
    HRESULT STDMETHODCALLTYPE SemEspacos(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SemNumeros(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SemAlfa(VARIANT text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SubstituirAcentos(BSTR* text) override;
    HRESULT STDMETHODCALLTYPE StrPontoDecimal(VARIANT* number, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE TelefoneSeparaIndicativoNumero(BSTR telephone, SHORT* code,
                                                             LONG* number) override;
    HRESULT STDMETHODCALLTYPE StrAlinhar(BSTR text, SHORT width, AlignmentConstant* alignment,
                                         BSTR* filler, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE UTrim(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SwapTxt(BSTR* first, BSTR* second) override;
    HRESULT STDMETHODCALLTYPE QueConteudoSql(BSTR text, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE PreparaTextoComVars(BSTR text, SAFEARRAY** values,
                                                  BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SoEstesChar(BSTR text, BSTR allowed, BSTR replacement,
                                          BSTR* result) override;
    HRESULT STDMETHODCALLTYPE SoNumeros(BSTR text, VARIANT_BOOL negative, VARIANT_BOOL fractions,
                                        VARIANT_BOOL* result) override;
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
