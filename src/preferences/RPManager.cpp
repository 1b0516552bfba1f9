#include "preferences/RPManager.h"

#include "automation/late_bound.h"
#include "collections/Collection.h"
#include "preferences/UPDataSourceXML.h"
#include "preferences/document_cache.h"

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

// The store that a caller names, or hands over; that of shared preferences when he does neither.
// Null for what is no store.
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

// A section that could not be saved gives way to one of another store.
Unsaved unsavedFor(UPManager& manager, _IUPDataSource* store) {
    const ComPtr<_IUPSection> old = manager.section(kRPSection.id);
    const auto current = old ? storeOf(old.Get()) : nullptr;
    const bool ours = own<UPDataSourceXML>(current.Get()) != nullptr;
    return ours || current.Get() == store ? Unsaved::Stays : Unsaved::Replaced;
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
        if (!ours) return false;
        const Variant omitted;
        const auto store = storeFor(*ours.Get(), dataSource ? dereferenced(*dataSource) : omitted);
        if (!store) return false;
        ours->saveForStart();
        forgetDocuments();
        registerSection(*ours.Get(), kRPSection, store, unsavedFor(*ours.Get(), store.Get()));
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
