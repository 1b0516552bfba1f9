#include "preferences/dp_helper.h"

namespace vela {

std::optional<DefaultPath> DPHelper::path(std::wstring_view reference,
                                          std::wstring_view group) const {
    const auto item = section_.getItem(reference, group);
    if (!item) return std::nullopt;
    _DPItem* fields = item.Get();
    return DefaultPath{textProperty(fields, &_DPItem::get_Path),
                       textProperty(fields, &_DPItem::get_File),
                       textProperty(fields, &_DPItem::get_Ext)};
}

void DPHelper::savePath(std::wstring_view reference, std::wstring_view group,
                        const DefaultPath& value) const {
    const auto item = section_.itemFor(reference, group);
    check(item->put_Path(Bstr(value.path).get()));
    check(item->put_File(Bstr(value.file).get()));
    check(item->put_Ext(Bstr(value.ext).get()));
    section_.addItem(item);
}

}  // namespace vela
