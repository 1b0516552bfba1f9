#include "preferences/UPItems.h"

#include <algorithm>

#include "automation/enumerator.h"
#include "preferences/stored_item.h"
#include "text/core/text_normalisation.h"
#include "xml/core/xml_text.h"

namespace vela {

namespace {

constexpr std::size_t kMostRecords = 8;

// Documents cannot hold every character: what they leave out counts nowhere.
std::wstring keyFor(std::wstring_view id, std::wstring_view group) {
    return normalisedIdentity(xmlText(id)) + L"@" + normalisedIdentity(xmlText(group));
}

}  // namespace

ComPtr<IDispatch> UPItems::find(std::wstring_view id, std::wstring_view group) {
    const auto* found = entries_.find(keyFor(id, group));
    return found ? *found : nullptr;
}

bool UPItems::replaces(_IUPItem* item, const std::wstring& key) {
    // Without blanks at its bounds, the key is the one that lookups ask for.
    const bool isPlain = !key.starts_with(L' ') && !key.ends_with(L' ') &&
                         key.find(L" @") == key.npos && key.find(L"@ ") == key.npos;
    if (isPlain) return entries_.find(key) != nullptr;
    return find(textProperty(item, &_IUPItem::get_Id), textProperty(item, &_IUPItem::get_Group)) !=
           nullptr;
}

void UPItems::addRead(const ComPtr<IDispatch>& object) {
    const ComPtr<_IUPItem> item = itemIn(object.Get());
    std::wstring key = textProperty(item.Get(), &_IUPItem::get_SearchKey);
    if (!isXmlText(key)) key = xmlText(key);
    if (replaces(item.Get(), key) && !entries_.remove(key)) {
        raise(RuntimeError::InvalidProcedureCall);
    }
    if (!entries_.add(object, key)) raise(RuntimeError::KeyAlreadyPresent);
}

std::shared_ptr<const SectionRecord> UPItems::recordOf(const SectionPlace& place) const {
    const auto found = std::find_if(records_.begin(), records_.end(),
                                    [&](const auto& record) { return record->place == place; });
    return found == records_.end() ? nullptr : *found;
}

void UPItems::setRecord(SectionRecord record) {
    std::erase_if(records_, [&](const auto& known) { return known->place == record.place; });
    if (records_.size() == kMostRecords) records_.erase(records_.begin());
    records_.push_back(std::make_shared<const SectionRecord>(std::move(record)));
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
    const LiveContexts::Call call;
    return guard([&] {
        const ComPtr<IDispatch> added = *object;
        const ComPtr<_IUPItem> item = itemIn(added.Get());
        if (!text(id).empty()) checkRecorded(item->put_Id(id));
        if (!text(group).empty()) checkRecorded(item->put_Group(group));
        addRead(added);
        changed();
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
