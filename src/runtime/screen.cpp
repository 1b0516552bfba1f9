#include "runtime/screen.h"

#include <windows.h>

#include "runtime/handles.h"

namespace vela {

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

}  // namespace vela
