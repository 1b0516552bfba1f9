// A stopwatch over the system's millisecond tick.
#pragma once

#include "contract.h"
#include "text/dates/core/stopwatch.h"

namespace vela {

class TickCount final : public Object<TickCount, _TickCount> {
  public:
    HRESULT STDMETHODCALLTYPE Iniciar() override;
    HRESULT STDMETHODCALLTYPE Parar() override;
    HRESULT STDMETHODCALLTYPE Milisegundos(LONG* result) override;
    HRESULT STDMETHODCALLTYPE Segundos(LONG* result) override;
    HRESULT STDMETHODCALLTYPE Minutos(LONG* result) override;
    HRESULT STDMETHODCALLTYPE Horas(LONG* result) override;
    HRESULT STDMETHODCALLTYPE Texto(BSTR timeFormat, BSTR* result) override;

  private:
    std::int32_t milliseconds() const { return watch_.milliseconds(GetTickCount()); }
    ElapsedTime elapsed() const { return ElapsedTime(milliseconds()); }

    Stopwatch watch_;
};

}  // namespace vela
