// Script objects in the place of interfaces that callers implement.
//
// An adapter makes an object that has only IDispatch answer one of our interfaces by calling its
// members by name. It keeps the object's identity: asked for IUnknown or IDispatch it hands out the
// object itself, so the same object wrapped twice compares equal. Generated code has one adapter
// per interface that callers may implement.
#pragma once

#include "automation/counted.h"
#include "automation/dispatch.h"
#include "automation/error.h"
#include "automation/late_bound.h"

namespace vela {

inline constexpr IID kScriptAdapterId = {
    0x6f0d4e0a, 0x2d5c, 0x4c0e, {0x9a, 0x41, 0x0b, 0x8e, 0x55, 0x21, 0x7c, 0x93}};

struct ScriptAdapter : IUnknown {
    virtual IDispatch* original() = 0;  // borrowed
};

// ---- how one parameter travels outwards ---------------------------------------------------------

template <class Slot>
class Outgoing;

template <VARTYPE type, class Parameter>
class Outgoing<Value<type, Parameter>> {
  public:
    explicit Outgoing(Parameter value) : value_(value) {}
    VARIANT pass() {
        VARIANT v{};
        v.vt = type;
        Field<type>::in(v) = static_cast<typename Field<type>::Type>(value_);
        return v;
    }
    HRESULT takeBack() { return S_OK; }

  private:
    Parameter value_;
};
template <>
class Outgoing<Value<VT_VARIANT, VARIANT>> {
  public:
    explicit Outgoing(const VARIANT& value) : value_(value) {}
    VARIANT pass() { return value_; }
    HRESULT takeBack() { return S_OK; }

  private:
    VARIANT value_;
};
template <VARTYPE type, class Parameter>
class Outgoing<ValueRef<type, Parameter>> {
  public:
    explicit Outgoing(Parameter* target) : target_(target) {
        if (!target) return;
        VARIANT v{};
        v.vt = type;
        Field<type>::in(v) = static_cast<typename Field<type>::Type>(*target);
        own_ = Variant(v);
    }
    VARIANT pass() {
        VARIANT v{};
        v.vt = VT_BYREF | VT_VARIANT;
        v.pvarVal = &own_;
        return v;
    }
    HRESULT takeBack() {
        if (!target_) return S_OK;
        Variant changed;
        const HRESULT outcome = coerce(&changed, &own_, type, LOCALE_USER_DEFAULT);
        if (FAILED(outcome)) return outcome;
        auto& place = reinterpret_cast<typename Field<type>::Type&>(*target_);
        std::swap(place, Field<type>::in(changed));
        return S_OK;
    }

  private:
    Parameter* target_;
    Variant own_;
};
template <>
class Outgoing<ValueRef<VT_VARIANT, VARIANT>> {
  public:
    explicit Outgoing(VARIANT* target) : target_(target) {}
    VARIANT pass() {
        VARIANT v{};
        v.vt = VT_BYREF | VT_VARIANT;
        v.pvarVal = target_ ? target_ : &none_;
        return v;
    }
    HRESULT takeBack() { return S_OK; }

  private:
    VARIANT* target_;
    Variant none_ = Variant::missing();
};
template <class Interface>
class Outgoing<Pointer<Interface>> {
  public:
    explicit Outgoing(Interface* object) : object_(object) {}
    VARIANT pass() {
        VARIANT v{};
        v.vt = VT_DISPATCH;
        v.pdispVal = object_;
        return v;
    }
    HRESULT takeBack() { return S_OK; }

