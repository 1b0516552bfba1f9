// Late binding: from a member's name to its number, and from a variant argument list to a typed
// call of the virtual function.
//
// Every interface has one table of its members, generated from the type library's source. A
// member's thunk is instantiated from the member function itself and from one slot type per
// parameter:
//
//     Value<VT_I2>       by value              ValueRef<VT_I2>      by reference
//     Pointer<I>         an object             PointerRef<I>        an object, by reference
//     Array<VT_BSTR>     an array, by reference
//     Result<VT_I2>, ResultPointer<I>          what the member returns
//
// A slot loads its C++ value from the caller's variant, hands it to the call, and stores it back
// where the caller passed a reference. Script engines pass references to variants; a typed
// by-reference parameter works on those too, and the variant is rewritten only if its value
// changed.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <tuple>

#include "automation/convert.h"

namespace vela {

struct Parameter {
    const wchar_t* name;
    bool optional = false;
    long initial = 0;  // what an omitted optional number or boolean holds; texts are empty
};

// The arguments of one call, in the order of the parameters; null where one was left out.
class Arguments {
  public:
    static constexpr std::size_t kMost = 16;

    // Sorts the caller's positional and named arguments into parameter order. DISP_E_BADPARAMCOUNT,
    // DISP_E_PARAMNOTFOUND or DISP_E_PARAMNOTOPTIONAL when they do not fit `parameters`.
    HRESULT bind(const DISPPARAMS& call, std::span<const Parameter> parameters);

    VARIANT* operator[](std::size_t index) const { return slots_[index]; }
    const Parameter& parameter(std::size_t index) const { return parameters_[index]; }
    LCID locale = LOCALE_USER_DEFAULT;
    std::size_t failed = kMost;  // the parameter that a load failed on
    // Its place in the caller's argument list.
    UINT failedArgument(const DISPPARAMS& call) const;

  private:
    VARIANT* slots_[kMost];
    std::span<const Parameter> parameters_;
};

// For members that have no parameters.
inline Arguments noArguments;

using Thunk = HRESULT (*)(IDispatch* self, Arguments& arguments, VARIANT* result);

struct Member {
    DISPID id;
    WORD kind;  // one DISPATCH_ flag
    const wchar_t* name;
    std::span<const Parameter> parameters;
    Thunk call;
};

namespace detail {

// What shares one number: a method, or the accessors of a property.
struct Family {
    const Member* read = nullptr;  // property get or method
    const Member* write = nullptr;
    const Member* writeReference = nullptr;
};
struct NameSlot {
    unsigned hash = 0;
    const Member* member = nullptr;
};

// Member and parameter names are ASCII.
constexpr wchar_t folded(wchar_t c) { return c >= L'a' && c <= L'z' ? wchar_t(c - 32) : c; }

constexpr unsigned hashOf(std::wstring_view name) {
    unsigned hash = 2166136261u;
    for (const wchar_t c : name) hash = (hash ^ folded(c)) * 16777619u;
    return hash ^ (hash >> 15);
}

// Numbers count from 0 upwards; the enumerator's is -4.
constexpr std::size_t familyIndex(DISPID id) {
    return id == DISPID_NEWENUM ? 0 : static_cast<std::size_t>(id) + 1;
}

// How many places the families of members take.
constexpr std::size_t familyCount(std::span<const Member> members) {
    std::size_t count = 1;
    for (const Member& member : members) count = std::max(count, familyIndex(member.id) + 1);
    return count;
}

// The members of an interface by number and by name, made by the compiler.
template <std::size_t families, std::size_t members>
struct MemberIndex {
    constexpr explicit MemberIndex(std::span<const Member> all) {
        for (const Member& member : all) {
            enterNumber(member);
            enterName(member);
        }
    }

    std::array<Family, families> byNumber;                        // DISPID_NEWENUM first
    std::array<Thunk, families - 1> plainGetters{};               // by number
    std::array<NameSlot, std::bit_ceil(members * 2 + 1)> byName;  // open addressing

