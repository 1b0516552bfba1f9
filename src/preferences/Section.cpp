#include "preferences/Section.h"

#include "automation/enumerator.h"

namespace vela {

namespace {

template <class Default>
ComPtr<IDispatch> createItem() {
    ComPtr<IDispatch> item;
    check(ClassOf<Default>::create(IID_PPV_ARGS(&item)));
    return item;
}

}  // namespace

const SectionKind kPPSection{L"PP", L"Printer Preferences",
                             L"[printername][paperbin][papersize][orientation][copies]",
                             createItem<_PPItem>};
const SectionKind kUISection{L"UI", L"User Interface",
                             L"[screenwxh][width][height][left][top][windowstate][tag]",
                             createItem<_UIItem>};
const SectionKind kDPSection{L"DP", L"Default Path", L"[path][file][ext]", createItem<_DPItem>};
const SectionKind kKVSection{L"KV", L"Key Value", L"[key][value]", createItem<_KVItem>};
const SectionKind kRPSection{L"RP", L"Report Parameters", L"[view][field][mode][value]",
                             createItem<_RPItem>};

ComPtr<_UPItems> itemsOf(_IUPSection* section) {
    ComPtr<_UPItems> items;
    checkRecorded(section->get_Items(&items));
    if (!items) raise(RuntimeError::InvalidProcedureCall);
    return items;
}

ComPtr<_IUPDataSource> storeOf(_IUPSection* section) {
    ComPtr<_IUPDataSource> store;
    checkRecorded(section->get_DataSourceManager(&store));
    return store;
}

bool flagOf(_IUPSection* section, HRESULT (STDMETHODCALLTYPE _IUPSection::*get)(VARIANT_BOOL*)) {
    VARIANT_BOOL value = VARIANT_FALSE;
    checkRecorded((section->*get)(&value));
    return isTrue(value);
}

bool hasStored(_IUPSection* section) {
    if (flagOf(section, &_IUPSection::get_Loaded)) return true;
    const auto items = own<UPItems>(itemsOf(section).Get());
    return items && items->hasRecords();
}

bool isSame(_IUPSection* one, _IUPSection* other) {
    ComPtr<IUnknown> first, second;
    return SUCCEEDED(one->QueryInterface(IID_PPV_ARGS(&first))) &&
           SUCCEEDED(other->QueryInterface(IID_PPV_ARGS(&second))) && first.Get() == second.Get();
}

void eachItem(_UPItems* items, const std::function<bool(const Variant&)>& visit) {
    ComPtr<IUnknown> enumerator;
    checkRecorded(items->get_NewEnum(&enumerator));
    eachVariant(enumerator.Get(), visit);
}

ComPtr<_IUPSection> makeSection(const SectionKind& kind) {
    if (&kind == &kRPSection) return make<RPSection>();
    return make<Section>(kind);
}

}  // namespace vela
