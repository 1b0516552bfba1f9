// Memory that ends when a test says so.
#pragma once

namespace vela::test {

// While it lives, the `count`-th allocation of this thread fails, once: with std::bad_alloc.
class FailingAllocation {
  public:
    explicit FailingAllocation(long count);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    // Whether it has failed.
    bool happened() const;
};

}  // namespace vela::test
