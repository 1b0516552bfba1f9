// Dates and times held as text.
#pragma once

#include "contract.h"

namespace vela {

class DatetimeUtil final : public Object<DatetimeUtil, _DatetimeUtil> {
  public:
    HRESULT STDMETHODCALLTYPE DataMaisDias(BSTR start, SHORT days, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE QueAno(BSTR date, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE QueDia(BSTR date, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE QueMes(BSTR date, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE DiasEntreDatas(BSTR first, BSTR second, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE UltimoDiaDoMes(SHORT month, SHORT year, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE ComparaDatas(BSTR first, BSTR second, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE DataEntre(BSTR date, BSTR first, BSTR second,
                                        VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE DiaDaSemana(VARIANT year, VARIANT month, SHORT day,
                                          SHORT* result) override;
    HRESULT STDMETHODCALLTYPE DiasDoMes(SHORT year, SHORT month, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE StandardStrData(BSTR date, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE HHMM(BSTR time, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE StrHora(BSTR time, BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_FmtData(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE VerificaData(BSTR date, SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_Contador(_TickCount** result) override;
};

}  // namespace vela
