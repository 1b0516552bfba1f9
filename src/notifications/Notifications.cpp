#include "notifications/Notifications.h"

#include <atomic>

#include "automation/enumerator.h"
#include "notifications/shared_hub.h"
#include "text/core/text_normalisation.h"

namespace vela {

namespace {

constexpr LONG kLastSystemId = 1000;
constexpr std::wstring_view kPublishedPrefix = L"MY:";

// In the order of their identifiers, which is their position.
constexpr const wchar_t* kSystemTags[] = {L"SYS:ON_WELCOME",
                                          L"SYS:ON_GOODBYE",
                                          L"SYS:ON_CLOSING_APPLICATION",
                                          L"SYS:ON_APPLICATION_RESIZE",
                                          L"SYS:ON_OPENINGDATABASE",
                                          L"SYS:ON_PULSE"};

// How often a notification was published, by all hubs of the process: an identifier means one
// notification there, whichever apartment it belongs to.
constinit std::atomic<LONG> publications = 0;

LONG nextId() {
    LONG before = publications;
    do {
        if (before >= (std::numeric_limits<LONG>::max)() - kLastSystemId) {
            raise(RuntimeError::Overflow);
        }
    } while (!publications.compare_exchange_weak(before, before + 1));
    return kLastSystemId + before + 1;
}

LONG idOf(_INotification* notification) {
    LONG id = 0;
    checkRecorded(notification->get_Id(&id));
    return id;
}

std::wstring keyOf(_INotification* notification) {
    const LONG id = idOf(notification);
    if (id <= kLastSystemId) return std::to_wstring(id);
    std::wstring tag = textProperty(notification, &_INotification::get_Tag);
    if (!tag.starts_with(kPublishedPrefix)) {
        throw Error{-1, L"Notifications",
                    L"User defined notifications must have a Tag property started with 'MY:' (Ex: "
                    L"MY:NOTIFICATION_01)."};
    }
    return tag;
}

ComPtr<_Subscribers> subscribersOf(_INotification* notification) {
    ComPtr<_Subscribers> subscribers;
    checkRecorded(notification->get_Subscribers(&subscribers));
    return subscribers;
}

// Their number without the 16-bit limit, where the list is ours.
std::size_t countOf(_Subscribers* subscribers) {
    if (const auto ours = own<Subscribers>(subscribers)) return ours->size();
    SHORT count = 0;
    checkRecorded(subscribers->get_Count(&count));
    return static_cast<std::size_t>(count);
}

// Fires `herald`, if there is one, with a notification as the parameter.
void fire(const ComPtr<_INotification>& herald, _INotification* parameter,
          _INotificationSubscriber* target = nullptr) {
    if (!herald) return;
    Variant value = objectVariant(parameter);
    ComPtr<_INotificationSubscriber> toThis = target;
    VARIANT_BOOL ignored = VARIANT_FALSE;
    checkRecorded(herald->Notify(&value, toThis.GetAddressOf(), &ignored));
}

void enlist(const ComPtr<_INotification>& notification,
            ComPtr<_INotificationSubscriber> subscriber) {
    const auto list = notification ? subscribersOf(notification.Get()) : nullptr;
    if (list) checkRecorded(list->Add(subscriber.GetAddressOf()));
}

void strike(const ComPtr<_INotification>& notification, _INotificationSubscriber* subscriber) {
    const auto list = notification ? subscribersOf(notification.Get()) : nullptr;
    Variant which = objectVariant(subscriber);
    if (list) checkRecorded(list->Remove(&which));
}

}  // namespace

Notifications::Notifications() {
    LONG id = 0;
    for (const wchar_t* tag : kSystemTags) {
        const auto notification = make<Notification>();
        check(notification->put_Id(++id));
        check(notification->put_Tag(Bstr(tag).get()));
        add(notification);
    }
}

ComPtr<_INotification> Notifications::at(LONG position) {
    const Held* held = position > 0 ? list_.at(static_cast<std::size_t>(position)) : nullptr;
    return held ? held->notification : nullptr;
}

ComPtr<_INotification> Notifications::add(const ComPtr<_INotification>& notification) {
    const std::wstring key = keyOf(notification.Get());
    if (!list_.add({notification, own<Notification>(notification.Get()).Get()}, key)) {
        return list_.find(key)->notification;
    }
    quietly([&] { fire(at(SystemNotifications::Welcome), notification.Get()); });
    return notification;
}

void Notifications::remove(const VARIANT& which) {
    Variant sought(which);
    if (holdsObject(sought)) {
        const Variant object = objectVariant(unknownIn(sought).Get());
        if (!object.pdispVal) return;
        sought = getProperty(object.pdispVal, L"Id");
    }
    const auto number = numberIn(sought);
    const bool byKey = !number || *number > kLastSystemId;
    const std::wstring key = normalisedIdentity(textOf(sought));
    const LONG position = byKey ? 0 : converted(sought, VT_I2).iVal;
    const Held* held = byKey ? list_.find(key) : list_.at(static_cast<std::size_t>(position));
    if (!held) return;
    const auto leaving = held->notification;
    quietly([&] { fire(at(SystemNotifications::Goodbye), leaving.Get()); });
    if (byKey) list_.remove(key);
    else list_.removeAt(static_cast<std::size_t>(position));
}

void Notifications::show(LONG heraldPosition, _INotificationSubscriber* subscriber,
                         std::size_t pulseCount, HRESULT (STDMETHODCALLTYPE _Pulsar::*change)()) {
    const auto herald = at(heraldPosition);
    if (!herald) return;
    List::Cursor cursor(list_);
    while (const Held* held = cursor.next()) {
        const auto shown = held->notification;
        const LONG id = idOf(shown.Get());
        if (id == SystemNotifications::Welcome || id == SystemNotifications::Goodbye) continue;
        const auto subscribers = subscribersOf(shown.Get());
        if (!subscribers) continue;
        const std::size_t before = countOf(subscribers.Get());
        fire(herald, shown.Get(), subscriber);
        const std::size_t after = countOf(subscribers.Get());
        if (id == SystemNotifications::Pulse && after != before && after == pulseCount) {
            checkRecorded((sharedPulsar().Get()->*change)());
        }
    }
}

HRESULT Notifications::get_NewEnum(IUnknown** result) {
    return answer(result, [&] {
        return enumerate(static_cast<_Notifications*>(this), List::Cursor(list_),
                         [](const Held& held) { return objectVariant(held.notification.Get()); });
    });
}

HRESULT Notifications::get_Count(SHORT* result) {
    return answer(result, [&] { return count16(list_.size()); });
}

HRESULT Notifications::get_Item(SHORT index, _INotification** result) {
    return answer(result, [&] { return at(index); });
}

HRESULT Notifications::get_ItemByID(LONG id, _INotification** result) {
    return answer(result, [&] {
        const Held* held = list_.find(std::to_wstring(id));
        return held ? held->notification : nullptr;
    });
}

HRESULT Notifications::get_ItemByTAG(BSTR tag, _INotification** result) {
    return answer(result, [&] {
        const std::wstring sought = normalisedIdentity(text(tag));
        ComPtr<_INotification> found;
        List::Cursor cursor(list_);
        while (const Held* held = cursor.next()) {
            if (held->ours) {
                if (held->ours->tag() == sought) found = held->notification;
                continue;
            }
            const auto asked = held->notification;  // it may remove itself meanwhile
            if (textProperty(asked.Get(), &_INotification::get_Tag) == sought) found = asked;
        }
        return found;
    });
}

HRESULT Notifications::Remove(VARIANT indexOrIDOrTagOrNotification) {
    quietly([&] { remove(indexOrIDOrTagOrNotification); });
    return S_OK;
}

HRESULT Notifications::Publish(BSTR tag, _INotification** theNotification,
                               _INotification** result) {
    return answer(result, [&] {
        ComPtr<_INotification> published = theNotification ? *theNotification : nullptr;
        if (!published) published = make<Notification>();
        checkRecorded(published->put_Id(nextId()));
        checkRecorded(published->put_Tag(Bstr(normalisedIdentity(text(tag))).get()));
        published = add(published);
        if (theNotification) {
            const auto before = adopted(*theNotification);
            *theNotification = ComPtr<_INotification>(published).Detach();
        }
        return published;
    });
}

HRESULT Notifications::Welcome(_INotificationSubscriber** potentialSubscriber) {
    return guard([&] {
        const auto newcomer = subscriberIn(potentialSubscriber);
        enlist(at(SystemNotifications::Welcome), newcomer);
        show(SystemNotifications::Welcome, newcomer.Get(), 1, &_Pulsar::StartPulse);
        enlist(at(SystemNotifications::Goodbye), newcomer);
    });
}

HRESULT Notifications::Goodbye(_INotificationSubscriber** toSubscriber) {
    return guard([&] {
        const auto leaving = subscriberIn(toSubscriber);
        show(SystemNotifications::Goodbye, leaving.Get(), 0, &_Pulsar::StopPulse);
        strike(at(SystemNotifications::Welcome), leaving.Get());
        strike(at(SystemNotifications::Goodbye), leaving.Get());
    });
}

HRESULT Notifications::get_OnWelcome(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::Welcome); });
}

HRESULT Notifications::get_OnGoodbye(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::Goodbye); });
}

HRESULT Notifications::get_OnClosingApplication(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::ClosingApplication); });
}

HRESULT Notifications::get_OnApplicationResize(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::ApplicationResize); });
}

HRESULT Notifications::get_OnPulse(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::Pulse); });
}

HRESULT Notifications::get_OnOpeningDatabase(_INotification** result) {
    return answer(result, [&] { return at(SystemNotifications::OpeningDatabase); });
}

}  // namespace vela
