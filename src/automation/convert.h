// Owners for automation's strings, variants and arrays, and the conversions between them and C++.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <cstdint>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vela {

using Microsoft::WRL::ComPtr;

// The owner of a reference that is handed over. ComPtr's own Attach() takes another one with some
// toolchains.
template <class Interface>
ComPtr<Interface> adopted(Interface* reference) {
    ComPtr<Interface> owner;
    *owner.GetAddressOf() = reference;
    return owner;
}

// The text of an automation string; a null string is the empty string.
inline std::wstring_view text(BSTR string) {
    return string ? std::wstring_view(string, SysStringLen(string)) : std::wstring_view();
}

// An optional text by reference; empty where the caller gave no place for it.
inline std::wstring_view optionalText(const BSTR* string) {
    return text(string ? *string : nullptr);
}

// A new automation string; throws std::bad_alloc.
inline BSTR allocate(std::wstring_view value) {
    if (value.size() > (std::numeric_limits<UINT>::max)() / 2) throw std::bad_alloc();
    BSTR string = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
    if (!string) throw std::bad_alloc();
    return string;
}

// Owns one automation string.
class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(std::wstring_view value) : string_(allocate(value)) {}
    // Takes over a string that the platform allocated; null is the empty string.
    static Bstr owning(BSTR string) {
        Bstr owner;
        owner.string_ = string;
        return owner;
    }
    Bstr(Bstr&& other) noexcept : string_(other.release()) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(string_, other.string_);
        return *this;
    }
    ~Bstr() { SysFreeString(string_); }

    BSTR get() const { return string_; }
    // Where a callee is to put a string; the one held now is freed.
    BSTR* put() {
        SysFreeString(string_);
        string_ = nullptr;
        return &string_;
    }
    BSTR release() { return std::exchange(string_, nullptr); }
    std::wstring_view view() const { return text(string_); }
    // Where view() stands, to be changed in place; null when empty.
    wchar_t* data() { return string_; }
    std::wstring str() const { return std::wstring(view()); }

  private:
    BSTR string_ = nullptr;
};

// Owns one variant. Layout is the platform's, so its address goes wherever a VARIANT* is asked for.
class Variant : public VARIANT {
  public:
    Variant() { VariantInit(this); }
    explicit Variant(std::wstring_view value) : Variant() {
        bstrVal = allocate(value);
        vt = VT_BSTR;
    }
    explicit Variant(long value) : Variant() {
        lVal = value;
        vt = VT_I4;
    }
    explicit Variant(IDispatch* value) : Variant() {
        if (value) value->AddRef();
        pdispVal = value;
        vt = VT_DISPATCH;
    }
    // A copy; by-reference values are dereferenced. Throws std::bad_alloc, or Error 13 for what
    // cannot be copied.
    explicit Variant(const VARIANT& other) : Variant() { copy(other); }
    Variant(const Variant& other) : Variant(static_cast<const VARIANT&>(other)) {}
    Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    Variant& operator=(Variant other) noexcept {
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        return *this;
    }
    ~Variant() { VariantClear(this); }

    // What a caller passes for an optional argument that he leaves out.
    static Variant missing() {
        Variant value;
        value.vt = VT_ERROR;
        value.scode = DISP_E_PARAMNOTFOUND;
        return value;
    }
    VARIANT release() {
        const VARIANT value = *this;
        VariantInit(this);
        return value;
    }

  private:
    void copy(const VARIANT& other);
};

inline bool isMissing(const VARIANT& value) {
    return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}
// The variant itself, or the one that it refers to.
inline const VARIANT& dereferenced(const VARIANT& value) {
    return value.vt == (VT_BYREF | VT_VARIANT) ? *value.pvarVal : value;
}
// Whether a variant holds a text, by value or by reference.
inline bool isText(const VARIANT& value) { return (dereferenced(value).vt & ~VT_BYREF) == VT_BSTR; }
// The object that a variant holds, by value or by reference; null when it holds none.
IDispatch* objectIn(const VARIANT& value);
// The same, also where all that is known of the object is IUnknown.
ComPtr<IUnknown> unknownIn(const VARIANT& value);
// Whether a variant holds an object (which may be null) rather than a plain value.
bool holdsObject(const VARIANT& value);
// A variant that holds an object as callers know it: the object itself where a stand-in was made
// for it.
Variant objectVariant(IUnknown* object);
// The number that a variant holds, as a number or as text under the user's locale; Empty is 0.
// Dates, Null and objects are none.
std::optional<double> numberIn(const VARIANT& value);
// The value as text under the user's locale, booleans as "True" and "False". Throws Error 13.
std::wstring textOf(const VARIANT& value);
// The value converted to `type` under the user's locale. Throws Error 13 or 6.
Variant converted(const VARIANT& value, VARTYPE type);

// Puts `value` in the place of a caller's text; nothing where he passed none.
inline void rewrite(BSTR* target, std::wstring_view value) {
    if (!target) return;
    const BSTR changed = allocate(value);
    SysFreeString(std::exchange(*target, changed));
}
// Puts `value` in the place of a caller's value.
inline void rewrite(VARIANT* target, Variant value) {
    std::swap(*target, static_cast<VARIANT&>(value));
}

inline constexpr bool isTrue(VARIANT_BOOL value) { return value != VARIANT_FALSE; }

// store(): puts a C++ result where a caller asked for an automation one. The target holds nothing
// that needs freeing.
inline void store(BSTR* result, std::wstring_view value) { *result = allocate(value); }
inline void store(BSTR* result, Bstr value) { *result = value.release(); }
inline void store(VARIANT* result, Variant value) { *result = value.release(); }
inline void store(VARIANT_BOOL* result, bool value) {
    *result = value ? VARIANT_TRUE : VARIANT_FALSE;
}
// A currency value in ten-thousandths.
inline void store(CY* result, std::int64_t value) { result->int64 = value; }
// Where the platform's 32-bit number is another type.
inline void store(LONG* result, std::int32_t value) { *result = value; }
template <class Target, class Value>
requires(std::is_arithmetic_v<Target> || std::is_enum_v<Target>) &&
    std::is_same_v<std::remove_cvref_t<Value>, Target> void store(Target* result, Value value) {
    *result = value;
}
template <class Interface, class Class>
requires std::is_convertible_v<Class*, Interface*>
void store(Interface** result, ComPtr<Class> value) { *result = value.Detach(); }

// As a 16-bit count. Throws Error 6 above 32,767: a count is never wrong.
short count16(std::size_t count);

}  // namespace vela