  private:
    Interface* object_;
};
// Scripts get the object itself: they have no use for a reference to a reference.
template <class Interface>
class Outgoing<PointerRef<Interface>> : public Outgoing<Pointer<Interface>> {
  public:
    explicit Outgoing(Interface** target)
        : Outgoing<Pointer<Interface>>(target ? *target : nullptr) {}
};

// What the object returned, as the C++ type that the caller asked for.
template <class Slot>
class Returned;
template <VARTYPE type, class Parameter>
class Returned<Result<type, Parameter>> {
  public:
    static HRESULT give(VARIANT& value, Parameter* result) {
        Variant changed;
        const HRESULT outcome = coerce(&changed, &value, type, LOCALE_USER_DEFAULT);
        if (FAILED(outcome)) return outcome;
        *result = static_cast<Parameter>(Field<type>::in(changed));
        if constexpr (type == VT_BSTR) changed.release();
        return S_OK;
    }
};
template <>
class Returned<Result<VT_VARIANT, VARIANT>> {
  public:
    static HRESULT give(VARIANT& value, VARIANT* result) {
        VariantInit(result);
        return VariantCopyInd(result, &value);
    }
};
template <class Interface>
class Returned<ResultPointer<Interface>> {
  public:
    static HRESULT give(VARIANT& value, Interface** result) {
        ComPtr<IUnknown> object;
        const HRESULT outcome = objectOf(&value, &object);
        if (FAILED(outcome) || !object) return outcome;
        return queryOrAdapt<Interface>(object.Get(), result);
    }
};

// ---- the adapter itself -------------------------------------------------------------------------

template <class Interface>
class AdapterBase : LiveObject, public Interface, public ScriptAdapter {
  public:
    explicit AdapterBase(IDispatch* original) : original_(original) {}
    virtual ~AdapterBase() = default;

    IDispatch* original() final { return original_.object(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) final {
        if (!result) return E_POINTER;
        if (id == __uuidof(Interface)) {
            *result = static_cast<Interface*>(this);
        } else if (id == kScriptAdapterId) {
            *result = static_cast<ScriptAdapter*>(this);
        } else {
            return original()->QueryInterface(id, result);
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return InterlockedIncrement(&references_); }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
        return original()->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) final {
        return original()->GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) final {
        return original()->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interfaceId, LCID locale, WORD flags,
                                     DISPPARAMS* call, VARIANT* result, EXCEPINFO* exception,
                                     UINT* failedArgument) final {
        return original()->Invoke(id, interfaceId, locale, flags, call, result, exception,
                                  failedArgument);
    }

  protected:
    template <class... Slots, class... Values>
    HRESULT forward(const wchar_t* name, WORD kind, Values... values) {
        return exchange<Slots...>(name, kind, nullptr, values...);
    }
    template <class ResultSlot, class... Slots, class ResultType, class... Values>
    HRESULT forwardResult(ResultType* result, const wchar_t* name, WORD kind, Values... values) {
        if (!result) return E_POINTER;
        Variant returned;
        const HRESULT outcome = exchange<Slots...>(name, kind, &returned, values...);
        return FAILED(outcome) ? outcome : Returned<ResultSlot>::give(returned, result);
    }

  private:
    template <class... Slots, class... Values>
    HRESULT exchange(const wchar_t* name, WORD kind, VARIANT* result, Values... values) {
        HRESULT outcome = S_OK;
        const auto callAndTakeBack = [&](auto&... slot) {
            VARIANT arguments[sizeof...(Slots) + 1] = {slot.pass()...};
            outcome = original_.call(name, kind, {arguments, sizeof...(Slots)}, result);
            ((outcome = FAILED(outcome) ? outcome : slot.takeBack()), ...);
        };
        const HRESULT failure = guard([&] {
            std::tuple<Outgoing<Slots>...> slots{Outgoing<Slots>(values)...};
            std::apply(callAndTakeBack, slots);
        });
        return FAILED(failure) ? failure : outcome;
    }

    LateBound original_;
    LONG references_ = 0;
};

template <class Interface>
class Adapter;

// The interface itself where the object has it, else an adapter over its IDispatch.
template <class Interface>
HRESULT adapt(IUnknown* object, Interface** result) {
    if (SUCCEEDED(object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(result)))) {
        return S_OK;
    }
    ComPtr<IDispatch> dispatch;
    const HRESULT outcome = object->QueryInterface(IID_PPV_ARGS(&dispatch));
    if (FAILED(outcome)) return outcome;
    ComPtr<Interface> adapter = new (std::nothrow) Adapter<Interface>(dispatch.Get());
    if (!adapter) return E_OUTOFMEMORY;
    *result = adapter.Detach();
    return S_OK;
}

}  // namespace vela
