#include "system/machine.h"

#include <windows.h>

#include <cmath>

#include "runtime/system_function.h"

namespace vela {

namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kUsualDotsPerInch = 96;

int dotsPerInch(int capability) {
    const HDC screen = GetDC(nullptr);
    if (!screen) return 0;
    const int dots = GetDeviceCaps(screen, capability);
    ReleaseDC(nullptr, screen);
    return dots;
}

}  // namespace

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
    const int dots = dotsPerInch(axis == Axis::Horizontal ? LOGPIXELSX : LOGPIXELSY);
    return static_cast<short>(
        std::lrint(double{kTwipsPerInch} / (dots > 0 ? dots : kUsualDotsPerInch)));
}

}  // namespace vela
