// Objects that have nothing but IDispatch, in the place of interfaces that callers implement.
#include "automation/adapter.h"

#include "support/support.h"

namespace vela {
namespace {

// A printer as a script would write it: members by name, no type information, no interface of ours.
class ScriptPrinter final : public IDispatch {
  public:
    static inline int alive = 0;
    std::wstring failure;  // when not empty, every call fails with it
    std::wstring log;
    short copies = 1;

    ScriptPrinter() { ++alive; }
    virtual ~ScriptPrinter() { --alive; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        *result = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        static const wchar_t* const known[] = {L"Copies", L"Port", L"GetDeviceSettings",
                                               L"SetPrinter", L"Orientation"};
        for (DISPID id = 0; id < 5; ++id) {
            if (_wcsicmp(names[0], known[id]) == 0) {
                *ids = id + 100;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* call,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        if (!failure.empty()) {
            exception->wCode = 482;
            exception->bstrSource = allocate(L"Impressora");
            exception->bstrDescription = allocate(failure);
            return DISP_E_EXCEPTION;
        }
        if (id == 100 && flags == DISPATCH_PROPERTYPUT) {
            EXPECT_EQ(call->cNamedArgs, 1u);
            copies = call->rgvarg[0].iVal;
        } else if (id == 100) {
            *result = Variant(std::to_wstring(copies)).release();
        } else if (id == 101) {
            *result = Variant(L"LPT1:").release();
        } else if (id == 102) {
            // Arguments come last first.
            log = textOf(call->rgvarg[3]) + L"/" + textOf(call->rgvarg[2]);
            *static_cast<Variant*>(call->rgvarg[2].pvarVal) = Variant(L"nome");
            *static_cast<Variant*>(call->rgvarg[1].pvarVal) = Variant(7L);
            *result = Variant(-1L).release();
        } else if (id == 103) {
            *result = Variant(L"talvez").release();
        } else {
            return DISP_E_MEMBERNOTFOUND;
        }
        return S_OK;
    }

  private:
    ULONG references_ = 1;
};

class AutomationAdapter : public test::NoObjectsLeft {
  protected:
    void SetUp() override { ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script_.Get(), &printer_), S_OK); }
    void TearDown() override {
        printer_.Reset();
        script_.Reset();
        EXPECT_EQ(ScriptPrinter::alive, 0);
        NoObjectsLeft::TearDown();
    }
    ComPtr<ScriptPrinter> script_ = adopted(new ScriptPrinter);
    ComPtr<_ISetPrinter> printer_;
};

TEST_F(AutomationAdapter, KeepsTheObjectsIdentity) {
    ComPtr<_ISetPrinter> again;
    ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script_.Get(), &again), S_OK);
    EXPECT_TRUE(sameObject(printer_.Get(), again.Get()));
    EXPECT_TRUE(sameObject(printer_.Get(), script_.Get()));
    EXPECT_TRUE(sameObject(nullptr, nullptr));
    EXPECT_FALSE(sameObject(printer_.Get(), nullptr));
    const auto other = adopted(new ScriptPrinter);
    EXPECT_FALSE(sameObject(printer_.Get(), other.Get()));

    ComPtr<IUnknown> identity;
    ComPtr<_ISetPrinter> adapted;
    EXPECT_EQ(printer_.As(&identity), S_OK);
    EXPECT_EQ(identity.Get(), static_cast<IUnknown*>(script_.Get()));
    EXPECT_EQ(printer_.As(&adapted), S_OK);
    EXPECT_EQ(adapted.Get(), printer_.Get());
    ComPtr<_Collection> collection;
    EXPECT_EQ(printer_.As(&collection), E_NOINTERFACE);
    EXPECT_EQ(adopted(unwrapped(printer_.Detach())).Get(), static_cast<IDispatch*>(script_.Get()));
}

TEST_F(AutomationAdapter, CarriesPropertiesArgumentsAndResults) {
    EXPECT_EQ(printer_->put_Copies(3), S_OK);
    SHORT copies = 0;
    EXPECT_EQ(printer_->get_Copies(&copies), S_OK);
    EXPECT_EQ(copies, 3);
    Bstr port;
    EXPECT_EQ(printer_->get_Port(port.put()), S_OK);
    EXPECT_EQ(port.view(), L"LPT1:");

    BSTR device = SysAllocString(L"velho");
    BSTR driver = nullptr;
    BSTR unchanged = SysAllocString(L"LPT2:");
    VARIANT_BOOL found = VARIANT_FALSE;
    EXPECT_EQ(printer_->GetDeviceSettings(Bstr(L"HP").get(), &device, &driver, &unchanged, &found),
              S_OK);
    EXPECT_EQ(script_->log, L"HP/velho");
    EXPECT_EQ(found, VARIANT_TRUE);
    EXPECT_EQ(Bstr::owning(device).view(), L"nome");
    EXPECT_EQ(Bstr::owning(driver).view(), L"7");
    EXPECT_EQ(Bstr::owning(unchanged).view(), L"LPT2:");
}

TEST_F(AutomationAdapter, PassesTheObjectsErrorsOn) {
    SHORT number = 0;
    script_->failure = L"Sem papel";
    EXPECT_EQ(printer_->get_Copies(&number), static_cast<HRESULT>(0x800A0000 | 482));
    EXCEPINFO info{};
    fillException(E_FAIL, &info);
    EXPECT_EQ(Bstr::owning(info.bstrSource).view(), L"Impressora");
    EXPECT_EQ(Bstr::owning(info.bstrDescription).view(), L"Sem papel");
    EXPECT_EQ(printer_->put_Copies(2), static_cast<HRESULT>(0x800A0000 | 482));
    script_->failure.clear();

    constexpr auto kNotSupported = static_cast<HRESULT>(0x800A0000 | 438);
    PrinterOrientation orientation{};
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(printer_->get_PaperBin(&number), kNotSupported);          // no such name
    EXPECT_EQ(printer_->get_Orientation(&orientation), kNotSupported);  // the name, but no property
    EXPECT_EQ(printer_->SetPrinter(Bstr(L"x").get(), &done), DISP_E_TYPEMISMATCH);
    SetErrorInfo(0, nullptr);
}

// An interface that nobody outside implements takes no stand-in.
TEST_F(AutomationAdapter, StandsInForCallersInterfacesOnly) {
    ComPtr<_Collection> collection;
    EXPECT_EQ(queryOrAdapt<_Collection>(script_.Get(), collection.GetAddressOf()), E_NOINTERFACE);
    EXPECT_EQ(collection.Get(), nullptr);
}

}  // namespace
}  // namespace vela
