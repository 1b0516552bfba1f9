// Times of day as text and as numbers: 905 is five past nine.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vela {

// A time text as hours * 100 + minutes: the digits that it begins with are the hours, or all of the
// time where nothing follows; the minutes are the digits at the beginning of what stands behind the
// first other character, 0 where there are none. Of all that the first four digits count. Blanks
// around the text and before the minutes are passed over.
std::int16_t readTime(std::wstring_view time);

// As 00:00.
std::wstring timeText(std::int16_t time);

}  // namespace vela
