#include "preferences/kvp_helper.h"

#include "preferences/preference_item.h"

namespace vela {

std::wstring KVPHelper::value(std::wstring_view reference, std::wstring_view group,
                              std::wstring_view defaultValue) const {
    const auto item = items_.getItem(reference, group);
    return item ? textProperty<_KVItem>(item.Get(), &_KVItem::get_Value)
                : std::wstring(defaultValue);
}

void KVPHelper::saveValue(std::wstring_view reference, std::wstring_view group,
                          std::wstring_view value) const {
    const auto item = itemFor(items_, reference, group);
    check(item->put_Value(Bstr(value).get()));
    items_.addItem(item);
}

}  // namespace vela
