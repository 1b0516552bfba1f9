#include "preferences/section_manager.h"

#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

bool areOneDocument(_IUPDataSource* one, _IUPDataSource* other) {
    const auto first = own<UPDataSourceXML>(one), second = own<UPDataSourceXML>(other);
    return first && second && first->path() == second->path();
}

}  // namespace

void registerSection(UPManager& manager, const SectionKind& kind,
                     const ComPtr<_IUPDataSource>& store) {
    const ComPtr<_IUPSection> old = manager.section(kind.id);
    if (old && manager.owes(old.Get()) && areOneDocument(storeOf(old.Get()).Get(), store.Get())) {
        return;
    }
    const ComPtr<_IUPSection> section = makeSection(kind);
    checkRecorded(section->putref_DataSourceManager(store.Get()));
    manager.add(section);
}

}  // namespace vela
