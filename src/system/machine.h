// This computer and its Windows.
#pragma once

#include <string>

namespace vela {

// Empty on failure.
std::wstring computerName();
// "major.minor.build", whatever compatibility the program was given; empty on failure.
std::wstring systemVersion();
// Of Windows itself, not of this process.
bool isSystem64Bit();

enum class Axis { Horizontal, Vertical };
// Of the screen, as this process sees it, rounded; 15 where there is no screen.
short twipsPerPixel(Axis axis);

}  // namespace vela
