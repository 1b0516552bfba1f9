#include "preferences/section_manager.h"

#include "preferences/UPDataSourceXML.h"

namespace vela {

namespace {

bool isKeptIn(_IUPSection* section, const std::wstring& source) {
    ComPtr<_IUPDataSource> store;
    checkRecorded(section->get_DataSourceManager(&store));
    if (!store) return false;
    Variant name;
    checkRecorded(store->get_DataSource(&name));
    return textOf(name) == source;
}

}  // namespace

void registerSection(UPManager& manager, const SectionKind& kind, const std::wstring& source,
                     Existing existing) {
    const auto old = existing == Existing::Kept ? manager.section(kind.id) : nullptr;
    if (old && isKeptIn(old.Get(), source)) return;
    if (old && manager.loaded()) manager.save();  // what is new in it belongs to the old store
    const ComPtr<_IUPSection> section = makeSection(kind);
    checkRecorded(section->putref_DataSourceManager(make<UPDataSourceXML>(source).Get()));
    manager.add(section);
}

}  // namespace vela
