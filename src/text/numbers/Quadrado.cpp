#include "text/numbers/Quadrado.h"

namespace vela {

HRESULT Quadrado::get_Lado(DOUBLE* result) { return give(result, side_); }

HRESULT Quadrado::put_Lado(DOUBLE newValue) { return take(side_, newValue); }

HRESULT Quadrado::get_Area(DOUBLE* result) { return give(result, side_ * side_); }

HRESULT Quadrado::get_Perimetro(DOUBLE* result) { return give(result, 4 * side_); }

HRESULT Quadrado::Soma(_IAdder** adder, DOUBLE value, DOUBLE* result) {
    return answer(result, [&] {
        const DOUBLE area = side_ * side_;
        if (!adder || !*adder) return area + value;
        DOUBLE sum = 0;
        checkRecorded(ComPtr<_IAdder>(*adder)->Add(area, value, &sum));
        return sum;
    });
}

HRESULT ClassOf<_Quadrado>::create(REFIID id, void** result) {
    return createObject<Quadrado>(id, result);
}

}  // namespace vela
