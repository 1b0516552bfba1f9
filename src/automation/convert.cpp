#include "automation/convert.h"

#include "automation/error.h"

namespace vela {

namespace {

// Booleans become words, as in the languages that call us.
HRESULT change(VARIANT* target, const VARIANT& source, VARTYPE type) {
    const VARIANT& value = dereferenced(source);
    return VariantChangeTypeEx(target, const_cast<VARIANT*>(&value), LOCALE_USER_DEFAULT,
                               VARIANT_ALPHABOOL, type);
}

}  // namespace

void Variant::copy(const VARIANT& other) {
    const HRESULT outcome = VariantCopyInd(this, const_cast<VARIANT*>(&other));
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(outcome)) raise(RuntimeError::TypeMismatch);
}

IDispatch* objectIn(const VARIANT& source) {
    const VARIANT& value = dereferenced(source);
    if (value.vt == VT_DISPATCH) return value.pdispVal;
    if (value.vt == (VT_BYREF | VT_DISPATCH)) return *value.ppdispVal;
    return nullptr;
}

ComPtr<IUnknown> unknownIn(const VARIANT& source) {
    const VARIANT& value = dereferenced(source);
    if (!holdsObject(value)) return nullptr;
    return value.vt & VT_BYREF ? *value.ppunkVal : value.punkVal;
}

bool holdsObject(const VARIANT& source) {
    const VARTYPE type = dereferenced(source).vt & ~VT_BYREF;
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

Variant objectVariant(IUnknown* object) {
    Variant value(static_cast<IDispatch*>(nullptr));
    if (object) object->QueryInterface(IID_PPV_ARGS(&value.pdispVal));
    return value;
}

std::optional<double> numberIn(const VARIANT& value) {
    Variant number;
    const VARTYPE type = dereferenced(value).vt & ~VT_BYREF;
    if (type == VT_DATE || holdsObject(value) || FAILED(change(&number, value, VT_R8))) {
        return std::nullopt;
    }
    return number.dblVal;
}

Variant converted(const VARIANT& value, VARTYPE type) {
    Variant result;
    const HRESULT outcome = change(&result, value, type);
    if (outcome == DISP_E_OVERFLOW) raise(RuntimeError::Overflow);
    if (outcome == E_OUTOFMEMORY) throw std::bad_alloc();
    if (FAILED(outcome)) raise(RuntimeError::TypeMismatch);
    return result;
}

std::wstring textOf(const VARIANT& source) {
    const VARIANT& value = dereferenced(source);
    // What is common and the same in every locale needs no help of the platform, which is slow.
    if (value.vt == VT_BSTR) return std::wstring(text(value.bstrVal));
    if (value.vt == VT_I4) return std::to_wstring(value.lVal);
    if (value.vt == VT_I2) return std::to_wstring(value.iVal);
    return std::wstring(text(converted(value, VT_BSTR).bstrVal));
}

short count16(std::size_t count) {
    if (count > 32767) raise(RuntimeError::Overflow);
    return static_cast<short>(count);
}

}  // namespace vela
