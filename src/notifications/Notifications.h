// The hub: the notifications of a program, found by position, identifier and tag, and the handshake
// in which subscribers come and go.
#pragma once

#include "collections/core/keyed_collection.h"
#include "notifications/Notification.h"

namespace vela {

class Notifications final : public Object<Notifications, _Notifications> {
  public:
    // Holds the six system notifications.
    Notifications();

    HRESULT STDMETHODCALLTYPE get_NewEnum(IUnknown** result) override;
    HRESULT STDMETHODCALLTYPE get_Count(SHORT* result) override;
    HRESULT STDMETHODCALLTYPE get_Item(SHORT index, _INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_ItemByID(LONG id, _INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_ItemByTAG(BSTR tag, _INotification** result) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT indexOrIDOrTagOrNotification) override;
    HRESULT STDMETHODCALLTYPE Publish(BSTR tag, _INotification** theNotification,
                                      _INotification** result) override;
    HRESULT STDMETHODCALLTYPE Welcome(_INotificationSubscriber** potentialSubscriber) override;
    HRESULT STDMETHODCALLTYPE Goodbye(_INotificationSubscriber** toSubscriber) override;
    HRESULT STDMETHODCALLTYPE get_OnWelcome(_INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_OnGoodbye(_INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_OnClosingApplication(_INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_OnApplicationResize(_INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_OnPulse(_INotification** result) override;
    HRESULT STDMETHODCALLTYPE get_OnOpeningDatabase(_INotification** result) override;

    // The notification at a 1-based position; null when out of range.
    ComPtr<_INotification> at(LONG position);

  private:
    struct Held {
        ComPtr<_INotification> notification;
        const Notification* ours;  // the same, null when a caller's class implements it
    };
    using List = KeyedCollection<Held>;

    // Adds a notification and tells those who said Welcome; returns the one held under its key.
    // Throws Error -1 for a published one whose tag does not begin with "MY:".
    ComPtr<_INotification> add(const ComPtr<_INotification>& notification);
    void remove(const VARIANT& which);
    // Shows every notification, but for Welcome and Goodbye, to `subscriber`. When that brings the
    // number of the pulse's subscribers to `pulseCount`, calls `change` on the shared pulsar.
    void show(LONG heraldPosition, _INotificationSubscriber* subscriber, std::size_t pulseCount,
              HRESULT (STDMETHODCALLTYPE _Pulsar::*change)());

    List list_;
};

}  // namespace vela
