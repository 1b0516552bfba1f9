// Ten thousand rounds of what clients do leave no object and no memory behind.
#include "support/leaks.h"
#include "automation/enumerator.h"
#include "frame/Collection.h"
#include "text/TextUtil.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;
using test::expectNoGrowth;

class AutomationLeaks : public test::NoObjectsLeft {};

TEST_F(AutomationLeaks, AbsentFromCreationAndAssignment) {
    const Bstr key(L"chave de um valor guardado");
    expectNoGrowth([&] {
        const auto item = test::create(L"VelaUtil10.KVItem");
        test::call(item.Get(), L"Key", {arg(key)}, DISPATCH_PROPERTYPUT);
        EXPECT_EQ(test::call(item.Get(), L"SearchKey").outcome, S_OK);
    });
}

TEST_F(AutomationLeaks, AbsentFromReferencesArraysAndFailures) {
    const ComPtr<_TextUtil> util = make<TextUtil>();
    const Bstr what(L"rato");
    const Bstr by(L"gato");
    expectNoGrowth([&] {
        Variant where(L"o rato roeu a rolha");
        Variant values;
        values.parray = SafeArrayCreateVector(VT_BSTR, 0, 3);
        values.vt = VT_ARRAY | VT_BSTR;
        test::call(util.Get(), L"MudaChar", {byReference(where), arg(what), arg(by)});
        EXPECT_EQ(textOf(where), L"o gato roeu a rolha");
        test::call(util.Get(), L"PreparaTextoComVars", {arg(what), byReference(values)});
        EXPECT_EQ(test::call(util.Get(), L"ProcTras", {arg(what), arg(what), arg(what)}).outcome,
                  DISP_E_TYPEMISMATCH);
        EXPECT_EQ(test::call(util.Get(), L"OrdenarArrayStr", {byReference(where)}).outcome,
                  DISP_E_TYPEMISMATCH);
    });
}

TEST_F(AutomationLeaks, AbsentFromErrorsEnumerationAndAdapters) {
    const ComPtr<_Collection> collection = make<Collection>();
    const Bstr text(L"um texto qualquer");
    for (int i = 0; i < 3; ++i)
        collection->Add(arg(text), Variant::missing(), Variant::missing(), Variant::missing());
    expectNoGrowth([&] {
        EXPECT_EQ(test::call(collection.Get(), L"Item", {arg(text)}).outcome, DISP_E_EXCEPTION);
        const test::Called enumerator = test::call(collection.Get(), L"NewEnum");
        eachVariant(enumerator.result.punkVal, [](const Variant&) { return true; });
        ComPtr<_ISetPrinter> printer;
        EXPECT_EQ(queryOrAdapt<_ISetPrinter>(collection.Get(), printer.GetAddressOf()), S_OK);
        SHORT copies = 0;
        EXPECT_NE(printer->get_Copies(&copies), S_OK);
    });
    SetErrorInfo(0, nullptr);
}

}  // namespace
}  // namespace vela
