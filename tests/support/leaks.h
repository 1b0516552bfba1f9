// Tells whether many rounds of the same leave memory behind.
#pragma once

#include <functional>

#include "support/support.h"

namespace vela::test {

// How many blocks are allocated, in all heaps of this process.
inline long allocatedBlocks() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    long blocks = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++blocks;
        }
        HeapUnlock(heaps[i]);
    }
    return blocks;
}

inline void expectNoGrowth(const std::function<void()>& round, int rounds = 10000) {
    for (int i = 0; i < 100; ++i) round();  // caches fill
    const long before = allocatedBlocks();
    EXPECT_GT(before, 100);
    for (int i = 0; i < rounds; ++i) round();
    EXPECT_LT(allocatedBlocks() - before, rounds / 50);
}

}  // namespace vela::test
