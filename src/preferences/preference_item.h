// Making and filling items for the preference helpers.
#pragma once

#include "preferences/section_manager.h"
#include "text/core/text_normalisation.h"

namespace vela {

// The stored item of an identity, or a new one that has it. Identities are compared trimmed and
// without case, and stored so.
template <class Item>
ComPtr<Item> itemFor(const SectionManager<Item>& items, std::wstring_view id,
                     std::wstring_view group) {
    if (auto found = items.getItem(id, group)) return found;
    auto item = make<Item>();
    ComPtr<_IUPItem> identity;
    check(item.As(&identity));
    checkRecorded(identity->put_Id(Bstr(normalisedIdentity(id)).get()));
    checkRecorded(identity->put_Group(Bstr(normalisedIdentity(group)).get()));
    return item;
}

}  // namespace vela
