// A square, known by the length of its side.
#pragma once

#include "contract.h"

namespace vela {

class Quadrado final : public Object<Quadrado, _Quadrado> {
  public:
    HRESULT STDMETHODCALLTYPE get_Lado(DOUBLE* result) override;
    HRESULT STDMETHODCALLTYPE put_Lado(DOUBLE newValue) override;
    HRESULT STDMETHODCALLTYPE get_Area(DOUBLE* result) override;
    HRESULT STDMETHODCALLTYPE get_Perimetro(DOUBLE* result) override;
    HRESULT STDMETHODCALLTYPE Soma(_IAdder** adder, DOUBLE value, DOUBLE* result) override;

  private:
    DOUBLE side_ = 0;
};

}  // namespace vela
