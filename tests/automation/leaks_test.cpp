// Ten thousand rounds of what clients do leave no object and no memory behind.
#include "support/leaks.h"
#include "automation/enumerator.h"
#include "frame/Collection.h"
#include "text/TextUtil.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;
using test::call;

class AutomationLeaks : public test::NoObjectsLeft {
  protected:
    const Bstr text_{L"um texto qualquer"};
};

TEST_F(AutomationLeaks, AbsentFromCreationReferencesArraysAndFailures) {
    const ComPtr<_TextUtil> util = make<TextUtil>();
    const Bstr what(L"rato");
    const Bstr by(L"gato");
    test::expectNoGrowth([&] {
        const auto item = test::create(L"VelaUtil10.KVItem");
        call(item.Get(), L"Key", {arg(text_)}, DISPATCH_PROPERTYPUT);
        EXPECT_EQ(call(item.Get(), L"SearchKey").outcome, S_OK);
        Variant where(L"o rato roeu a rolha");
        Variant values;
        values.parray = SafeArrayCreateVector(VT_BSTR, 0, 3);
        values.vt = VT_ARRAY | VT_BSTR;
        call(util.Get(), L"MudaChar", {byReference(where), arg(what), arg(by)});
        EXPECT_EQ(textOf(where), L"o gato roeu a rolha");
        call(util.Get(), L"PreparaTextoComVars", {arg(what), byReference(values)});
        const std::vector<VARIANT> unfit(3, arg(text_));
        EXPECT_EQ(call(util.Get(), L"ProcTras", unfit).outcome, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(call(util.Get(), L"OrdenarArrayStr", {byReference(where)}).outcome,
                  DISP_E_TYPEMISMATCH);
    });
}

TEST_F(AutomationLeaks, AbsentFromErrorsEnumerationAndAdapters) {
    const ComPtr<_Collection> collection = make<Collection>();
    for (int i = 0; i < 3; ++i)
        collection->Add(arg(text_), Variant::missing(), Variant::missing(), Variant::missing());
    test::expectNoGrowth([&] {
        EXPECT_EQ(call(collection.Get(), L"Item", {arg(text_)}).outcome, DISP_E_EXCEPTION);
        const test::Called enumerator = call(collection.Get(), L"NewEnum");
        eachVariant(enumerator.result.punkVal, [](const Variant&) { return true; });
        ComPtr<_ISetPrinter> printer;
        EXPECT_EQ(queryOrAdapt<_ISetPrinter>(collection.Get(), printer.GetAddressOf()), S_OK);
        SHORT copies = 0;
        EXPECT_NE(printer->get_Copies(&copies), S_OK);
    });
}

}  // namespace
}  // namespace vela
