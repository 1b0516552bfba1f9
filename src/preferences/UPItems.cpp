#include "preferences/UPItems.h"

#include "automation/enumerator.h"
#include "preferences/stored_item.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

std::wstring keyFor(std::wstring_view id, std::wstring_view group) {
    return normalisedIdentity(id) + L"@" + normalisedIdentity(group);
}

}  // namespace

ComPtr<IDispatch> UPItems::find(std::wstring_view id, std::wstring_view group) {
    const auto* found = entries_.find(keyFor(id, group));
    return found ? *found : nullptr;
}

void UPItems::add(const ComPtr<IDispatch>& object) {
    const ComPtr<_IUPItem> item = itemIn(object.Get());
    const std::wstring key = textProperty(item.Get(), &_IUPItem::get_SearchKey);
    const bool replaces = find(textProperty(item.Get(), &_IUPItem::get_Id),
                               textProperty(item.Get(), &_IUPItem::get_Group)) != nullptr;
    if (replaces && !entries_.remove(key)) raise(RuntimeError::InvalidProcedureCall);
    if (!entries_.add(object, key)) raise(RuntimeError::KeyAlreadyPresent);
    changed();
}

HRESULT UPItems::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_UPItems*>(this), Entries::Cursor(entries_),
                         [](const ComPtr<IDispatch>& item) { return Variant(item.Get()); });
    });
}

HRESULT UPItems::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(entries_.size()); });
}

HRESULT UPItems::get_Item(BSTR id, BSTR group, IDispatch** result) {
    return answerQuietly(result, [&] { return find(text(id), text(group)); });
}

HRESULT UPItems::Add(IDispatch** object, BSTR id, BSTR group) {
    if (!object) return E_POINTER;
    return guard([&] {
        const ComPtr<IDispatch> added = *object;
        const ComPtr<_IUPItem> item = itemIn(added.Get());
        if (!text(id).empty()) checkRecorded(item->put_Id(id));
        if (!text(group).empty()) checkRecorded(item->put_Group(group));
        add(added);
    });
}

HRESULT UPItems::Remove(BSTR id, BSTR group) {
    quietly([&] {
        entries_.remove(keyFor(text(id), text(group)));
        changed();
    });
    return S_OK;
}

HRESULT UPItems::Clear() {
    return guard([&] { entries_.clear(); });
}

}  // namespace vela
