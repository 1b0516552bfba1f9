// What is allocated in all heaps of this process.
#pragma once

#include <windows.h>

namespace vela::test {

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

}  // namespace vela::test
