#include "text/numbers/variant_numbers.h"

#include "automation/error.h"

namespace vela {

namespace {

// A copy of a type that the platform compares and calculates with.
Variant calculable(const VARIANT& value) {
    switch (value.vt & ~VT_BYREF) {
        case VT_I1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
        case VT_INT:
        case VT_UINT: return converted(value, VT_DECIMAL);
        default: return Variant(value);
    }
}

// What VarCmp() says: VARCMP_LT, _EQ, _GT, _NULL, or a failure.
HRESULT compare(const VARIANT& first, const VARIANT& second) {
    Variant left = calculable(dereferenced(first));
    Variant right = calculable(dereferenced(second));
    return VarCmp(&left, &right, LOCALE_USER_DEFAULT, 0);
}

}  // namespace

Variant greater(const VARIANT& first, const VARIANT& second) {
    return Variant(compare(first, second) == VARCMP_GT ? first : second);
}

Variant lesser(const VARIANT& first, const VARIANT& second) {
    return Variant(compare(first, second) == static_cast<HRESULT>(VARCMP_LT) ? first : second);
}

LONG integerPart(const VARIANT& value) {
    Variant number = calculable(dereferenced(value));
    Variant half;
    half.vt = VT_R8;
    half.dblVal = 0.5;
    Variant difference;
    if (FAILED(VarSub(&number, &half, &difference))) raise(RuntimeError::TypeMismatch);
    return converted(difference, VT_I4).lVal;
}

SHORT weekday(const VARIANT& year, const VARIANT& month, SHORT day) {
    const auto date = dayOf(converted(year, VT_I2).iVal, converted(month, VT_I2).iVal, day);
    return static_cast<SHORT>(date ? weekday(*date) : 0);
}

}  // namespace vela
