#include "preferences/UPSections.h"

#include "automation/enumerator.h"
#include "preferences/Section.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

// The items of a section of the caller's own, if they are ours. Our sections own their items
// already.
ComPtr<UPItems> foreignItems(_IUPSection* section) {
    if (own<Section>(section) || own<RPSection>(section)) return nullptr;
    ComPtr<_UPItems> items;
    checkRecorded(section->get_Items(&items));
    return own<UPItems>(items.Get());
}

// Lets the section's items mark it as not saved. Until disown() they hold it.
void adopt(const ComPtr<_IUPSection>& section) {
    if (const auto items = foreignItems(section.Get())) {
        items->whenChanged([section] { section->put_Saved(VARIANT_FALSE); });
    }
}
void disown(const ComPtr<_IUPSection>& section) {
    if (const auto items = foreignItems(section.Get())) items->whenChanged(nullptr);
}

}  // namespace

UPSections::~UPSections() {
    Entries::Cursor cursor(entries_);
    while (const auto* section = cursor.next()) {
        quietly([&] { disown(*section); });
    }
}

ComPtr<_IUPSection> UPSections::find(const VARIANT& index) {
    if (const auto* found = entries_.find(normalisedIdentity(textOf(index)))) return *found;
    const bool byKey = isText(index);
    const auto* found = byKey ? entries_.find(textOf(index)) : nullptr;
    if (!byKey) {
        const LONG position = converted(index, VT_I4).lVal;
        found = position > 0 ? entries_.at(static_cast<std::size_t>(position)) : nullptr;
    }
    return found ? *found : nullptr;
}

HRESULT UPSections::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_UPSections*>(this), Entries::Cursor(entries_),
                         [](const ComPtr<_IUPSection>& section) {
                             ComPtr<IDispatch> object;
                             check(section.As(&object));
                             return Variant(object.Get());
                         });
    });
}

HRESULT UPSections::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(entries_.size()); });
}

HRESULT UPSections::get_section(VARIANT index, _IUPSection** result) {
    return answerQuietly(result, [&] { return find(index); });
}

HRESULT UPSections::Add(_IUPSection** section) {
    quietly([&] {
        if (!section || !*section) return;
        const ComPtr<_IUPSection> added = *section;
        const std::wstring id = idOf(added.Get());
        if (const auto* replaced = entries_.find(id)) disown(ComPtr<_IUPSection>(*replaced));
        entries_.remove(id);
        entries_.add(added, id);
        adopt(added);
    });
    return S_OK;
}

HRESULT UPSections::Remove(VARIANT index) {
    quietly([&] {
        const auto found = find(index);
        if (found && entries_.remove(idOf(found.Get()))) disown(found);
    });
    return S_OK;
}

}  // namespace vela
