// Switch strings such as a command line: "prog /user=ana /log".
//
// Every slash begins a switch, which reaches to the next slash; nothing is quoted. What comes
// before the first slash is ignored. Spaces around a switch are not part of it, other blanks are.
// Its name ends at its first "="; blanks on either side of that belong to the name and to the
// value.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vela {

// One switch; views the switch string.
struct Switch {
    std::int32_t position;   // from 1, empty switches counted
    std::wstring_view text;  // all of it
    std::wstring_view name;
    std::wstring_view value;  // empty when there is no "="
};

// Reads a switch string, which must outlive it, from left to right.
class SwitchReader {
  public:
    explicit SwitchReader(std::wstring_view text);

    // The next switch, nothing at the end.
    std::optional<Switch> next();

  private:
    std::wstring_view rest_;  // empty, or begins with the slash of the next switch
    std::int32_t position_ = 0;
};

}  // namespace vela
