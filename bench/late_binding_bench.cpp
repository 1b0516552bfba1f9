// Late-bound calls against the platform's own implementation of them.
#include "bench/client.h"
#include "bench/tables.h"

namespace bench {

namespace {

Row propertyRead() {
    const auto item = create<_PPItem>(L"VelaUtil10.PPItem");
    ComPtr<ITypeInfo> info;
    require(item->GetTypeInfo(0, 0, &info), "type information");
    Call call(numberOf(item.Get(), L"Copies"), DISPATCH_PROPERTYGET);
    return {"property read", nanoseconds([&](long) { call.through(item.Get()); }, 200'000),
            nanoseconds([&](long) { call.through(info.Get(), item.Get()); }, 50'000), 0.05};
}

Row stringCall() {
    const auto util = create<_TextUtil>(L"VelaUtil10.TextUtil");
    ComPtr<ITypeInfo> info;
    require(util->GetTypeInfo(0, 0, &info), "type information");
    const Text argument(L"  a short text ");
    Call call(numberOf(util.Get(), L"UTrim"), DISPATCH_METHOD, argument);
    return {"call with a string in and one out",
            nanoseconds([&](long) { call.through(util.Get()); }, 100'000),
            nanoseconds([&](long) { call.through(info.Get(), util.Get()); }, 50'000), 0.4};
}

Row nameLookUp(const char* what, wchar_t* name) {
    const auto util = create<_TextUtil>(L"VelaUtil10.TextUtil");
    ComPtr<ITypeInfo> info;
    require(util->GetTypeInfo(0, 0, &info), "type information");
    DISPID id = 0;
    return {what,
            nanoseconds([&](long) { util->GetIDsOfNames(IID_NULL, &name, 1, 0, &id); }, 200'000),
            nanoseconds([&](long) { info->GetIDsOfNames(&name, 1, &id); }, 20'000), 0.1};
}

}  // namespace

bool lateBinding() {
    wchar_t first[] = L"ProcTras";
    wchar_t last[] = L"Descompactar64";
    return report("late binding (ours) to ITypeInfo (theirs)",
                  {propertyRead(), stringCall(), nameLookUp("name look-up, first member", first),
                   nameLookUp("name look-up, last member", last)});
}

}  // namespace bench
