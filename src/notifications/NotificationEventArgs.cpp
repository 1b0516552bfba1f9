#include "notifications/NotificationEventArgs.h"

namespace vela {

NotificationEventArgs::NotificationEventArgs(LONG id, const std::wstring& tag,
                                             const VARIANT* parameter)
    : id_(id),
      tag_(tag),
      parameter_(parameter && !isMissing(dereferenced(*parameter)) ? Variant(*parameter)
                                                                   : Variant()) {}

HRESULT NotificationEventArgs::get_Cancel(VARIANT_BOOL* result) { return give(result, cancel_); }

HRESULT NotificationEventArgs::put_Cancel(VARIANT_BOOL newValue) { return take(cancel_, newValue); }

HRESULT NotificationEventArgs::get_NotificationID(LONG* result) { return give(result, id_); }

HRESULT NotificationEventArgs::get_NotificationTAG(BSTR* result) { return give(result, tag_); }

HRESULT NotificationEventArgs::get_Parameter(VARIANT* result) {
    return answer(result, [&] { return parameter_; });
}

}  // namespace vela
