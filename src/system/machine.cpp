#include "system/machine.h"

#include <windows.h>

#include <cmath>

#include "runtime/screen.h"
#include "runtime/system_function.h"

namespace vela {

std::wstring computerName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = ARRAYSIZE(name);
    return GetComputerNameW(name, &size) ? std::wstring(name, size) : std::wstring();
}

std::wstring systemVersion() {
    LONG(WINAPI * getVersion)(OSVERSIONINFOW*) = nullptr;
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!findFunction(getVersion, L"ntdll.dll", "RtlGetVersion") || getVersion(&version) < 0) {
        return {};
    }
    return std::to_wstring(version.dwMajorVersion) + L"." +
           std::to_wstring(version.dwMinorVersion) + L"." + std::to_wstring(version.dwBuildNumber);
}

bool isSystem64Bit() {
    BOOL emulated = FALSE;
    return sizeof(void*) == 8 || (IsWow64Process(GetCurrentProcess(), &emulated) && emulated);
}

short twipsPerPixel(Axis axis) {
    const DotsPerInch dots = screenDotsPerInch();
    const int across = axis == Axis::Horizontal ? dots.x : dots.y;
    return static_cast<short>(std::lrint(double{kTwipsPerInch} / across));
}

}  // namespace vela
