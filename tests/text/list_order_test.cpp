// Sorting a list that only answers questions and exchanges entries.
#include "text/list_order.h"

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

// Returns the numbers of questions and of exchanges.
std::pair<long, long> sort(Entries& entries, const std::function<bool(int, int)>& greater) {
    long questions = 0, exchanges = 0;
    const auto at = [&](long position) -> auto& { return entries.at(position - 1); };
    const auto isGreater = [&](long first, long second) {
        return ++questions, greater(at(first).first, at(second).first);
    };
    const auto swap = [&](long first, long second) {
        return ++exchanges, std::swap(at(first), at(second));
    };
    sortList(static_cast<long>(entries.size()), {isGreater, swap});
    return {questions, exchanges};
}

TEST(TextListOrder, SortsStablyWithFewQuestionsAndExchanges) {
    for (const std::size_t count : {0, 1, 2, 3, 10, 1000}) {
        for (const int keys : {1, 2, 5, 100000}) {
            Entries entries = entriesOf(count, keys);
            const auto [questions, exchanges] = sort(entries, std::greater<>());
            EXPECT_TRUE(std::ranges::is_sorted(entries));
            EXPECT_LE(questions, count * std::ceil(std::log2(count + 1)));
            EXPECT_LE(exchanges, count == 0 || keys == 1 ? 0 : static_cast<long>(count) - 1);
        }
    }
    sortList(-1, {});
}

TEST(TextListOrder, LosesNoEntryWhateverItIsTold) {
    const Entries before = entriesOf(500, 1000);
    std::mt19937 random(7);
    for (const unsigned choices : {1u, 2u}) {
        Entries entries = before;
        sort(entries, [&](int, int) { return random() % choices == 0; });
        EXPECT_TRUE(std::ranges::is_permutation(entries, before));
    }
    Entries entries = before;
    int left = 100;
    const auto failing = [&](int, int) {
        return --left > 0 ? false : throw std::runtime_error("");
    };
    EXPECT_THROW(sort(entries, failing), std::runtime_error);
    EXPECT_EQ(entries, before);
}

}  // namespace
}  // namespace vela
