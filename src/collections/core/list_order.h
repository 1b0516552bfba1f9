// Putting a list in order through questions and exchanges alone.
#pragma once

#include <functional>

namespace vela {

// Positions count from 1.
struct OrderedList {
    std::function<bool(long, long)> isGreater;
    std::function<void(long, long)> swap;
};

// Entries that are neither greater nor smaller keep their order. Asks about n log2 n times, all of
// it before the first exchange, and exchanges n - 1 times at the most. Answers that contradict each
// other give some order. What the functions throw comes through; a list whose questions fail is as
// it was.
void sortList(long count, const OrderedList& list);

}  // namespace vela
