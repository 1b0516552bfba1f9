// A socket control of somebody else's: members and events by name, numbers of its own, a type
// library made on the spot, and a log of all that it is asked for.
#pragma once

#include <map>

#include "automation/late_objects.h"

namespace vela::test {

class FakeControl final : public LateObject, public EventSourceBase {
  public:
    FakeControl() : EventSourceBase(kEvents) {
        names = {L"GetData", L"SendData",   L"Accept",     L"Connect",      L"Listen",   L"Close",
                 L"State",   L"RemoteHost", L"RemotePort", L"RemoteHostIP", L"LocalPort"};
        invoked = [this](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                         EXCEPINFO* exception) {
            if (flags & DISPATCH_PROPERTYGET)
                return store(result, Variant(values[names[id]])), S_OK;
            return ask(names[id], flags, call, exception);
        };
        describe();
    }

    // What its properties and GetData give.
    std::map<std::wstring, Variant> values{{L"State", Variant(0L)},
                                           {L"RemoteHostIP", Variant(L"10.0.0.7")}};
    std::wstring failing;  // the member that raises error 10048

    std::wstring log() { return std::exchange(log_, {}); }

    // Raises an event by its name.
    void raise(const wchar_t* event, std::vector<VARIANT> arguments = {}) {
        auto* name = const_cast<wchar_t*>(event);
        MEMBERID number = DISPID_UNKNOWN;
        EXPECT_EQ(events_->GetIDsOfNames(&name, 1, &number), S_OK);
        fire(number, std::move(arguments));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        if (id != IID_IConnectionPointContainer) return LateObject::QueryInterface(id, result);
        *result = static_cast<IConnectionPointContainer*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return LateObject::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return LateObject::Release(); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        return events_.CopyTo(info);
    }

  private:
    static constexpr GUID kEvents = {0x5d1b92f4, 1, 2, {3, 1}};

    HRESULT ask(const std::wstring& name, WORD flags, DISPPARAMS& call, EXCEPINFO* exception) {
        log_ += name;
        for (UINT i = call.cArgs; i > 0; --i) {
            const VARIANT& argument = call.rgvarg[i - 1];
            if (argument.vt == (VT_BYREF | VT_VARIANT))
                store(argument.pvarVal, Variant(values[name]));
            else log_ += (flags & DISPATCH_PROPERTYPUT ? L'=' : L':') + textOf(argument);
        }
        log_ += L' ';
        if (flags & DISPATCH_PROPERTYPUT) values[name] = Variant(call.rgvarg[0]);
        if (name == L"Close") values[L"State"] = Variant(0L);
        if (name != failing) return S_OK;
        exception->scode = static_cast<SCODE>(0x800A2740);
        exception->bstrSource = SysAllocString(L"fake");
        exception->bstrDescription = SysAllocString(L"no");
        return DISP_E_EXCEPTION;
    }
    void describe() {
        ComPtr<ICreateTypeLib2> library;
        ComPtr<ICreateTypeInfo> events;
        wchar_t title[] = L"Events";
        ASSERT_EQ(CreateTypeLib2(SYS_WIN32, L"unsaved.tlb", &library), S_OK);
        ASSERT_EQ(library->CreateTypeInfo(title, TKIND_DISPATCH, &events), S_OK);
        ASSERT_EQ(events->SetGuid(kEvents), S_OK);
        UINT place = 0;
        for (const wchar_t* event : {L"Error", L"Close", L"SendProgress", L"SendComplete",
                                     L"DataArrival", L"ConnectionRequest", L"Connect"}) {
            auto* name = const_cast<wchar_t*>(event);
            FUNCDESC function{};
            function.memid = 70 - static_cast<MEMBERID>(place);
            function.funckind = FUNC_DISPATCH;
            function.invkind = INVOKE_FUNC;
            function.callconv = CC_STDCALL;
            function.elemdescFunc.tdesc.vt = VT_VOID;
            EXPECT_EQ(events->AddFuncDesc(place, &function), S_OK);
            EXPECT_EQ(events->SetFuncAndParamNames(place, &name, 1), S_OK);
            ++place;
        }
        ASSERT_EQ(events.As(&events_), S_OK);
    }

    ComPtr<ITypeInfo> events_;
    std::wstring log_;
};

}  // namespace vela::test
