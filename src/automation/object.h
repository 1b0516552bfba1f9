// The base of every automation object: reference count, interfaces, late binding, class
// information, error info and, where the class has events, connection points.
//
//     class KVItem final : public Object<KVItem, _KVItem, _IUPItem> { ... };
//
// The first interface is the class's default one. An object has one late-bound face, whichever
// pointer it is reached through: its default interface's members, then those of the others.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include <array>
#include <cstring>

#include "automation/adapter.h"
#include "automation/counted.h"
#include "automation/dispatch.h"
#include "automation/error.h"
#include "automation/events.h"

namespace vela {

// What the type library says of the class whose default interface this is: `Events` (void when it
// has none), `id()`, and `create(id, result)`, which makes an object for COM and is defined in the
// file of a class that callers may create. Specialised by generated code.
template <class Default>
struct ClassOf;

// The description of one interface or class in this module's type library; a failure when there is
// none. Supplied by whoever holds the type library.
HRESULT typeInfoOf(const GUID& id, ITypeInfo** info) noexcept;

// An interface whose members all answer E_NOTIMPL, for classes that override some of them.
// Specialised by generated code.
template <class Interface>
class Unbuilt;

// The interface that a base class of an object implements: itself, or what it names as such.
template <class Base>
struct InterfaceIn {
    using Type = Base;
};
template <class Base>
requires requires { typename Base::Interface; }
struct InterfaceIn<Base> {
    using Type = typename Base::Interface;
};

// Identifies one of our own classes within this module: no object of another module answers it.
// The tag is writable, for linkers may fold what can only be read.
template <class Class>
GUID ownClassId() {
    static char tag = 0;
    GUID id = {0x3c1b7d52, 0x8e0f, 0x4a6d, {}};
    const void* address = &tag;
    static_assert(sizeof address <= sizeof id.Data4);
    std::memcpy(id.Data4, &address, sizeof address);
    return id;
}

template <class Derived, class DefaultBase, class... Others>
class Object
    : LiveObject,
      public DefaultBase,
      public Others...,
      public ISupportErrorInfo,
      public IProvideClassInfo2,
      public EventSource<typename ClassOf<typename InterfaceIn<DefaultBase>::Type>::Events> {
  public:
    using Default = typename InterfaceIn<DefaultBase>::Type;
    using Events = typename ClassOf<Default>::Events;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) final {
        if (!result) return E_POINTER;
        *result = find(id);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return InterlockedIncrement(&references_); }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = InterlockedDecrement(&references_);
        if (left == 0) {
            references_ = kDying;
            delete static_cast<Derived*>(this);
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) final {
        if (!info) return E_POINTER;
        *info = nullptr;
        return index == 0 ? typeInfoOf(__uuidof(Default), info) : DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) final {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        HRESULT outcome = S_OK;
        const HRESULT failure =
            guard([&] { outcome = namesToNumbers(facets(), names, count, ids); });
        return FAILED(failure) ? failure : outcome;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* call, VARIANT* result, EXCEPINFO* exception,
                                     UINT* failedArgument) final {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        // What callers do most, reading a property, goes the shortest way.
        if ((flags & DISPATCH_PROPERTYGET) && call && call->cArgs == 0 && result) {
            if (const Thunk get = members_.plainGetter(id)) {
                result->vt = VT_EMPTY;
                const HRESULT outcome = get(static_cast<Default*>(this), noArguments, result);
                return SUCCEEDED(outcome) ? S_OK : raised(outcome, exception);
            }
        }
        HRESULT outcome = S_OK;
        const HRESULT failure = guard([&] {
            outcome =
                invokeMember(facets(), id, locale, flags, call, result, exception, failedArgument);
        });
        return FAILED(failure) ? failure : outcome;
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) final {
        const bool ours = id == __uuidof(Default) ||
                          (... || (id == __uuidof(typename InterfaceIn<Others>::Type)));
        return ours ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) final {
        if (!info) return E_POINTER;
        *info = nullptr;
        return typeInfoOf(ClassOf<Default>::id(), info);
    }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) final {
        if (!id) return E_POINTER;
        *id = GUID_NULL;
        if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
        if constexpr (!std::is_void_v<Events>) *id = __uuidof(Events);
        return S_OK;
    }

  protected:
    // Objects begin with one reference, which make() hands to the caller.
    virtual ~Object() = default;

  private:
    // Keeps a reference taken and released while the object is being destroyed from destroying it
    // again.
    static constexpr LONG kDying = 0x40000000;

    std::array<Facet, 1 + sizeof...(Others)> facets() {
        return {Facet{static_cast<Default*>(this), &members_}, facetOf<Others>()...};
    }
    template <class Base>
    Facet facetOf() {
        using Interface = typename InterfaceIn<Base>::Type;
        return {static_cast<Interface*>(static_cast<Base*>(this)), &membersOf<Interface>()};
    }
    template <class Base>
    void findIn(REFIID id, void*& found) {
        using Interface = typename InterfaceIn<Base>::Type;
        if (id == __uuidof(Interface)) found = static_cast<Interface*>(static_cast<Base*>(this));
    }
    void* find(REFIID id) {
        if (id == __uuidof(Default) || id == IID_IDispatch || id == IID_IUnknown) {
            return static_cast<Default*>(this);
        }
        void* found = nullptr;
        (findIn<Others>(id, found), ...);
        if (id == IID_ISupportErrorInfo) found = static_cast<ISupportErrorInfo*>(this);
        if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) {
            found = static_cast<IProvideClassInfo2*>(this);
        }
        if constexpr (!std::is_void_v<Events>) {
            if (id == IID_IConnectionPointContainer) {
                found = static_cast<IConnectionPointContainer*>(this);
            }
        }
        if (id == ownClassId<Derived>()) found = static_cast<Derived*>(this);
        return found;
    }

    const MemberTable& members_ = membersOf<Default>();
    LONG references_ = 1;
};

