// Which ticks of a pulsar become pulses.
#pragma once

#include <cstddef>
#include <string_view>

namespace vela {

// The place of a pulsar in its pattern: one character per tick, from the first one again after the
// last. It stays where it is when the pulsar stops or the pattern changes.
class PatternPlace {
  public:
    // Takes the next tick. It becomes a pulse where the pattern has a '1', or where there is no
    // pattern; behind the end of a pattern that was cut short there is none.
    bool advance(std::wstring_view pattern);

  private:
    std::size_t ticks_ = 0;  // since the pattern last began
};

}  // namespace vela
