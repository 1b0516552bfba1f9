#include "text/text_search.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace vela {
namespace {

TEST(TextSearch, StartsWhereverItIsTold) {
    const struct {
        long from;
        std::size_t backwards, onwards;
    } table[] = {
        {LONG_MIN, 0, 2}, {-1, 0, 2}, {0, 0, 2}, {1, 0, 2}, {2, 2, 2},
        {3, 2, 5},        {5, 5, 5},  {6, 5, 0}, {7, 5, 0}, {LONG_MAX, 5, 0},
    };
    for (const auto& row : table) {
        EXPECT_EQ(findBackwards(L"abcabc", L"bc", row.from), row.backwards) << row.from;
        EXPECT_EQ(findFirstOf(L"abcabc", L"xb", row.from), row.onwards) << row.from;
        const std::vector<std::wstring_view> texts{L"", L"bc"};
        EXPECT_EQ(findFirstText(L"abcabc", texts, row.from).position, row.onwards) << row.from;
        EXPECT_EQ(findPair(L"abcabc", L"bc", row.from).opened, row.onwards) << row.from;
    }
}

TEST(TextSearch, FindsNoEmptyText) {
    EXPECT_EQ(findBackwards(L"abc", L"", 3), 0u);
    EXPECT_EQ(findBackwards(L"", L"a", 1), 0u);
    EXPECT_EQ(findFirstOf(L"abc", L"", 1), 0u);
    EXPECT_EQ(occurrences(L"abc", L""), 0u);
    EXPECT_EQ(findFirstText(L"", {}, 1).place, 0u);
}

TEST(TextSearch, CountsWithoutOverlaps) {
    EXPECT_EQ(occurrences(L"aaaaa", L"aa"), 2u);
    EXPECT_EQ(occurrences(L"abAB", L"ab"), 1u);
    EXPECT_EQ(occurrences(std::wstring(1'000'000, L'a'), L"a"), 1'000'000u);
}

TEST(TextSearch, PrefersWhatBeginsFirstThenWhatIsListedFirst) {
    const struct {
        std::vector<std::wstring_view> texts;
        std::size_t place, position;
    } table[] = {
        {{L"d", L"bc", L"b"}, 2, 2},  {{L"b", L"bc"}, 1, 2},    {{L"cd", L"c", L"bcde"}, 1, 3},
        {{L"x", L"", L"abcd"}, 3, 1}, {{L"abcde", L"D"}, 0, 0}, {{L"d", L"d"}, 1, 4},
    };
    for (const auto& row : table) {
        const FoundText found = findFirstText(L"abcd", row.texts, 1);
        EXPECT_EQ(found.place, row.place) << row.texts[0].data();
        EXPECT_EQ(found.position, row.position) << row.texts[0].data();
    }
}

TEST(TextSearch, CountsNestedPairs) {
    const struct {
        const wchar_t *text, *marks;
        std::size_t opened, closed;
    } table[] = {
        {L"f(a(b))(c)", L"()", 2, 7}, {L")(a)", L"()", 2, 4},   {L"((a)", L"()", 0, 0},
        {L"a)", L"()", 0, 0},         {L"", L"()", 0, 0},       {L"(a)", L"(", 0, 0},
        {L"(a)", L"", 0, 0},          {L"a'b'c'", L"''", 2, 4}, {L"<a>", L"<>()", 1, 3},
    };
    for (const auto& row : table) {
        const MarkPair pair = findPair(row.text, row.marks);
        EXPECT_EQ(pair.opened, row.opened) << row.text;
        EXPECT_EQ(pair.closed, row.closed) << row.text;
    }
    const std::wstring deep = std::wstring(500'000, L'(') + std::wstring(500'000, L')');
    EXPECT_EQ(findPair(deep, L"()").closed, 1'000'000u);
}

}  // namespace
}  // namespace vela
