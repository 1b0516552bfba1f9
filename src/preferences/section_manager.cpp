#include "preferences/section_manager.h"

#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

bool areOneDocument(_IUPDataSource* one, _IUPDataSource* other) {
    const auto first = own<UPDataSourceXML>(one), second = own<UPDataSourceXML>(other);
    return first && second && first->path() == second->path();
}

bool isUnsaved(const UPManager& manager, _IUPSection* section) {
    return manager.owes(section) ||
           (hasStored(section) && !flagOf(section, &_IUPSection::get_Saved));
}

// Our own stores of one document are one; a caller's stays until he sets another one.
bool keepsStore(_IUPSection* section, _IUPDataSource* store) {
    const ComPtr<_IUPDataSource> current = storeOf(section);
    return !own<UPDataSourceXML>(current.Get()) || areOneDocument(current.Get(), store);
}

// Until it is loaded, it is known to have nothing of what is stored.
void setUnread(UPManager& manager, const SectionKind& kind, _IUPSection* section,
               _IUPDataSource* store) {
    const auto document = own<UPDataSourceXML>(store);
    const auto items = own<UPItems>(itemsOf(section).Get());
    if (!document || !items) return;
    const UserPath user(manager.applicationId(), manager.userId());
    items->setRecord({{document->path(), user, kind.id}, nullptr, false, {}});
}

}  // namespace

void registerSection(UPManager& manager, const SectionKind& kind,
                     const ComPtr<_IUPDataSource>& store, Unsaved unsaved) {
    const ComPtr<_IUPSection> old = manager.section(kind.id);
    const bool stays = old && unsaved == Unsaved::Stays && isUnsaved(manager, old.Get()) &&
                       keepsStore(old.Get(), store.Get());
    if (stays) return;
    const ComPtr<_IUPSection> section = makeSection(kind);
    checkRecorded(section->putref_DataSourceManager(store.Get()));
    setUnread(manager, kind, section.Get(), store.Get());
    manager.add(section);
}

}  // namespace vela
