#include "preferences/RPManager.h"

#include "automation/late_bound.h"
#include "collections/Collection.h"
#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

// A script object has no other way to tell.
bool isStore(IDispatch* object) {
    return object && hasMember(object, L"Load") && hasMember(object, L"Save");
}

// The store that a caller names, or hands over; that of shared preferences when he does neither.
// Null for what is no store.
ComPtr<_IUPDataSource> storeFor(UPManager& manager, const VARIANT* given) {
    UPDataSources& sources = *manager.dataSources().Get();
    if (!given || isMissing(*given) || given->vt == VT_EMPTY) {
        return make<UPDataSourceXML>(sources.sharedName(), sources.sharedPath());
    }
    ComPtr<_IUPDataSource> store;
    quietly([&] {
        if (!holdsObject(*given)) store = make<UPDataSourceXML>(textOf(*given));
        else if (isStore(objectIn(*given)))
            check(queryOrAdapt<_IUPDataSource>(objectIn(*given), &store));
    });
    return store;
}

}  // namespace

const SectionManager<RPItem>& RPManager::section() const {
    if (!section_) raise(RuntimeError::InvalidProcedureCall);
    return *section_;
}

HRESULT RPManager::get_Items(_Collection** result) {
    return answer(result, [&] {
        auto collection = make<Collection>();
        if (!section_) return collection;
        eachItem(section().items().Get(), [&](const Variant& item) {
            const std::wstring key =
                textProperty(itemIn(objectIn(item)).Get(), &_IUPItem::get_SearchKey);
            collection->entries().add(item, std::wstring_view(key));
            return true;
        });
        return collection;
    });
}

HRESULT RPManager::Load(_UPManager** manager, VARIANT* dataSource, VARIANT_BOOL* result) {
    return answer(result, [&] {
        const auto ours = own<UPManager>(manager ? *manager : nullptr);
        const auto store = ours ? storeFor(*ours.Get(), dataSource) : nullptr;
        if (!store) return false;
        ours->saveLoaded();
        registerSection(*ours.Get(), kRPSection, store);
        section_.emplace(ours, kRPSection);
        ours->load();
        return true;
    });
}

HRESULT RPManager::GetItem(BSTR id, BSTR group, _RPItem** result) {
    return answer(result,
                  [&] { return section_ ? section().getItem(text(id), text(group)) : nullptr; });
}

HRESULT RPManager::AddItem(_RPItem* item) {
    return guard([&] {
        const auto ours = own<RPItem>(item);
        if (!ours) raise(RuntimeError::TypeMismatch);
        section().addItem(ours);
    });
}

HRESULT RPManager::Clear() {
    return guard([&] { section().clear(); });
}

HRESULT ClassOf<_RPManager>::create(REFIID id, void** result) {
    return createObject<RPManager>(id, result);
}

}  // namespace vela
