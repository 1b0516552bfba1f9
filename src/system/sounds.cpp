#include "system/sounds.h"

#include <windows.h>

#include <mmsystem.h>

#include "runtime/system_function.h"

namespace vela {

namespace {

// Where the settings keep an event's sound: below the program that it belongs to.
const wchar_t* eventPath(Sound sound) {
    switch (sound) {
        case Sound::Mail: return L".Default\\MailBeep";
        case Sound::Alert: return L".Default\\SystemExclamation";
        case Sound::Notification: return L".Default\\SystemNotification";
        case Sound::Recycle: return L"Explorer\\EmptyRecycleBin";
        case Sound::CriticalStop: return L".Default\\SystemHand";
        case Sound::DeviceConnect: return L".Default\\DeviceConnect";
        case Sound::DeviceDisconnect: return L".Default\\DeviceDisconnect";
        case Sound::DeviceFail: return L".Default\\DeviceFail";
    }
    return L"";
}

}  // namespace

std::wstring soundFile(Sound sound) {
    const std::wstring key =
        std::wstring(L"AppEvents\\Schemes\\Apps\\") + eventPath(sound) + L"\\.Current";
    wchar_t path[1024];  // references to the environment are resolved
    DWORD size = sizeof path;
    const LONG code =
        RegGetValueW(HKEY_CURRENT_USER, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path, &size);
    return code == ERROR_SUCCESS ? path : L"";
}

void play(Sound sound) {
    const std::wstring file = soundFile(sound);
    decltype(&PlaySoundW) start = nullptr;
    if (file.empty() || !findFunction(start, L"winmm.dll", "PlaySoundW")) return;
    start(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

}  // namespace vela
