#include "collections/core/list_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>
#include <vector>

namespace vela {
namespace {

// A key, and where the entry stood at first: pairs in order have been sorted stably.
using Entries = std::vector<std::pair<int, long>>;

Entries entriesOf(std::size_t count, int keys) {
    std::mt19937 random(static_cast<unsigned>(count + keys));
    Entries entries;
    for (std::size_t i = 0; i < count; ++i) entries.emplace_back(random() % keys, i);
    return entries;
}

void sort(Entries& entries, const std::function<bool(int, int)>& greater) {
    const auto at = [&](long position) -> auto& { return entries.at(position - 1); };
    sortList(static_cast<long>(entries.size()),
             {[&](long a, long b) { return greater(at(a).first, at(b).first); },
              [&](long a, long b) { std::swap(at(a), at(b)); }});
}

TEST(CollectionsListOrder, SortsStablyWithFewQuestions) {
    for (const std::size_t count : {0, 1, 2, 3, 1000}) {
        for (const int keys : {1, 2, 5, 100000}) {
            Entries entries = entriesOf(count, keys);
            long questions = 0;
            sort(entries, [&](int first, int second) { return ++questions, first > second; });
            EXPECT_TRUE(std::ranges::is_sorted(entries));
            EXPECT_LE(questions, count * std::ceil(std::log2(count + 1)));
        }
    }
    sortList(-1, {});
}

TEST(CollectionsListOrder, LosesNoEntryWhateverItIsTold) {
    const Entries before = entriesOf(500, 1000);
    std::mt19937 random(7);
    Entries entries = before;
    sort(entries, [&](int, int) { return random() % 2 == 0; });
    EXPECT_TRUE(std::ranges::is_permutation(entries, before));
    entries = before;
    const auto fails = [](int, int) -> bool { throw std::runtime_error(""); };
    EXPECT_THROW(sort(entries, fails), std::runtime_error);
    EXPECT_EQ(entries, before);
}

}  // namespace
}  // namespace vela
