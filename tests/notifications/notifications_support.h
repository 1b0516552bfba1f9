// What tests of notifications share: subscribers whose Notify is a function.
#pragma once

#include <functional>

#include "notifications/Notifications.h"
#include "preferences/preferences_support.h"

namespace vela::test {

class Listener final : public Object<Listener, _INotificationSubscriber> {
  public:
    using Heard = std::function<HRESULT(_INotification** sender, _NotificationEventArgs** E)>;

    explicit Listener(Heard heard) : heard_(std::move(heard)) {}
    HRESULT STDMETHODCALLTYPE Notify(_INotification** sender, _NotificationEventArgs** E) override {
        return heard_(sender, E);
    }

  private:
    Heard heard_;
};

inline LONG idIn(_NotificationEventArgs* E) {
    return got<LONG>(E, &_NotificationEventArgs::get_NotificationID);
}

inline Variant parameterIn(_NotificationEventArgs* E) {
    return got<Variant>(E, &_NotificationEventArgs::get_Parameter);
}

// The notification that the handshake offers.
inline ComPtr<_INotification> offeredBy(_NotificationEventArgs* E) {
    ComPtr<_INotification> offered;
    EXPECT_EQ(objectIn(parameterIn(E))->QueryInterface(IID_PPV_ARGS(&offered)), S_OK);
    return offered;
}

inline std::wstring tagOf(_INotification* notification) {
    return notification ? textProperty(notification, &_INotification::get_Tag) : L"";
}

inline ComPtr<_Subscribers> subscribersOf(_INotification* notification) {
    return got<ComPtr<_Subscribers>>(notification, &_INotification::get_Subscribers);
}

inline short countOf(_INotification* notification) {
    return got<short>(subscribersOf(notification).Get(), &_Subscribers::get_Count);
}

inline void subscribe(_INotification* notification, _INotificationSubscriber* subscriber) {
    EXPECT_EQ(subscribersOf(notification)->Add(&subscriber), S_OK);
}

inline void unsubscribe(_INotification* notification, IDispatch* subscriber) {
    VARIANT which = arg(subscriber);
    EXPECT_EQ(subscribersOf(notification)->Remove(&which), S_OK);
}

inline ComPtr<_INotification> publish(_Notifications* hub, const wchar_t* tag) {
    return got<ComPtr<_INotification>>(hub, &_Notifications::Publish, Bstr(tag).get(), nullptr);
}

}  // namespace vela::test
