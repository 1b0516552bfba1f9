// Where a window goes when its stored position does not suit the screen of today.
#pragma once

namespace vela {

struct WindowRect {
    long left, top, width, height;

    friend bool operator==(const WindowRect&, const WindowRect&) = default;
};

// The rectangle moved, and shrunk where it must be, so that it lies within `area`. A width or
// height of nothing or less becomes the area's.
WindowRect broughtIntoView(const WindowRect& window, const WindowRect& area);

}  // namespace vela
