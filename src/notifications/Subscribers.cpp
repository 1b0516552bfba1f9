#include "notifications/Subscribers.h"

#include "automation/enumerator.h"

namespace vela {

namespace {

// Whether calls of Notify can reach the object: compiled subscribers have it by their interface,
// script objects by name.
bool isSubscriber(_INotificationSubscriber* subscriber) {
    ComPtr<ScriptAdapter> adapter;
    if (FAILED(subscriber->QueryInterface(kScriptAdapterId,
                                          reinterpret_cast<void**>(adapter.GetAddressOf())))) {
        return true;
    }
    return hasMember(adapter->original(), L"Notify");
}

IUnknown* identityOf(IUnknown* object) {
    ComPtr<IUnknown> identity;
    check(object->QueryInterface(IID_PPV_ARGS(&identity)));
    return identity.Get();
}

}  // namespace

Subscribers::Walk::~Walk() {
    if (--list_.walks_ == 0) std::exchange(list_.departed_, {}).clear();
}

ComPtr<_INotificationSubscriber> subscriberIn(_INotificationSubscriber** passed) {
    auto subscriber = required(passed);
    if (!isSubscriber(subscriber.Get())) raise(RuntimeError::TypeMismatch);
    return subscriber;
}

void Subscribers::removeAt(std::size_t position) {
    Entry* entry = list_.at(position);
    if (entry && walks_ > 0) departed_.push_back(entry->subscriber);
    list_.removeAt(position);
}

void Subscribers::remove(IUnknown* subscriber) {
    if (!subscriber) return;
    const IUnknown* identity = identityOf(subscriber);
    List::Cursor cursor(list_);
    for (std::size_t position = 1; const Entry* entry = cursor.next(); ++position) {
        if (entry->identity == identity) return removeAt(position);
    }
}

HRESULT Subscribers::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_Subscribers*>(this), List::Cursor(list_),
                         [](const Entry& entry) { return objectVariant(entry.subscriber.Get()); });
    });
}

HRESULT Subscribers::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(size()); });
}

HRESULT Subscribers::get_Item(SHORT index, _INotificationSubscriber** result) {
    return answer(result, [&] {
        const Entry* entry = index > 0 ? list_.at(static_cast<std::size_t>(index)) : nullptr;
        return entry ? entry->subscriber : nullptr;
    });
}

HRESULT Subscribers::Add(_INotificationSubscriber** subscriber) {
    return guard([&] {
        const auto added = subscriberIn(subscriber);
        list_.add({added, identityOf(added.Get())});
    });
}

HRESULT Subscribers::Remove(VARIANT* indexOrSubscriber) {
    if (!indexOrSubscriber) return S_OK;
    quietly([&] {
        if (!numberIn(*indexOrSubscriber)) return remove(unknownIn(*indexOrSubscriber).Get());
        const short position = converted(*indexOrSubscriber, VT_I2).iVal;
        if (position > 0) removeAt(static_cast<std::size_t>(position));
    });
    return S_OK;
}

}  // namespace vela
