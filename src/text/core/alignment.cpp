#include "text/core/alignment.h"

#include <algorithm>

namespace vela {

std::wstring aligned(std::wstring_view text, std::size_t width, Side side, wchar_t filler) {
    const std::size_t fillers = width - std::min(text.size(), width);
    std::size_t before = 0;
    if (side == Side::Right) before = fillers;
    if (side == Side::Centre) before = fillers / 2;
    std::wstring result(before, filler);
    result.append(text, 0, width).append(fillers - before, filler);
    return result;
}

}  // namespace vela
