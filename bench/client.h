// What the benchmarks that are clients of the registered library share.
#pragma once

#include <VelaUtil10.h>
#include <windows.h>
#include <wrl/client.h>

#include <cstdlib>
#include <string>

#include "bench/measure.h"

namespace bench {

using Microsoft::WRL::ComPtr;

// Ends the program when a call failed.
inline void require(HRESULT outcome, const char* what) {
    if (SUCCEEDED(outcome)) return;
    std::printf("%s failed: %08lx\n", what, static_cast<unsigned long>(outcome));
    std::exit(2);
}

// Owns a string for the length of a scope.
struct Text {
    explicit Text(const std::wstring& text) : value(SysAllocString(text.c_str())) {}
    ~Text() { SysFreeString(value); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    operator BSTR() const { return value; }

    BSTR value;
};

template <class Interface>
ComPtr<Interface> create(const wchar_t* progId) {
    CLSID id;
    ComPtr<Interface> object;
    require(CLSIDFromProgID(progId, &id), "finding a class");
    require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), "creating");
    return object;
}

inline DISPID numberOf(IDispatch* object, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    auto* writable = const_cast<wchar_t*>(name);
    require(object->GetIDsOfNames(IID_NULL, &writable, 1, 0, &id), "finding a member");
    return id;
}

// One late-bound call with at most one argument, through the object or through type information.
class Call {
  public:
    Call(DISPID id, WORD flags) : id(id), flags(flags) {}
    Call(DISPID id, WORD flags, BSTR text) : Call(id, flags) {
        argument.vt = VT_BSTR;
        argument.bstrVal = text;
        arguments = 1;
    }

    void through(IDispatch* object) {
        finish(object->Invoke(id, IID_NULL, 0, flags, &parameters(), &result, nullptr, nullptr));
    }
    void through(ITypeInfo* info, void* object) {
        finish(info->Invoke(object, id, flags, &parameters(), &result, nullptr, nullptr));
    }

  private:
    DISPPARAMS& parameters() {
        list = {&argument, nullptr, arguments, 0};
        result.vt = VT_EMPTY;
        return list;
    }
    void finish(HRESULT outcome) {
        require(outcome, "a late-bound call");
        if (result.vt == VT_BSTR) SysFreeString(result.bstrVal);
    }

    const DISPID id;
    const WORD flags;
    VARIANT argument{};
    UINT arguments = 0;
    DISPPARAMS list{};
    VARIANT result;
};

}  // namespace bench
