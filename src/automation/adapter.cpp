#include "automation/adapter.h"

#include <dispex.h>

#include <algorithm>

namespace vela {

namespace {

// The number that a failed late-bound call stands for.
HRESULT numberOf(const EXCEPINFO& exception) {
    if (exception.wCode) return static_cast<HRESULT>(0x800A0000u | exception.wCode);
    return FAILED(exception.scode) ? exception.scode : E_FAIL;
}

HRESULT passOn(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    const Bstr source = Bstr::owning(exception.bstrSource);
    const Bstr description = Bstr::owning(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    const HRESULT number = numberOf(exception);
    return guard([&] { throw Error{number, source.str(), description.str()}; });
}

}  // namespace

bool sameObject(IUnknown* left, IUnknown* right) {
    if (left == right || !left || !right) return left == right;
    ComPtr<IUnknown> leftIdentity;
    ComPtr<IUnknown> rightIdentity;
    left->QueryInterface(IID_PPV_ARGS(&leftIdentity));
    right->QueryInterface(IID_PPV_ARGS(&rightIdentity));
    return leftIdentity.Get() == rightIdentity.Get();
}

HRESULT findMember(IDispatch* object, const wchar_t* name, DISPID* id) {
    auto* writable = const_cast<wchar_t*>(name);
    const HRESULT outcome = object->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, id);
    if (SUCCEEDED(outcome)) return outcome;
    // Some script engines answer for their objects' members through the extended interface only.
    ComPtr<IDispatchEx> extended;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(&extended)))) return outcome;
    return extended->GetDispID(Bstr(name).get(), fdexNameCaseInsensitive, id);
}

HRESULT callLateBound(IDispatch* object, DISPID id, WORD kind, std::span<VARIANT> arguments,
                      VARIANT* result) {
    std::reverse(arguments.begin(), arguments.end());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS call{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
        call.rgdispidNamedArgs = &put;
        call.cNamedArgs = 1;
        result = nullptr;
    }
    EXCEPINFO exception{};
    const HRESULT outcome =
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &call, result, &exception, nullptr);
    if (outcome == DISP_E_EXCEPTION) return passOn(exception);
    if (outcome == DISP_E_MEMBERNOTFOUND) {
        return guard([] { raise(RuntimeError::MemberNotSupported); });
    }
    if (FAILED(outcome)) return guard([&] { check(outcome); });
    return S_OK;
}

HRESULT callLateBound(IDispatch* object, const wchar_t* name, WORD kind,
                      std::span<VARIANT> arguments, VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(findMember(object, name, &id))) {
        return guard([] { raise(RuntimeError::MemberNotSupported); });
    }
    return callLateBound(object, id, kind, arguments, result);
}

Variant getProperty(IDispatch* object, const wchar_t* name) {
    Variant result;
    checkRecorded(callLateBound(object, name, DISPATCH_PROPERTYGET, {}, &result));
    return result;
}

void putProperty(IDispatch* object, const wchar_t* name, Variant value) {
    checkRecorded(callLateBound(object, name, DISPATCH_PROPERTYPUT, single(value), nullptr));
}

}  // namespace vela
