#include "preferences/report_store.h"

#include "automation/late_bound.h"
#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

// A store is adapted when only its members tell that it is one; null when none do.
ComPtr<_IUPDataSource> storeIn(const VARIANT& value) {
    ComPtr<_IUPDataSource> store;
    const ComPtr<IUnknown> given = unknownIn(value);
    if (!given || SUCCEEDED(given.As(&store))) return store;
    ComPtr<IDispatch> object;
    if (FAILED(given.As(&object))) return nullptr;
    for (const wchar_t* name : {L"DataSource", L"Load", L"Save"}) {
        if (!hasMember(object.Get(), name)) return nullptr;
    }
    check(queryOrAdapt<_IUPDataSource>(object.Get(), &store));
    return store;
}

}  // namespace

ComPtr<_IUPDataSource> storeFor(UPManager& manager, const VARIANT& given) {
    const UPDataSources& sources = *manager.dataSources().Get();
    if (isMissing(given) || given.vt == VT_EMPTY) {
        return make<UPDataSourceXML>(sources.sharedName(), sources.sharedPath());
    }
    if (holdsObject(given)) return storeIn(given);
    ComPtr<_IUPDataSource> store;
    quietly([&] { store = make<UPDataSourceXML>(textOf(given)); });
    return store;
}

Unsaved unsavedFor(UPManager& manager, _IUPDataSource* store) {
    const ComPtr<_IUPSection> old = manager.section(kRPSection.id);
    const auto current = old ? storeOf(old.Get()) : nullptr;
    const bool ours = own<UPDataSourceXML>(current.Get()) != nullptr;
    return ours || current.Get() == store ? Unsaved::Stays : Unsaved::Replaced;
}

}  // namespace vela