  private:
    constexpr void enterNumber(const Member& member) {
        Family& family = byNumber[familyIndex(member.id)];
        if (member.kind == DISPATCH_PROPERTYPUT) family.write = &member;
        else if (member.kind == DISPATCH_PROPERTYPUTREF) family.writeReference = &member;
        else family.read = &member;
        if (member.kind == DISPATCH_PROPERTYGET && member.parameters.empty() && member.id >= 0) {
            plainGetters[static_cast<std::size_t>(member.id)] = member.call;
        }
    }
    constexpr void enterName(const Member& member) {
        const unsigned hash = hashOf(member.name);
        std::size_t slot = hash & (byName.size() - 1);
        while (byName[slot].member && byName[slot].member->id != member.id) {
            slot = (slot + 1) & (byName.size() - 1);
        }
        byName[slot] = {hash, &member};
    }
};

}  // namespace detail

// The members of one interface, findable by name without regard to case and by number.
class MemberTable {
  public:
    template <std::size_t families, std::size_t count>
    constexpr MemberTable(std::span<const Member> members,
                          const detail::MemberIndex<families, count>& index)
        : members_(members),
          families_(index.byNumber),
          plainGetters_(index.plainGetters),
          names_(index.byName) {}

    // DISPID_UNKNOWN when there is no such member.
    DISPID find(std::wstring_view name) const;
    // The member that answers `flags`, or null.
    const Member* find(DISPID id, WORD flags, const DISPPARAMS& call) const;
    // The position of a parameter of the members numbered `id`, as a DISPID; or DISPID_UNKNOWN.
    DISPID findParameter(DISPID id, std::wstring_view name) const;
    // The thunk of a property get without parameters, which touches no arguments; null when `id` is
    // anything else.
    Thunk plainGetter(DISPID id) const {
        const auto index = static_cast<std::size_t>(id);
        return index < plainGetters_.size() ? plainGetters_[index] : nullptr;
    }

  private:
    const detail::Family* family(DISPID id) const {
        if (id < 0 && id != DISPID_NEWENUM) return nullptr;
        const std::size_t index = detail::familyIndex(id);
        return index < families_.size() ? &families_[index] : nullptr;
    }

    std::span<const Member> members_;
    std::span<const detail::Family> families_;
    std::span<const Thunk> plainGetters_;
    std::span<const detail::NameSlot> names_;
};

// What Invoke returns for a member that failed, and the error info as the exception.
HRESULT raised(HRESULT failure, EXCEPINFO* exception);

// Specialised for every interface by generated code.
template <class Interface>
const MemberTable& membersOf();

// One interface of an object, as the late-bound world sees it.
struct Facet {
    IDispatch* self;
    const MemberTable* members;
};

// An object's late-bound face: its default interface first, then the members of its other
// interfaces that the default one does not have. Numbers of the facet at index k carry k in their
// high word. The four functions are those of IDispatch.
HRESULT namesToNumbers(std::span<const Facet> facets, LPOLESTR* names, UINT count, DISPID* ids);
HRESULT invokeMember(std::span<const Facet> facets, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* call, VARIANT* result, EXCEPINFO* exception, UINT* failedArgument);

// ---- slots ---------------------------------------------------------------------------------

// The C++ type and the variant field of an automation type.
template <VARTYPE type>
struct Field;
#define VELA_FIELD(type, cpp, member)                           \
    template <>                                                 \
    struct Field<type> {                                        \
        using Type = cpp;                                       \
        static Type& in(VARIANT& v) { return v.member; }        \
        static Type*& refIn(VARIANT& v) { return v.p##member; } \
    };
VELA_FIELD(VT_I2, SHORT, iVal)
VELA_FIELD(VT_I4, LONG, lVal)
VELA_FIELD(VT_R4, FLOAT, fltVal)
VELA_FIELD(VT_R8, DOUBLE, dblVal)
VELA_FIELD(VT_CY, CY, cyVal)
VELA_FIELD(VT_DATE, DATE, date)
VELA_FIELD(VT_BSTR, BSTR, bstrVal)
VELA_FIELD(VT_BOOL, VARIANT_BOOL, boolVal)
#undef VELA_FIELD

// Converts under the automation rules into `target`, which must be empty.
HRESULT coerce(VARIANT* target, VARIANT* source, VARTYPE type, LCID locale);
// Whether two values of one simple type are the same.
bool sameValue(const VARIANT& left, const VARIANT& right);
// The caller's object, or null for Nothing and Empty. DISP_E_TYPEMISMATCH for anything else.
HRESULT objectOf(VARIANT* source, IUnknown** object);
// Puts an object where the caller passed a reference; a no-op where he passed a value.
void storeObject(VARIANT* target, IUnknown* object);
// Writes `value` through the typed reference in `target`; left alone when it does not convert.
void storeThroughReference(VARIANT* target, VARIANT* value);
// The initial content of an omitted parameter of a simple type; the rest is zero.
void initialise(VARIANT* target, VARTYPE type, long initial);

// Makes a caller's object answer `Interface`. Specialised by generated code for the interfaces that
// callers implement: an object that has only IDispatch is then wrapped.
template <class Interface>
HRESULT queryOrAdapt(IUnknown* object, Interface** result) {
    return object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(result));
}
// Whether callers implement `Interface`, so that an adapter may stand behind a pointer to it.
template <class Interface>
inline constexpr bool isAdaptable = false;
// The caller's own object behind what queryOrAdapt() gave; takes over the reference.
IDispatch* unwrapped(IDispatch* object);

template <VARTYPE type, class Parameter = typename Field<type>::Type>
class Value {
  public:
    HRESULT load(Arguments& arguments, std::size_t index) {
        using F = Field<type>;
        VARIANT* argument = arguments[index];
        if (argument && argument->vt == type) {
            value_ = F::in(*argument);
            return S_OK;
        }
        if (!argument) {
            initialise(&own_, type, arguments.parameter(index).initial);
        } else if (const HRESULT failure = coerce(&own_, argument, type, arguments.locale);
                   FAILED(failure)) {
            return failure;
        }
        value_ = F::in(own_);
        return S_OK;
    }
    Parameter pass() { return static_cast<Parameter>(value_); }
    void store(Arguments&, std::size_t) {}

