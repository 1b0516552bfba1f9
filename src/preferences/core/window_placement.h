// Where a window goes when its stored position does not suit the screen of today.
#pragma once

namespace vela {

struct WindowRect {
    long left, top, width, height;

    friend bool operator==(const WindowRect&, const WindowRect&) = default;
};

// WindowState, as it is kept.
inline constexpr long kNormal = 0, kMinimised = 1, kMaximised = 2;

// The state that a number stands for. Objects of many kinds count their states in ways of their
// own: what is neither minimised nor maximised counts as normal.
long windowState(double number);

// The rectangle moved, and shrunk where it must be, so that it lies within `area`. A width or
// height of nothing or less becomes the area's.
WindowRect broughtIntoView(const WindowRect& window, const WindowRect& area);

}  // namespace vela
