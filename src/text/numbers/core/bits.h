// Single bits of 32-bit numbers.
#pragma once

#include <cstdint>
#include <limits>

namespace vela {

// 2^x for 0 to 24, the top bit for 31, 0 for everything else: 25 to 30 are left out on purpose.
constexpr std::int32_t powerOfTwo(int x) {
    if (x == 31) return (std::numeric_limits<std::int32_t>::min)();
    return x >= 0 && x <= 24 ? std::int32_t{1} << x : 0;
}

// Whether a bit is set; bits count from 1. Only those that powerOfTwo() knows are ever found set.
constexpr bool isBitSet(std::int32_t value, int bit) { return (powerOfTwo(bit - 1) & value) != 0; }

}  // namespace vela
