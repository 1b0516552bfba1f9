// Tells whether many rounds of the same leave memory behind.
#pragma once

#include <functional>

#include "support/heaps.h"
#include "support/support.h"

namespace vela::test {

inline void expectNoGrowth(const std::function<void()>& round, int rounds = 10000) {
    for (int i = 0; i < 100; ++i) round();  // caches fill
    const long before = allocatedBlocks();
    EXPECT_GT(before, 100);
    for (int i = 0; i < rounds; ++i) round();
    EXPECT_LT(allocatedBlocks() - before, rounds / 50);
}

}  // namespace vela::test
