// What an object implements that knows which of its own properties are to be serialized. For
// programs in the same process; the interface is in no type library.
//
//     class Article : public ISerializable { ... };
//
// An object that cannot implement interfaces, such as a script's, has a property named
// SerializableProperties instead.
#pragma once

#include <oaidl.h>

struct ISerializable : public IDispatch {
    // Read-only property 1: the list of the properties, as in "@Code,/Description". The caller
    // frees the string; null is the empty list. Unless overridden, the list is empty.
    virtual HRESULT STDMETHODCALLTYPE get_SerializableProperties(BSTR* result) {
        if (!result) return E_POINTER;
        *result = nullptr;
        return S_OK;
    }
};

// {449538DF-8FF3-43D7-BC81-CF8E627A8412}
inline constexpr IID IID_ISerializable = {
    0x449538df, 0x8ff3, 0x43d7, {0xbc, 0x81, 0xcf, 0x8e, 0x62, 0x7a, 0x84, 0x12}};