  private:
    typename Field<type>::Type value_{};
    Variant own_;
};

template <>
class Value<VT_VARIANT, VARIANT> {
  public:
    HRESULT load(Arguments& arguments, std::size_t index);
    VARIANT pass() { return value_; }
    void store(Arguments&, std::size_t) {}

  private:
    VARIANT value_{};
};

template <VARTYPE type, class Parameter = typename Field<type>::Type>
class ValueRef {
  public:
    HRESULT load(Arguments& arguments, std::size_t index) {
        using F = Field<type>;
        VARIANT* argument = arguments[index];
        if (argument && argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
        if (argument && argument->vt == (VT_BYREF | type)) {
            target_ = F::refIn(*argument);
        } else if (argument && argument->vt == type && argument != arguments[index]) {
            target_ = &F::in(*argument);
        } else if (!argument) {
            initialise(&own_, type, arguments.parameter(index).initial);
            target_ = &F::in(own_);
        } else {
            const HRESULT failure = coerce(&own_, argument, type, arguments.locale);
            if (FAILED(failure)) return failure;
            target_ = &F::in(own_);
            if (argument != arguments[index] || (argument->vt & VT_BYREF)) before_ = Variant(own_);
        }
        return S_OK;
    }
    Parameter* pass() { return reinterpret_cast<Parameter*>(target_); }
    void store(Arguments& arguments, std::size_t index) {
        if (before_.vt == VT_EMPTY || sameValue(before_, own_)) return;
        VARIANT* argument = arguments[index];
        if (argument->vt == (VT_BYREF | VT_VARIANT)) argument = argument->pvarVal;
        if (argument->vt & VT_BYREF) {
            storeThroughReference(argument, &own_);
        } else {
            std::swap(*argument, static_cast<VARIANT&>(own_));
        }
    }

  private:
    typename Field<type>::Type* target_ = nullptr;
    Variant own_;     // the storage where the caller's has another type
    Variant before_;  // what it was before the call, where it may have to go back
};

template <>
class ValueRef<VT_VARIANT, VARIANT> {
  public:
    HRESULT load(Arguments& arguments, std::size_t index);
    VARIANT* pass() { return target_; }
    void store(Arguments& arguments, std::size_t index);

  private:
    VARIANT* target_ = nullptr;
    Variant own_;
};

template <class Interface>
class Pointer {
  public:
    HRESULT load(Arguments& arguments, std::size_t index) {
        if (!arguments[index]) return S_OK;
        ComPtr<IUnknown> object;
        const HRESULT failure = objectOf(arguments[index], &object);
        if (FAILED(failure)) return failure;
        if (object && FAILED(queryOrAdapt<Interface>(object.Get(), &value_))) {
            return DISP_E_TYPEMISMATCH;
        }
        return S_OK;
    }
    Interface* pass() { return value_.Get(); }
    void store(Arguments&, std::size_t) {}

  protected:
    ComPtr<Interface> value_;
};

template <class Interface>
class PointerRef : public Pointer<Interface> {
  public:
    HRESULT load(Arguments& arguments, std::size_t index) {
        const HRESULT failure = Pointer<Interface>::load(arguments, index);
        before_ = this->value_;
        return failure;
    }
    Interface** pass() { return this->value_.GetAddressOf(); }
    void store(Arguments& arguments, std::size_t index) {
        if (arguments[index] && this->value_.Get() != before_.Get()) {
            storeObject(arguments[index], this->value_.Get());
        }
    }

