// What tests of notifications share: subscribers whose Notify is a function.
#pragma once

#include <functional>

#include "notifications/Notifications.h"
#include "support/support.h"

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
    LONG id = 0;
    EXPECT_EQ(E->get_NotificationID(&id), S_OK);
    return id;
}

inline Variant parameterIn(_NotificationEventArgs* E) {
    Variant parameter;
    EXPECT_EQ(E->get_Parameter(&parameter), S_OK);
    return parameter;
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
    ComPtr<_Subscribers> subscribers;
    EXPECT_EQ(notification->get_Subscribers(&subscribers), S_OK);
    return subscribers;
}

inline short countOf(_INotification* notification) {
    short count = -1;
    EXPECT_EQ(subscribersOf(notification)->get_Count(&count), S_OK);
    return count;
}

inline void subscribe(_INotification* notification, _INotificationSubscriber* subscriber) {
    EXPECT_EQ(subscribersOf(notification)->Add(&subscriber), S_OK);
}

inline void unsubscribe(_INotification* notification, IDispatch* subscriber) {
    VARIANT which = arg(subscriber);
    EXPECT_EQ(subscribersOf(notification)->Remove(&which), S_OK);
}

inline ComPtr<_INotification> publish(_Notifications* hub, const wchar_t* tag) {
    ComPtr<_INotification> published;
    EXPECT_EQ(hub->Publish(Bstr(tag).get(), nullptr, &published), S_OK);
    return published;
}

}  // namespace vela::test
