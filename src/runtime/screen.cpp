#include "runtime/screen.h"

#include <windows.h>

namespace vela {

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

}  // namespace vela