  private:
    ComPtr<Interface> before_;
};

// A one-dimensional array with the bounds of `source` and its elements converted to `type`.
HRESULT convertArray(SAFEARRAY* source, VARTYPE type, SAFEARRAY** result);

// An array by reference. Arrays of variants, the only ones that scripts have, stand in for arrays
// of any element type: the elements are converted, and converted back if the call changed any.
class ArrayStorage {
  public:
    ~ArrayStorage();
    HRESULT load(Arguments& arguments, std::size_t index, VARTYPE element);
    SAFEARRAY** pass() { return target_; }
    void store(Arguments& arguments, std::size_t index);

  private:
    SAFEARRAY** target_ = &own_;
    SAFEARRAY* own_ = nullptr;
    VARTYPE element_ = VT_EMPTY;
};
template <VARTYPE element>
class Array : public ArrayStorage {
  public:
    HRESULT load(Arguments& arguments, std::size_t index) {
        return ArrayStorage::load(arguments, index, element);
    }
};

template <VARTYPE type, class Parameter = typename Field<type>::Type>
class Result {
  public:
    ~Result() {
        if constexpr (type == VT_BSTR) SysFreeString(value_);
    }
    Parameter* pass() { return &value_; }
    void giveTo(VARIANT* result) {
        Field<type>::in(*result) = static_cast<typename Field<type>::Type>(value_);
        result->vt = type;
        if constexpr (type == VT_BSTR) value_ = nullptr;
    }

  private:
    Parameter value_{};
};
template <>
class Result<VT_VARIANT, VARIANT> {
  public:
    VARIANT* pass() { return &value_; }
    void giveTo(VARIANT* result) { *result = value_.release(); }

  private:
    Variant value_;
};
template <class Interface>
class ResultPointer {
  public:
    Interface** pass() { return value_.GetAddressOf(); }
    void giveTo(VARIANT* result) {
        if constexpr (std::is_same_v<Interface, IUnknown>) {
            result->punkVal = value_.Detach();
            result->vt = VT_UNKNOWN;
        } else {
            result->pdispVal = value_.Detach();
            if constexpr (isAdaptable<Interface>) result->pdispVal = unwrapped(result->pdispVal);
            result->vt = VT_DISPATCH;
        }
    }

  private:
    ComPtr<Interface> value_;
};

template <class... Slots>
struct SlotList {};

namespace detail {

// Conversions may overwrite the thread's last system error; callers are to find the one that the
// member left.
class LastSystemError {
  public:
    ~LastSystemError() { SetLastError(value_); }
    void capture() { value_ = GetLastError(); }

  private:
    DWORD value_ = GetLastError();
};

template <class Interface, class... Slots, std::size_t... index, class Call>
HRESULT callWith([[maybe_unused]] Arguments& arguments, std::index_sequence<index...>,
                 Call&& call) {
    if constexpr (sizeof...(Slots) == 0) {
        return call();
    } else {
        LastSystemError lastError;
        std::tuple<Slots...> slots;
        HRESULT outcome = S_OK;
        const bool loaded =
            (... && ((arguments.failed = index,
                      outcome = std::get<index>(slots).load(arguments, index)) >= 0));
        if (!loaded) return outcome;
        arguments.failed = Arguments::kMost;
        outcome = call(std::get<index>(slots).pass()...);
        lastError.capture();
        (std::get<index>(slots).store(arguments, index), ...);
        return outcome;
    }
}

}  // namespace detail

// The thunk of a member without a result.
template <class Interface, auto method, class... Slots>
HRESULT callMethod(IDispatch* self, Arguments& arguments, VARIANT*) {
    return detail::callWith<Interface, Slots...>(
        arguments, std::index_sequence_for<Slots...>{},
        [self](auto... values) { return (static_cast<Interface*>(self)->*method)(values...); });
}

// The thunk of a member with a result.
template <class Interface, auto method, class ResultSlot, class... Slots>
HRESULT callFunction(IDispatch* self, Arguments& arguments, VARIANT* result) {
    ResultSlot returned;
    const HRESULT outcome = detail::callWith<Interface, Slots...>(
        arguments, std::index_sequence_for<Slots...>{}, [self, &returned](auto... values) {
            return (static_cast<Interface*>(self)->*method)(values..., returned.pass());
        });
    if (SUCCEEDED(outcome) && result) returned.giveTo(result);
    return outcome;
}

}  // namespace vela
