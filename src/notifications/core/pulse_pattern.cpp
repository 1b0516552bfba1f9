#include "notifications/core/pulse_pattern.h"

namespace vela {

bool PatternPlace::advance(std::wstring_view pattern) {
    if (pattern.empty()) return true;
    const bool pulse = ticks_ < pattern.size() && pattern[ticks_] == L'1';
    if (++ticks_ >= pattern.size()) ticks_ = 0;
    return pulse;
}

}  // namespace vela
