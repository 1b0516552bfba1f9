#include "system/PlayUtil.h"

#include "system/sounds.h"

namespace vela {

namespace {

HRESULT playQuietly(Sound sound) {
    quietly([&] { play(sound); });
    return S_OK;
}

}  // namespace

HRESULT PlayUtil::MailSound() { return playQuietly(Sound::Mail); }

HRESULT PlayUtil::AlertSound() { return playQuietly(Sound::Alert); }

HRESULT PlayUtil::SystemNotificationSound() { return playQuietly(Sound::Notification); }

HRESULT PlayUtil::RecycleSound() { return playQuietly(Sound::Recycle); }

HRESULT PlayUtil::CriticalStopSound() { return playQuietly(Sound::CriticalStop); }

HRESULT PlayUtil::DeviceConnectSound() { return playQuietly(Sound::DeviceConnect); }

HRESULT PlayUtil::DeviceDisconnectSound() { return playQuietly(Sound::DeviceDisconnect); }

HRESULT PlayUtil::DeviceFailSound() { return playQuietly(Sound::DeviceFail); }

HRESULT ClassOf<_PlayUtil>::create(REFIID id, void** result) {
    return createObject<PlayUtil>(id, result);
}

}  // namespace vela
