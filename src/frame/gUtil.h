// Older names of members of the other utility classes.
#pragma once

#include "files/FileUtil.h"
#include "frame/SysUtil.h"
#include "text/TextUtil.h"
#include "text/dates/DatetimeUtil.h"
#include "text/numbers/MathUtil.h"

namespace vela {

class gUtil final : public Object<gUtil, _gUtil> {
  public:
    HRESULT STDMETHODCALLTYPE gMD5(BSTR value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gParteDecimal(DOUBLE value, SHORT decimals, LONG* result) override;
    HRESULT STDMETHODCALLTYPE gDataEntre(BSTR date, BSTR from, BSTR to,
                                         VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE gDiaDaSemana(VARIANT year, VARIANT month, SHORT day,
                                           SHORT* result) override;
    HRESULT STDMETHODCALLTYPE gDiasDoMes(SHORT year, SHORT month, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE gStandardStrData(BSTR date, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE g2expX(SHORT x, LONG* result) override;
    HRESULT STDMETHODCALLTYPE gBitTrue(LONG value, SHORT bit, VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE gMax(VARIANT one, VARIANT other, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE gMin(VARIANT one, VARIANT other, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE gExisteNaCollection(IDispatch** collection, BSTR key,
                                                  VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE gDestroiCollection(IDispatch** collection,
                                                 VARIANT_BOOL* setNothing) override;
    HRESULT STDMETHODCALLTYPE gLerFicheiro(BSTR path, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gEscreverFicheiro(BSTR path, BSTR content,
                                                VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE gInfoDaPasta(BSTR path, IFolder** result) override;
    HRESULT STDMETHODCALLTYPE gDrivesNoSistema(_Collection** result) override;
    HRESULT STDMETHODCALLTYPE gCurrentMachineName(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gTransformarEmUNC(BSTR path, BSTR* server, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gInfDeDrive(BSTR drive, IDrive** result) override;
    HRESULT STDMETHODCALLTYPE gGetPathInfo(BSTR path, IFolder** folder, IDrive** drive,
                                           IFile** file) override;
    HRESULT STDMETHODCALLTYPE gLerValorLocalMachine(BSTR key, BSTR value, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gStrCharValidos(BSTR* value, BSTR allowed, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE gCopyStr(VARIANT* from, VARIANT* to) override;
    HRESULT STDMETHODCALLTYPE gHora(BSTR time, SHORT* result) override;

  private:
    const ComPtr<DatetimeUtil> dates_ = make<DatetimeUtil>();
    const ComPtr<FileUtil> files_ = make<FileUtil>();
    const ComPtr<MathUtil> numbers_ = make<MathUtil>();
    const ComPtr<SysUtil> system_ = make<SysUtil>();
    const ComPtr<TextUtil> texts_ = make<TextUtil>();
};

}  // namespace vela
