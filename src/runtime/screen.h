// The screen: whether there is anybody to ask, and how fine it is.
#pragma once

namespace vela {

// Whether somebody may see what this process shows. The windows of a service are on no screen, and
// those of a machine without a display on one that has no contents. A dialog would wait there for
// ever.
bool hasScreen();

inline constexpr int kTwipsPerInch = 1440;

struct DotsPerInch {
    int x, y;
};
// As this process sees them; 96 where there is no screen.
DotsPerInch screenDotsPerInch();

}  // namespace vela
