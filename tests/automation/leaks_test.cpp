// Ten thousand rounds of what clients do leave no object and no memory behind.
#include "support/leaks.h"

#include "automation/enumerator.h"
#include "collections/Collection.h"
#include "text/TextUtil.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;
using test::call;

using AutomationLeaks = test::NoObjectsLeft;

TEST_F(AutomationLeaks, AbsentFromCallsErrorsAndEnumeration) {
    const ComPtr<_TextUtil> util = make<TextUtil>();
    const ComPtr<_Collection> collection = make<Collection>();
    const Bstr what(L"rato");
    const Bstr by(L"gato");
    for (int i = 0; i < 3; ++i) call(collection.Get(), L"Add", {arg(what)});
    test::expectNoGrowth([&] {
        const auto item = test::create(L"VelaUtil10.KVItem");
        call(item.Get(), L"Key", {arg(what)}, DISPATCH_PROPERTYPUT);
        EXPECT_EQ(call(item.Get(), L"SearchKey").outcome, S_OK);
        Variant where(L"o rato roeu a rolha");
        Variant values;
        values.parray = SafeArrayCreateVector(VT_BSTR, 0, 3);
        values.vt = VT_ARRAY | VT_BSTR;
        call(util.Get(), L"MudaChar", {byReference(where), arg(what), arg(by)});
        EXPECT_EQ(textOf(where), L"o gato roeu a rolha");
        call(util.Get(), L"PreparaTextoComVars", {arg(what), byReference(values)});
        EXPECT_EQ(call(util.Get(), L"OrdenarArrayStr", {byReference(where)}).outcome,
                  DISP_E_TYPEMISMATCH);

        EXPECT_EQ(call(collection.Get(), L"Item", {arg(by)}).outcome, DISP_E_EXCEPTION);
        const test::Called enumerator = call(collection.Get(), L"NewEnum");
        eachVariant(enumerator.result.punkVal, [](const Variant&) { return true; });
    });
}

}  // namespace
}  // namespace vela
