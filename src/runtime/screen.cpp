#include "runtime/screen.h"

#include <windows.h>

namespace vela {

namespace {

constexpr int kUsualDotsPerInch = 96;

}  // namespace

bool hasScreen() {
    USEROBJECTFLAGS station{};
    if (!GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &station, sizeof station,
                                   nullptr) ||
        !(station.dwFlags & WSF_VISIBLE)) {
        return false;
    }
    const HDC screen = GetDC(nullptr);
    const bool isShown = GetPixel(screen, 0, 0) != CLR_INVALID;
    ReleaseDC(nullptr, screen);
    return isShown;
}

DotsPerInch screenDotsPerInch() {
    DotsPerInch dots{};
    if (const HDC screen = GetDC(nullptr)) {
        dots = {GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
        ReleaseDC(nullptr, screen);
    }
    const auto orUsual = [](int found) { return found > 0 ? found : kUsualDotsPerInch; };
    return {orUsual(dots.x), orUsual(dots.y)};
}

}  // namespace vela
