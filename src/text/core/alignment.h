// Texts of a fixed width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vela {

enum class Side { Left, Right, Centre };

// `text` in exactly `width` characters: cut at its end, or filled up with `filler` so that it
// stands on that side. Of an odd number of fillers in the centre, the right side gets one more.
// Throws std::bad_alloc.
std::wstring aligned(std::wstring_view text, std::size_t width, Side side, wchar_t filler);

}  // namespace vela
