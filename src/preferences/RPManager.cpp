#include "preferences/RPManager.h"

#include "automation/late_bound.h"
#include "collections/Collection.h"

namespace vela {

namespace {

// A store is adapted when only its members tell that it is one.
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

// None when the value is no text, nor anything that has one.
std::optional<std::wstring> nameIn(const VARIANT& value) {
    std::optional<std::wstring> name;
    if (value.vt & VT_ARRAY) return name;
    quietly([&] { name = textOf(value); });
    return name;
}

bool isKeptIn(_IUPSection* section, const ComPtr<_IUPDataSource>& store) {
    ComPtr<_IUPDataSource> current;
    checkRecorded(section->get_DataSourceManager(&current));
    ComPtr<IUnknown> identities[2];
    if (!current || FAILED(current.As(&identities[0]))) return false;
    return SUCCEEDED(store.As(&identities[1])) && identities[0].Get() == identities[1].Get();
}

// Registers the section of report parameters with a store; one that has it already stays.
void registerWith(UPManager& manager, const ComPtr<_IUPDataSource>& store) {
    const auto old = manager.section(kRPSection.id);
    if (old && isKeptIn(old.Get(), store)) return;
    if (old && manager.loaded()) manager.save();  // what is new in it belongs to the old store
    const ComPtr<_IUPSection> section = makeSection(kRPSection);
    checkRecorded(section->putref_DataSourceManager(store.Get()));
    manager.add(section);
}

// Whether `source`, the caller's name of a document or a store, could be used.
bool registered(UPManager& manager, const VARIANT& source) {
    if (holdsObject(source)) {
        const auto store = storeIn(source);
        if (store) registerWith(manager, store);
        return store != nullptr;
    }
    const bool isGiven = !isMissing(source) && source.vt != VT_EMPTY;
    const auto name = isGiven ? nameIn(source) : manager.dataSources()->sharedName();
    if (name) registerSection(manager, kRPSection, *name, Existing::Kept);
    return name.has_value();
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
        const Variant omitted;
        if (!ours || !registered(*ours.Get(), dataSource ? dereferenced(*dataSource) : omitted)) {
            return false;
        }
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