// A new object. Throws std::bad_alloc and whatever its constructor throws.
template <class Class, class... Arguments>
ComPtr<Class> make(Arguments&&... arguments) {
    return adopted(new Class(std::forward<Arguments>(arguments)...));
}

// For ClassOf<>::create().
template <class Class>
HRESULT createObject(REFIID id, void** result) {
    return guard([&] { check(make<Class>()->QueryInterface(id, result)); });
}

// The object behind an interface pointer if it is of our class `Class`, otherwise null.
template <class Class>
ComPtr<Class> own(IUnknown* object) {
    void* found = nullptr;
    const bool ours = object && SUCCEEDED(object->QueryInterface(ownClassId<Class>(), &found));
    return adopted(static_cast<Class*>(ours ? found : nullptr));
}

// The object that a caller must have passed by reference; throws Error 5.
template <class Interface>
ComPtr<Interface> required(Interface** passed) {
    if (!passed || !*passed) raise(RuntimeError::InvalidProcedureCall);
    return *passed;
}

// A text property of any object, read through its interface. Throws Error.
template <class Interface>
std::wstring textProperty(Interface* object, HRESULT (STDMETHODCALLTYPE Interface::*get)(BSTR*)) {
    Bstr value;
    checkRecorded((object->*get)(value.put()));
    return value.str();
}

// Properties that hold their value and do nothing else.
inline HRESULT give(BSTR* result, std::wstring_view field) {
    return answer(result, [&] { return field; });
}
template <class Field>
HRESULT give(Field* result, Field field) {
    return answer(result, [&] { return field; });
}
inline HRESULT take(std::wstring& field, BSTR value) {
    return guard([&] { field = text(value); });
}
template <class Field>
HRESULT take(Field& field, Field value) {
    field = value;
    return S_OK;
}

}  // namespace vela
