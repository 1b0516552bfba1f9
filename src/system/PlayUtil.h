// Plays the sounds that the user has chosen for events.
#pragma once

#include "contract.h"

namespace vela {

class PlayUtil final : public Object<PlayUtil, _PlayUtil> {
  public:
    HRESULT STDMETHODCALLTYPE MailSound() override;
    HRESULT STDMETHODCALLTYPE AlertSound() override;
    HRESULT STDMETHODCALLTYPE SystemNotificationSound() override;
    HRESULT STDMETHODCALLTYPE RecycleSound() override;
    HRESULT STDMETHODCALLTYPE CriticalStopSound() override;
    HRESULT STDMETHODCALLTYPE DeviceConnectSound() override;
    HRESULT STDMETHODCALLTYPE DeviceDisconnectSound() override;
    HRESULT STDMETHODCALLTYPE DeviceFailSound() override;
};

}  // namespace vela
