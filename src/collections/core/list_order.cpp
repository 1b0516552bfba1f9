#include "collections/core/list_order.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vela {

namespace {

// The present positions of the entries, from 0, in the order that they are to have.
std::vector<long> wantedOrder(long count, const OrderedList& list) {
    std::vector<long> order;
    for (long i = 0; i < count; ++i) {
        const auto isBelow = [&](long entry, long other) {
            return list.isGreater(other + 1, entry + 1);
        };
        // A search by halves stays within its range, whatever it is told.
        order.insert(std::upper_bound(order.begin(), order.end(), i, isBelow), i);
    }
    return order;
}

}  // namespace

void sortList(long count, const OrderedList& list) {
    std::vector<long> order = wantedOrder(count, list);
    // One cycle of exchanges after the other; the entry that stood at its start travels with it.
    for (long start = 0; start < count; ++start) {
        for (long at = start; order[at] != at;) {
            const long from = std::exchange(order[at], at);
            if (from == start) break;
            list.swap(at + 1, from + 1);
            at = from;
        }
    }
}

}  // namespace vela
