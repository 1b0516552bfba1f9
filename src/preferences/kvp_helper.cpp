#include "preferences/kvp_helper.h"

namespace vela {

std::wstring KVPHelper::value(std::wstring_view reference, std::wstring_view group,
                              std::wstring_view defaultValue) const {
    const auto item = section_.getItem(reference, group);
    return item ? textProperty<_KVItem>(item.Get(), &_KVItem::get_Value)
                : std::wstring(defaultValue);
}

void KVPHelper::saveValue(std::wstring_view reference, std::wstring_view group,
                          std::wstring_view value) const {
    const auto item = section_.itemFor(reference, group);
    check(item->put_Value(Bstr(value).get()));
    section_.addItem(item);
}

}  // namespace vela
