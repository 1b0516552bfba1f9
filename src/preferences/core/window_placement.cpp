#include "preferences/core/window_placement.h"

#include <algorithm>

namespace vela {

namespace {

long extent(long wanted, long available) {
    return wanted <= 0 ? available : std::min(wanted, available);
}

}  // namespace

long windowState(double number) {
    return number == kMinimised ? kMinimised : number == kMaximised ? kMaximised : kNormal;
}

WindowRect broughtIntoView(const WindowRect& window, const WindowRect& area) {
    const long width = extent(window.width, area.width);
    const long height = extent(window.height, area.height);
    return {std::clamp(window.left, area.left, area.left + area.width - width),
            std::clamp(window.top, area.top, area.top + area.height - height), width, height};
}

}  // namespace vela
