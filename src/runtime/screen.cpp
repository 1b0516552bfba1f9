#include "runtime/screen.h"

#include <windows.h>

#include "runtime/handles.h"

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
    const ScreenContext screen(GetDC(nullptr));
    return GetPixel(screen.get(), 0, 0) != CLR_INVALID;
}

DotsPerInch screenDotsPerInch() {
    DotsPerInch dots{};
    if (const ScreenContext screen{GetDC(nullptr)}) {
        dots = {GetDeviceCaps(screen.get(), LOGPIXELSX), GetDeviceCaps(screen.get(), LOGPIXELSY)};
    }
    const auto orUsual = [](int found) { return found > 0 ? found : kUsualDotsPerInch; };
    return {orUsual(dots.x), orUsual(dots.y)};
}

}  // namespace vela
