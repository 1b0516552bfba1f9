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

struct Entry {
    int key;
    long number;  // where it stood at first
};

struct Counts {
    long questions = 0;
    long exchanges = 0;
};

Counts sort(std::vector<Entry>& entries, std::function<bool(int, int)> greater) {
    Counts counts;
    const auto at = [&](long position) -> Entry& {
        return entries.at(static_cast<std::size_t>(position - 1));
    };
    sortList(static_cast<long>(entries.size()), {[&](long first, long second) {
                                                     ++counts.questions;
                                                     return greater(at(first).key, at(second).key);
                                                 },
                                                 [&](long first, long second) {
                                                     ++counts.exchanges;
                                                     std::swap(at(first), at(second));
                                                 }});
    return counts;
}

std::vector<Entry> entriesOf(std::size_t count, int keys, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < count; ++i) {
        entries.push_back({static_cast<int>(random() % keys), static_cast<long>(i)});
    }
    return entries;
}

bool inOrder(const Entry& left, const Entry& right) {
    return left.key < right.key || (left.key == right.key && left.number < right.number);
}

TEST(TextListOrder, SortsStablyWithFewQuestionsAndExchanges) {
    for (const std::size_t count : {0, 1, 2, 3, 10, 1000}) {
        for (const int keys : {1, 2, 5, 100000}) {
            auto entries = entriesOf(count, keys, static_cast<unsigned>(count + keys));
            const auto [questions, exchanges] = sort(entries, std::greater<>());
            EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(), inOrder));
            EXPECT_LE(questions, count * std::ceil(std::log2(count + 1)));
            EXPECT_LE(exchanges, count == 0 ? 0 : static_cast<long>(count) - 1);
            EXPECT_TRUE(keys > 1 || exchanges == 0);
        }
    }
    sortList(-1, {});
}

TEST(TextListOrder, StaysWithinTheListWhateverItAnswers) {
    std::mt19937 random(7);
    const auto anything = [&](int, int) { return random() % 2 == 0; };
    for (const auto& greater : std::initializer_list<std::function<bool(int, int)>>{
             anything, [](int, int) { return true; }, [](int, int) { return false; }}) {
        auto entries = entriesOf(500, 1000, 1);
        sort(entries, greater);
        std::sort(entries.begin(), entries.end(),
                  [](const Entry& a, const Entry& b) { return a.number < b.number; });
        for (std::size_t i = 0; i < entries.size(); ++i) {
            ASSERT_EQ(entries[i].number, static_cast<long>(i));
        }
    }
}

TEST(TextListOrder, LeavesTheListAloneWhenAQuestionFails) {
    auto entries = entriesOf(50, 1000, 2);
    int left = 100;
    EXPECT_THROW(sort(entries,
                      [&](int a, int b) {
                          if (--left == 0) throw std::runtime_error("");
                          return a > b;
                      }),
                 std::runtime_error);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].number, static_cast<long>(i));
    }
}

}  // namespace
}  // namespace vela
