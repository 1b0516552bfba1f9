// A named happening: its identity, its subscribers, and how they are told.
#pragma once

#include "notifications/NotificationEventArgs.h"
#include "notifications/Subscribers.h"

namespace vela {

class Notification final : public Object<Notification, _Notification, _INotification> {
  public:
    HRESULT STDMETHODCALLTYPE get_Id(LONG* result) override;
    HRESULT STDMETHODCALLTYPE put_Id(LONG newValue) override;
    HRESULT STDMETHODCALLTYPE put_Tag(BSTR newValue) override;
    HRESULT STDMETHODCALLTYPE get_Tag(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_Subscribers(_Subscribers** result) override;
    HRESULT STDMETHODCALLTYPE Notify(VARIANT* notificationParameter,
                                     _INotificationSubscriber** toThisSubscriber,
                                     VARIANT_BOOL* result) override;

    const std::wstring& tag() const { return tag_; }

  private:
    LONG id_ = 0;
    std::wstring tag_;
    const ComPtr<Subscribers> subscribers_ = make<Subscribers>();
};

}  // namespace vela
