#include "text/core/text_split.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

using Parts = std::vector<std::wstring_view>;

TEST(TextSplit, KeepsEmptyParts) {
    EXPECT_EQ(splitAt(L";a;;b;", L";"), (Parts{L"", L"a", L"", L"b", L""}));
    EXPECT_EQ(splitAt(L"aaa", L"aa"), (Parts{L"", L"a"}));
    EXPECT_EQ(splitAt(L"a;b", L""), Parts{L"a;b"});
    EXPECT_EQ(splitAt(std::wstring(1'000'000, L';'), L";").size(), 1'000'001u);
}

TEST(TextSplit, WrapsAtSpacesAndLineBreaks) {
    const std::tuple<const wchar_t*, std::size_t, Parts> table[] = {
        {L"one two three", 7, {L"one two", L"three"}},
        {L"one two three", 6, {L"one", L"two", L"three"}},
        {L"ab cdefg", 4, {L"ab", L"cdef", L"g"}},
        {L"  a  b    c  ", 4, {L"a  b", L"c"}},
        {L"a\r\nb\rc\nd", 9, {L"a", L"b", L"c", L"d"}},
        {L"ab cd\n\ne\r\n", 3, {L"ab", L"cd", L"", L"e", L""}},
        {L"", 1, {}},
    };
    for (const auto& [text, width, lines] : table) {
        EXPECT_EQ(wrapped(text, width), lines) << text << width;
    }
    EXPECT_EQ(wrapped(std::wstring(1'000'000, L'a'), 32767).size(), 31u);
    EXPECT_EQ(wrapped(std::wstring(1'000'000, L' ') + L"a", 1), Parts{L"a"});
}

}  // namespace
}  // namespace vela
