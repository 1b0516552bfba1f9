#include "support/allocation.h"

#include <cstdlib>
#include <new>

namespace vela::test {

namespace {

constinit thread_local long left = -1;  // allocations up to the one that fails; negative for never

}  // namespace

FailingAllocation::FailingAllocation(long count) { left = count; }

FailingAllocation::~FailingAllocation() { left = -1; }

bool FailingAllocation::happened() const { return left == 0; }

}  // namespace vela::test

void* operator new(std::size_t size) {
    using vela::test::left;
    const bool fails = left > 0 && --left == 0;
    if (void* memory = fails ? nullptr : std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
