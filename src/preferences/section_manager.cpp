#include "preferences/section_manager.h"

#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

bool areOneDocument(_IUPDataSource* one, _IUPDataSource* other) {
    const auto first = own<UPDataSourceXML>(one), second = own<UPDataSourceXML>(other);
    return first && second && first->path() == second->path();
}

// A section that was never loaded does not have what is stored.
bool isUnsaved(const UPManager& manager, _IUPSection* section, _IUPDataSource* store) {
    if (manager.owes(section)) return areOneDocument(storeOf(section).Get(), store);
    return flagOf(section, &_IUPSection::get_Loaded) && !flagOf(section, &_IUPSection::get_Saved);
}

}  // namespace

void registerSection(UPManager& manager, const SectionKind& kind,
                     const ComPtr<_IUPDataSource>& store, Unsaved unsaved) {
    const ComPtr<_IUPSection> old = manager.section(kind.id);
    if (old && unsaved == Unsaved::Stays && isUnsaved(manager, old.Get(), store.Get())) return;
    const ComPtr<_IUPSection> section = makeSection(kind);
    checkRecorded(section->putref_DataSourceManager(store.Get()));
    manager.add(section);
}

}  // namespace vela
