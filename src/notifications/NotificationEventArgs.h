// What a subscriber is told about the notification that fired.
#pragma once

#include "contract.h"

namespace vela {

class NotificationEventArgs final : public Object<NotificationEventArgs, _NotificationEventArgs> {
  public:
    // Keeps an object as it is and copies any other value; a missing `parameter` is Empty.
    NotificationEventArgs(LONG id, const std::wstring& tag, const VARIANT* parameter);

    HRESULT STDMETHODCALLTYPE get_Cancel(VARIANT_BOOL* result) override;
    HRESULT STDMETHODCALLTYPE put_Cancel(VARIANT_BOOL newValue) override;
    HRESULT STDMETHODCALLTYPE get_NotificationID(LONG* result) override;
    HRESULT STDMETHODCALLTYPE get_NotificationTAG(BSTR* result) override;
    HRESULT STDMETHODCALLTYPE get_Parameter(VARIANT* result) override;

    bool cancelled() const { return isTrue(cancel_); }
    void resetCancel() { cancel_ = VARIANT_FALSE; }

  private:
    const LONG id_;
    const std::wstring tag_;
    const Variant parameter_;
    VARIANT_BOOL cancel_ = VARIANT_FALSE;
};

}  // namespace vela
