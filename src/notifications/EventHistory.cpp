#include "notifications/EventHistory.h"

#include "automation/enumerator.h"
#include "collections/Collection.h"

namespace vela {

namespace {

constexpr LONG kAnySource = -1;

std::wstring keyOf(const ComPtr<_IEventHistoryItem>& item) {
    return textProperty(item.Get(), &_IEventHistoryItem::get_EventKey);
}

LONG numberOf(_IEventHistoryItem* item,
              HRESULT (STDMETHODCALLTYPE _IEventHistoryItem::*get)(LONG*)) {
    LONG number = 0;
    checkRecorded((item->*get)(&number));
    return number;
}

bool matches(_IEventHistoryItem* item, LONG type, LONG source) {
    return numberOf(item, &_IEventHistoryItem::get_EventType) == type &&
           (source == kAnySource || numberOf(item, &_IEventHistoryItem::get_EventSource) == source);
}

}  // namespace

HRESULT EventHistory::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(
            static_cast<_EventHistory*>(this), List::Cursor(list_),
            [](const ComPtr<_IEventHistoryItem>& item) { return objectVariant(item.Get()); });
    });
}

HRESULT EventHistory::Add(_IEventHistoryItem** eventItem) {
    quietly([&] {
        const auto item = required(eventItem);
        const std::wstring key = keyOf(item);
        list_.add(item, key);
    });
    return S_OK;
}

HRESULT EventHistory::Remove(_IEventHistoryItem** eventItem) {
    quietly([&] { list_.remove(keyOf(required(eventItem))); });
    return S_OK;
}

HRESULT EventHistory::RemoveAll() {
    return guard([&] { list_.clear(); });
}

HRESULT EventHistory::FindItem(_IEventHistoryItem** eventItem, _IEventHistoryItem** result) {
    return answerQuietly(result, [&] {
        const auto* found = list_.find(keyOf(required(eventItem)));
        return found ? *found : nullptr;
    });
}

HRESULT EventHistory::FindItems(LONG eventType, LONG eventSourceID, _Collection** result) {
    return answer(result, [&] {
        auto found = make<Collection>();
        List::Cursor cursor(list_);
        while (auto* entry = cursor.next()) {
            quietly([&, item = *entry] {
                if (!matches(item.Get(), eventType, eventSourceID)) return;
                const std::wstring key = keyOf(item);
                found->entries().add(objectVariant(item.Get()), key);
            });
        }
        return found;
    });
}

HRESULT EventHistory::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(list_.size()); });
}

HRESULT ClassOf<_EventHistory>::create(REFIID id, void** result) {
    return createObject<EventHistory>(id, result);
}

}  // namespace vela
