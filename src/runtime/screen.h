// Whether there is anybody to ask.
#pragma once

namespace vela {

// Whether somebody may see what this process shows. The windows of a service are on no screen, and
// those of a machine without a display on one that has no contents. A dialog would wait there for
// ever.
bool hasScreen();

}  // namespace vela
