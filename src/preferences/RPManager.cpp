#include "preferences/RPManager.h"

#include "collections/Collection.h"
#include "preferences/document_cache.h"
#include "preferences/report_store.h"

namespace vela {

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
