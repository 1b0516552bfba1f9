// A socket control of somebody else's: members and events by name, numbers of its own, a type
// library made on the spot, and a log of all that it is asked for.
#pragma once

#include <map>

#include "automation/late_bound.h"

namespace vela::test {

// How a control tells what its events are.
enum class Tells { DefaultSource, Class, ConnectionPoints, Nothing };

class FakeControl final : public IDispatch, public IProvideClassInfo2, public EventSourceBase {
  public:
    explicit FakeControl(Tells tells) : EventSourceBase(kEvents), tells_(tells) {
        InterlockedIncrement(&liveObjects);
        describe();
    }
    ~FakeControl() { InterlockedDecrement(&liveObjects); }

    std::string log() { return std::exchange(log_, {}); }
    short state = 0;
    std::wstring data;    // what GetData gives
    std::string failing;  // the member that raises error 10048

    // Raises an event by its name.
    void raise(const std::wstring& event, std::vector<VARIANT> arguments = {}) {
        fire(numberOf(event), std::move(arguments));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = nullptr;
        if (id == IID_IUnknown || id == IID_IDispatch) *result = static_cast<IDispatch*>(this);
        if (id == IID_IConnectionPointContainer) {
            *result = static_cast<IConnectionPointContainer*>(this);
        }
        const bool classed = tells_ == Tells::DefaultSource || tells_ == Tells::Class;
        if (id == IID_IProvideClassInfo && classed) {
            *result = static_cast<IProvideClassInfo*>(this);
        }
        if (id == IID_IProvideClassInfo2 && tells_ == Tells::DefaultSource) {
            *result = static_cast<IProvideClassInfo2*>(this);
        }
        if (*result) AddRef();
        return *result ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD, GUID* id) override { return *id = kEvents, S_OK; }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override {
        return tells_ == Tells::Class ? library_->GetTypeInfoOfGuid(kClass, info) : E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 1, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (tells_ == Tells::Nothing) return E_NOTIMPL;
        return library_->GetTypeInfoOfGuid(kMembers, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* asked, UINT, LCID,
                                            DISPID* ids) override {
        for (std::size_t i = 0; i < std::size(kNames); ++i) {
            if (_wcsicmp(asked[0], kNames[i]) == 0) return *ids = static_cast<DISPID>(i), S_OK;
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* call,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        const std::wstring name = kNames[id];
        if (flags & DISPATCH_PROPERTYGET) return read(name, result);
        log_ += narrow(name);
        for (UINT i = call->cArgs; i > 0; --i) {
            const VARIANT& argument = call->rgvarg[i - 1];
            if (name == L"GetData" && argument.vt == (VT_BYREF | VT_VARIANT)) {
                store(argument.pvarVal, Variant(std::wstring_view(data)));
            } else {
                log_ += (flags & DISPATCH_PROPERTYPUT ? '=' : ':') + narrow(textOf(argument));
            }
        }
        log_ += ' ';
        if (flags & DISPATCH_PROPERTYPUT) values_[name] = textOf(call->rgvarg[0]);
        if (name == L"Close") state = 0;
        if (narrow(name) != failing) return S_OK;
        exception->scode = static_cast<SCODE>(0x800A2740);
        exception->bstrSource = SysAllocString(L"fake");
        exception->bstrDescription = SysAllocString(L"no");
        return DISP_E_EXCEPTION;
    }

  private:
    static constexpr const wchar_t* kNames[] = {
        L"GetData", L"SendData",   L"Accept",     L"Connect",      L"Listen",   L"Close",
        L"State",   L"RemoteHost", L"RemotePort", L"RemoteHostIP", L"LocalPort"};
    // Numbered from 70 downwards.
    static constexpr const wchar_t* kEventNames[] = {
        L"Error",  L"Close", L"SendProgress", L"SendComplete", L"DataArrival", L"ConnectionRequest",
        L"Connect"};
    static constexpr GUID kEvents = {0x5d1b92f4, 1, 2, {3, 1}};
    static constexpr GUID kClass = {0x5d1b92f4, 1, 2, {3, 2}};
    static constexpr GUID kMembers = {0x5d1b92f4, 1, 2, {3, 3}};

    static std::string narrow(const std::wstring& wide) { return {wide.begin(), wide.end()}; }
    static DISPID numberOf(const std::wstring& event) {
        DISPID number = 70;
        for (const wchar_t* name : kEventNames) {
            if (event == name) break;
            --number;
        }
        return number;
    }
    HRESULT read(const std::wstring& name, VARIANT* result) {
        if (name == L"State") *result = arg(state);
        else store(result, Variant(std::wstring_view(values_[name])));
        return S_OK;
    }
    ComPtr<ICreateTypeInfo> addType(ICreateTypeLib2* library, const wchar_t* name, TYPEKIND kind,
                                    const GUID& id) {
        ComPtr<ICreateTypeInfo> type;
        EXPECT_EQ(library->CreateTypeInfo(const_cast<wchar_t*>(name), kind, &type), S_OK);
        EXPECT_EQ(type->SetGuid(id), S_OK);
        return type;
    }
    void describe() {
        ComPtr<ICreateTypeLib2> library;
        ASSERT_EQ(CreateTypeLib2(SYS_WIN32, L"unsaved.tlb", &library), S_OK);
        const auto members = addType(library.Get(), L"Members", TKIND_DISPATCH, kMembers);
        const auto events = addType(library.Get(), L"Events", TKIND_DISPATCH, kEvents);
        const auto type = addType(library.Get(), L"Control", TKIND_COCLASS, kClass);
        for (UINT i = 0; i < std::size(kEventNames); ++i) {
            FUNCDESC function{};
            auto* name = const_cast<wchar_t*>(kEventNames[i]);
            function.memid = numberOf(name);
            function.funckind = FUNC_DISPATCH;
            function.invkind = INVOKE_FUNC;
            function.callconv = CC_STDCALL;
            function.elemdescFunc.tdesc.vt = VT_VOID;
            EXPECT_EQ(events->AddFuncDesc(i, &function), S_OK);
            EXPECT_EQ(events->SetFuncAndParamNames(i, &name, 1), S_OK);
        }
        for (UINT i = 0; i < 2; ++i) {
            ComPtr<ITypeInfo> implemented;
            HREFTYPE reference = 0;
            EXPECT_EQ((i == 0 ? members : events).As(&implemented), S_OK);
            EXPECT_EQ(type->AddRefTypeInfo(implemented.Get(), &reference), S_OK);
            EXPECT_EQ(type->AddImplType(i, reference), S_OK);
            EXPECT_EQ(type->SetImplTypeFlags(
                          i, IMPLTYPEFLAG_FDEFAULT | (i == 1 ? IMPLTYPEFLAG_FSOURCE : 0)),
                      S_OK);
        }
        ASSERT_EQ(library.As(&library_), S_OK);
    }

    const Tells tells_;
    ComPtr<ITypeLib> library_;
    std::string log_;
    std::map<std::wstring, std::wstring> values_{{L"RemoteHostIP", L"10.0.0.7"}};
    ULONG references_ = 1;
};

}  // namespace vela::test
