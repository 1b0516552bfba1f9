#include "automation/late_bound.h"

#include <dispex.h>

#include <algorithm>

#include "automation/error.h"

namespace vela {

DISPID findMember(IDispatch* object, const wchar_t* name) {
    auto* writable = const_cast<wchar_t*>(name);
    DISPID id = DISPID_UNKNOWN;
    if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, &id))) {
        return id;
    }
    // Some script engines answer for their objects' members through the extended interface only.
    ComPtr<IDispatchEx> extended;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(&extended)))) return DISPID_UNKNOWN;
    const HRESULT outcome = extended->GetDispID(Bstr(name).get(), fdexNameCaseInsensitive, &id);
    return SUCCEEDED(outcome) ? id : DISPID_UNKNOWN;
}

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
    return record(numberOf(exception), source.get(), description.get());
}

}  // namespace

DISPID MemberNumbers::of(IDispatch* object, const wchar_t* name) {
    const auto known = std::find_if(known_.begin(), known_.end(),
                                    [&](const auto& member) { return member.first == name; });
    if (known != known_.end()) return known->second;
    const DISPID id = findMember(object, name);
    if (id != DISPID_UNKNOWN) known_.emplace_back(name, id);
    return id;
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
    if (outcome == DISP_E_MEMBERNOTFOUND) return record(RuntimeError::MemberNotSupported);
    return FAILED(outcome) ? record(outcome) : S_OK;
}

HRESULT LateBound::call(const wchar_t* name, WORD kind, std::span<VARIANT> arguments,
                        VARIANT* result) {
    const DISPID id = numberOf(name);
    if (id == DISPID_UNKNOWN) return record(RuntimeError::MemberNotSupported);
    return callLateBound(object_.Get(), id, kind, arguments, result);
}

Variant LateBound::get(const wchar_t* name) {
    Variant result;
    checkRecorded(call(name, DISPATCH_PROPERTYGET, {}, &result));
    return result;
}

void LateBound::put(const wchar_t* name, Variant value) {
    checkRecorded(call(name, DISPATCH_PROPERTYPUT, single(value), nullptr));
}

void LateBound::run(const wchar_t* name, std::span<VARIANT> arguments) {
    checkRecorded(call(name, DISPATCH_METHOD, arguments, nullptr));
}

}  // namespace vela
