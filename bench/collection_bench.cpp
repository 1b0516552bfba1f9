// The general collection against the platform's dictionary, both late-bound.
#include <vector>

#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

Row collectionItem() {
    constexpr long kEntries = 1'000;
    const auto ours = create<_Collection>(L"VelaUtil10.Collection");
    const auto theirs = create<IDispatch>(L"Scripting.Dictionary");
    const DISPID theirAdd = numberOf(theirs.Get(), L"Add");
    VARIANT missing{};
    missing.vt = VT_ERROR;
    missing.scode = DISP_E_PARAMNOTFOUND;
    std::vector<BSTR> keys;
    for (long i = 0; i < kEntries; ++i) {
        VARIANT key{};
        VARIANT value{};
        key.vt = VT_BSTR;
        key.bstrVal = SysAllocString((L"Entry number " + std::to_wstring(i)).c_str());
        value.vt = VT_I4;
        value.lVal = i;
        require(ours->Add(value, key, missing, missing), "adding");
        VARIANT reversed[] = {value, key};
        DISPPARAMS parameters{reversed, nullptr, 2, 0};
        require(theirs->Invoke(theirAdd, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr,
                               nullptr, nullptr),
                "adding");
        keys.push_back(key.bstrVal);
    }
    const auto item = [&](IDispatch* object) {
        const DISPID id = numberOf(object, L"Item");
        return nanoseconds(
            [&, id](long i) {
                Call(id, DISPATCH_PROPERTYGET, keys[static_cast<std::size_t>(i % kEntries)])
                    .through(object);
            },
            100'000);
    };
    const Row row{"Item by key (to Scripting.Dictionary)", item(ours.Get()), item(theirs.Get()),
                  0.5};
    for (const BSTR key : keys) SysFreeString(key);
    return row;
}

}  // namespace

bool collection() { return report("Collection, late-bound", {collectionItem()}); }

}  // namespace bench
