#include "text/core/text_search.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace vela {
namespace {

using Texts = std::vector<std::wstring_view>;

TEST(TextSearch, StartsWhereverItIsTold) {
    const std::tuple<long, std::size_t, std::size_t> table[] = {
        {LONG_MIN, 0, 2}, {0, 0, 2}, {1, 0, 2}, {2, 2, 2},       {3, 2, 5},
        {5, 5, 5},        {6, 5, 0}, {7, 5, 0}, {LONG_MAX, 5, 0}};
    for (const auto& [from, backwards, onwards] : table) {
        EXPECT_EQ(findBackwards(L"abcabc", L"bc", from), backwards) << from;
        EXPECT_EQ(findFirstOf(L"abcabc", L"xb", from), onwards) << from;
        EXPECT_EQ(findFirstText(L"abcabc", Texts{L"", L"bc"}, from).position, onwards) << from;
        EXPECT_EQ(findPair(L"abcabc", L"bc", from).opened, onwards) << from;
    }
}

TEST(TextSearch, FindsNoEmptyTextAndNoOverlaps) {
    EXPECT_EQ(findBackwards(L"abc", L"", 3), 0u);
    EXPECT_EQ(findFirstOf(L"abc", L"", 1), 0u);
    EXPECT_EQ(findFirstText(L"", {}, 1).place, 0u);
    EXPECT_EQ(occurrences(L"abc", L""), 0u);
    EXPECT_EQ(occurrences(L"aaaaaAA", L"aa"), 2u);
}

TEST(TextSearch, PrefersWhatBeginsFirstThenWhatIsListedFirst) {
    const auto placeOf = [](const Texts& texts) { return findFirstText(L"abcd", texts, 1).place; };
    EXPECT_EQ(placeOf({L"d", L"bc", L"b"}), 2u);
    EXPECT_EQ(placeOf({L"x", L"", L"abcd"}), 3u);
    EXPECT_EQ(placeOf({L"abcde", L"D"}), 0u);
}

TEST(TextSearch, CountsNestedPairs) {
    const std::tuple<const wchar_t*, const wchar_t*, std::size_t, std::size_t> table[] = {
        {L"f(a(b))(c)", L"()", 2, 7}, {L")(a)", L"()", 2, 4},  {L"((a)", L"()", 0, 0},
        {L"a)", L"()", 0, 0},         {L"(a)", L"(", 0, 0},    {L"(a)", L"", 0, 0},
        {L"a'b'c'", L"''", 2, 4},     {L"<a>", L"<>()", 1, 3},
    };
    for (const auto& [text, marks, opened, closed] : table) {
        const MarkPair pair = findPair(text, marks);
        EXPECT_EQ(std::pair(pair.opened, pair.closed), std::pair(opened, closed)) << text;
    }
    const std::wstring deep = std::wstring(500'000, L'(') + std::wstring(500'000, L')');
    EXPECT_EQ(findPair(deep, L"()").closed, 1'000'000u);
}

}  // namespace
}  // namespace vela
