// Calling the members of any object by their names.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/convert.h"

namespace vela {

// The number of a member; DISPID_UNKNOWN when the object has none of that name, in any case. Throws
// std::bad_alloc.
DISPID findMember(IDispatch* object, const wchar_t* name);
inline bool hasMember(IDispatch* object, const wchar_t* name) {
    return findMember(object, name) != DISPID_UNKNOWN;
}

// The numbers of the members of one object, or of several whose members are the same. Each is
// asked for once; one that is not there is asked for anew.
class MemberNumbers {
  public:
    // As findMember().
    DISPID of(IDispatch* object, const wchar_t* name);

  private:
    std::vector<std::pair<std::wstring, DISPID>> known_;
};

// An object that is called by the names of its members.
class LateBound {
  public:
    explicit LateBound(ComPtr<IDispatch> object) : object_(std::move(object)) {}

    IDispatch* object() const { return object_.Get(); }

    // Calls a member; `arguments` are in the caller's order, and stand reversed afterwards. A
    // failure is recorded as error info, with number, source and description as the object gave
    // them; run-time error 438 when it has no such member. Throws std::bad_alloc.
    HRESULT call(const wchar_t* name, WORD kind, std::span<VARIANT> arguments, VARIANT* result);

    // These throw Error.
    bool has(const wchar_t* name) { return numberOf(name) != DISPID_UNKNOWN; }
    Variant get(const wchar_t* name);
    void put(const wchar_t* name, Variant value);
    void run(const wchar_t* name, std::span<VARIANT> arguments = {});

  private:
    DISPID numberOf(const wchar_t* name) { return numbers_.of(object_.Get(), name); }

    ComPtr<IDispatch> object_;
    MemberNumbers numbers_;
};

// As LateBound::call(), for a number that is known.
HRESULT callLateBound(IDispatch* object, DISPID id, WORD kind, std::span<VARIANT> arguments,
                      VARIANT* result);
// An argument list of one.
inline std::span<VARIANT> single(VARIANT& argument) { return {&argument, 1}; }

// Properties that are asked for once. These throw Error.
inline Variant getProperty(IDispatch* object, const wchar_t* name) {
    return LateBound(object).get(name);
}
inline void putProperty(IDispatch* object, const wchar_t* name, Variant value) {
    LateBound(object).put(name, std::move(value));
}

}  // namespace vela
