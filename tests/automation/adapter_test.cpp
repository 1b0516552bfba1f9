// Objects that have nothing but IDispatch, in the place of interfaces that callers implement.
#include "automation/adapter.h"

#include "automation/late_bound.h"

namespace vela {
namespace {

class AutomationAdapter : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        script_->names = {L"Copies", L"Port", L"GetDeviceSettings", L"SetPrinter", L"Orientation"};
        ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script_.Get(), &printer_), S_OK);
    }
    ComPtr<test::LateObject> script_ = adopted(new test::LateObject);
    ComPtr<_ISetPrinter> printer_;
};

TEST_F(AutomationAdapter, KeepsTheObjectsIdentity) {
    ComPtr<_ISetPrinter> again;
    ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script_.Get(), &again), S_OK);
    EXPECT_TRUE(sameObject(printer_.Get(), again.Get()));
    EXPECT_TRUE(sameObject(printer_.Get(), script_.Get()));
    EXPECT_FALSE(sameObject(printer_.Get(), nullptr));
    ComPtr<IDispatch> late;
    EXPECT_EQ(static_cast<IUnknown*>(printer_.Get())->QueryInterface(IID_PPV_ARGS(&late)), S_OK);
    EXPECT_EQ(late.Get(), script_.Get());
    EXPECT_FALSE(sameObject(printer_.Get(), adopted(new test::LateObject).Get()));
    EXPECT_EQ(adopted(unwrapped(again.Detach())).Get(), static_cast<IDispatch*>(script_.Get()));
    // An interface that nobody outside implements takes no stand-in.
    ComPtr<_Collection> collection;
    EXPECT_EQ(printer_.As(&collection), E_NOINTERFACE);
    EXPECT_EQ(queryOrAdapt<_Collection>(script_.Get(), collection.GetAddressOf()), E_NOINTERFACE);
}

TEST_F(AutomationAdapter, CarriesPropertiesArgumentsAndResults) {
    script_->invoked = [copies = short{1}](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result,
                                           EXCEPINFO*) mutable {
        if (id == 0 && flags == DISPATCH_PROPERTYPUT) {
            EXPECT_EQ(call.cNamedArgs, 1u);
            copies = call.rgvarg[0].iVal;
        } else if (id == 0) {
            *result = Variant(std::to_wstring(copies)).release();
        } else {
            EXPECT_EQ(textOf(call.rgvarg[3]) + L"/" + textOf(call.rgvarg[2]), L"HP/velho");
            *static_cast<Variant*>(call.rgvarg[2].pvarVal) = Variant(L"nome");
            *static_cast<Variant*>(call.rgvarg[1].pvarVal) = Variant(7L);
            *result = Variant(-1L).release();
        }
        return S_OK;
    };
    SHORT copies = 0;
    EXPECT_EQ(printer_->put_Copies(3), S_OK);
    EXPECT_EQ(printer_->get_Copies(&copies), S_OK);
    EXPECT_EQ(copies, 3);

    BSTR device = SysAllocString(L"velho");
    BSTR driver = nullptr;
    BSTR unchanged = SysAllocString(L"LPT2:");
    VARIANT_BOOL found = VARIANT_FALSE;
    printer_->GetDeviceSettings(Bstr(L"HP").get(), &device, &driver, &unchanged, &found);
    EXPECT_EQ(found, VARIANT_TRUE);
    EXPECT_EQ(Bstr::owning(device).view(), L"nome");
    EXPECT_EQ(Bstr::owning(driver).view(), L"7");
    EXPECT_EQ(Bstr::owning(unchanged).view(), L"LPT2:");
}

TEST_F(AutomationAdapter, PassesTheObjectsErrorsOn) {
    constexpr auto kOutOfPaper = static_cast<HRESULT>(0x800A0000 | 482);
    constexpr auto kNotSupported = static_cast<HRESULT>(0x800A0000 | 438);
    script_->invoked = [](DISPID id, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO* exception) {
        if (id == 3) return *result = Variant(L"talvez").release(), S_OK;
        if (id == 4) return DISP_E_MEMBERNOTFOUND;
        exception->wCode = 482;
        exception->bstrSource = allocate(L"Impressora");
        exception->bstrDescription = allocate(L"Sem papel");
        return DISP_E_EXCEPTION;
    };
    SHORT number = 0;
    PrinterOrientation orientation{};
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(printer_->put_Copies(2), kOutOfPaper);
    EXPECT_EQ(printer_->get_Copies(&number), kOutOfPaper);
    EXCEPINFO info{};
    fillException(E_FAIL, &info);
    EXPECT_EQ(Bstr::owning(info.bstrSource).view(), L"Impressora");
    EXPECT_EQ(Bstr::owning(info.bstrDescription).view(), L"Sem papel");
    EXPECT_EQ(printer_->get_PaperBin(&number), kNotSupported);          // no such name
    EXPECT_EQ(printer_->get_Orientation(&orientation), kNotSupported);  // the name, but no property
    EXPECT_EQ(printer_->SetPrinter(Bstr(L"x").get(), &done), DISP_E_TYPEMISMATCH);
}

}  // namespace
}  // namespace vela
