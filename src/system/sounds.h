// The sounds that the user has chosen for events.
#pragma once

#include <string>

namespace vela {

enum class Sound {
    Mail,
    Alert,
    Notification,
    Recycle,
    CriticalStop,
    DeviceConnect,
    DeviceDisconnect,
    DeviceFail,
};

// The file that the user's settings name for it; empty for silence.
std::wstring soundFile(Sound sound);
// Starts to play it, and returns at once. Silent where there is no file or nothing to play it on.
void play(Sound sound);

}  // namespace vela
