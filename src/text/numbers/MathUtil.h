// Numbers: reading, rounding, comparing, other bases, amounts in words.
#pragma once

#include "contract.h"

namespace vela {

class MathUtil final : public Object<MathUtil, _MathUtil> {
  public:
    HRESULT STDMETHODCALLTYPE ValC(BSTR value, CY* result) override;
    HRESULT STDMETHODCALLTYPE ValD(BSTR value, DOUBLE* result) override;
    HRESULT STDMETHODCALLTYPE ValI(BSTR value, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ValL(BSTR value, LONG* result) override;
    HRESULT STDMETHODCALLTYPE ValS(BSTR value, FLOAT* result) override;
    HRESULT STDMETHODCALLTYPE Extenso(CY number, BSTR currency, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Arredondar(CY value, SHORT kind, CY* result) override;
    HRESULT STDMETHODCALLTYPE SwapInt(SHORT* first, SHORT* second) override;
    HRESULT STDMETHODCALLTYPE SwapLong(LONG* first, LONG* second) override;
    HRESULT STDMETHODCALLTYPE OrdenarArrayINT(SAFEARRAY** array) override;
    HRESULT STDMETHODCALLTYPE DoisExpX(SHORT x, LONG* result) override;
    HRESULT STDMETHODCALLTYPE Max(VARIANT first, VARIANT second, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE Min(VARIANT first, VARIANT second, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE CriarMD5(BSTR value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE ParteDecimal(DOUBLE value, SHORT decimals, LONG* result) override;
    HRESULT STDMETHODCALLTYPE BitTrue(LONG value, SHORT bit, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE get_SeparadorMilhares(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_SeparadorDecimais(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE ParteInteira(VARIANT value, LONG* result) override;
    HRESULT STDMETHODCALLTYPE QueConteudoSql(BSTR value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE CriarMD5b(BSTR value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE BinaryToHex(VARIANT* value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE HexToBinary(BSTR* value, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE HexToLong(BSTR value, LONG* result) override;
    HRESULT STDMETHODCALLTYPE LongToBase36(LONG value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE Base36ToLong(BSTR value, LONG* result) override;
};

}  // namespace vela
