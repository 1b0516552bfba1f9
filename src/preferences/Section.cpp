#include "preferences/Section.h"

#include "preferences/DPItem.h"
#include "preferences/KVItem.h"
#include "preferences/PPItem.h"
#include "preferences/RPItem.h"
#include "preferences/UIItem.h"

namespace vela {

namespace {

template <class Item>
ComPtr<IDispatch> createItem() {
    ComPtr<IDispatch> item;
    check(make<Item>()->QueryInterface(IID_PPV_ARGS(&item)));
    return item;
}

}  // namespace

const SectionKind kPPSection{L"PP", L"Printer Preferences",
                             L"[printername][paperbin][papersize][orientation][copies]",
                             createItem<PPItem>};
const SectionKind kUISection{L"UI", L"User Interface",
                             L"[screenwxh][width][height][left][top][windowstate][tag]",
                             createItem<UIItem>};
const SectionKind kDPSection{L"DP", L"Default Path", L"[path][file][ext]", createItem<DPItem>};
const SectionKind kKVSection{L"KV", L"Key Value", L"[key][value]", createItem<KVItem>};
const SectionKind kRPSection{L"RP", L"Report Parameters", L"[view][field][mode][value]",
                             createItem<RPItem>};

ComPtr<_IUPSection> makeSection(const SectionKind& kind) {
    if (&kind == &kRPSection) return make<RPSection>();
    return make<Section>(kind);
}

}  // namespace vela
