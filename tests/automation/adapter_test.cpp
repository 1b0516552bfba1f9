// Objects that have nothing but IDispatch, in the place of interfaces that callers implement.
#include "automation/adapter.h"

#include "automation/late_objects.h"

namespace vela {
namespace {

class AutomationAdapter : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        script_->names = {L"Copies", L"Port", L"GetDeviceSettings", L"SetPrinter"};
        ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script_.Get(), &printer_), S_OK);
    }
    ComPtr<test::LateObject> script_ = adopted(new test::LateObject);
    ComPtr<_ISetPrinter> printer_;
};

TEST_F(AutomationAdapter, CarriesPropertiesArgumentsAndResults) {
    SHORT copies = 0;
    script_->invoked = [&](DISPID id, WORD flags, DISPPARAMS& call, VARIANT* result, EXCEPINFO*) {
        if (flags == DISPATCH_PROPERTYPUT) {
            EXPECT_EQ(call.cNamedArgs, 1u);
            copies = call.rgvarg[0].iVal;
        } else if (id == 0) {
            *result = Variant(L"7").release();
        } else {
            EXPECT_EQ(textOf(call.rgvarg[3]) + L"/" + textOf(call.rgvarg[2]), L"HP/velho");
            *static_cast<Variant*>(call.rgvarg[2].pvarVal) = Variant(L"nome");
            *static_cast<Variant*>(call.rgvarg[1].pvarVal) = Variant(7L);
            *result = Variant(-1L).release();
        }
        return S_OK;
    };
    EXPECT_EQ(printer_->put_Copies(3), S_OK);
    EXPECT_EQ(copies, 3);
    EXPECT_EQ(printer_->get_Copies(&copies), S_OK);
    EXPECT_EQ(copies, 7);

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

// Looking a name up takes a script engine longer than most members do.
TEST_F(AutomationAdapter, AsksForEachNumberOnce) {
    class Counting : public test::LateObject {
      public:
        HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* asked, UINT count, LCID locale,
                                                DISPID* ids) override {
            ++lookUps;
            return test::LateObject::GetIDsOfNames(id, asked, count, locale, ids);
        }
        int lookUps = 0;
    };
    const auto script = adopted(new Counting);
    script->names = {L"Copies"};
    script->invoked = [](auto&&...) { return S_OK; };
    ComPtr<_ISetPrinter> printer;
    ASSERT_EQ(queryOrAdapt<_ISetPrinter>(script.Get(), &printer), S_OK);
    for (SHORT copies = 0; copies < 5; ++copies) EXPECT_EQ(printer->put_Copies(copies), S_OK);
    EXPECT_EQ(script->lookUps, 1);
    // What is not there yet may be there later.
    EXPECT_EQ(printer->put_PaperBin(1), static_cast<HRESULT>(0x800A01B6));
    script->names.push_back(L"PaperBin");
    EXPECT_EQ(printer->put_PaperBin(1), S_OK);
}

TEST_F(AutomationAdapter, PassesTheObjectsErrorsOn) {
    constexpr auto kOutOfPaper = static_cast<HRESULT>(0x800A0000 | 482);
    script_->invoked = [](DISPID id, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO* exception) {
        if (id == 3) return *result = Variant(L"talvez").release(), S_OK;
        exception->wCode = 482;
        exception->bstrSource = allocate(L"Impressora");
        exception->bstrDescription = allocate(L"Sem papel");
        return DISP_E_EXCEPTION;
    };
    SHORT number = 0;
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(printer_->put_Copies(2), kOutOfPaper);
    EXPECT_EQ(printer_->get_Copies(&number), kOutOfPaper);
    EXCEPINFO info{};
    fillException(E_FAIL, &info);
    EXPECT_EQ(Bstr::owning(info.bstrSource).view(), L"Impressora");
    EXPECT_EQ(Bstr::owning(info.bstrDescription).view(), L"Sem papel");
    EXPECT_EQ(printer_->get_PaperBin(&number), static_cast<HRESULT>(0x800A0000 | 438));
    EXPECT_EQ(printer_->SetPrinter(Bstr(L"x").get(), &done), DISP_E_TYPEMISMATCH);
}

}  // namespace
}  // namespace vela
