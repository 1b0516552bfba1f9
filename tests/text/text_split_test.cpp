#include "text/text_split.h"

#include <gtest/gtest.h>

#include <string>

#include "text/alignment.h"

namespace vela {
namespace {

using Parts = std::vector<std::wstring_view>;

TEST(TextSplit, KeepsEmptyParts) {
    EXPECT_EQ(splitAt(L";a;;b;", L";"), (Parts{L"", L"a", L"", L"b", L""}));
    EXPECT_EQ(splitAt(L"aaa", L"aa"), (Parts{L"", L"a"}));
    EXPECT_EQ(splitAt(L"a;b", L""), Parts{L"a;b"});
    EXPECT_EQ(splitAt(L"a;b", L"a;b;"), Parts{L"a;b"});
    EXPECT_EQ(splitAt(L"", L";"), Parts{});
}

TEST(TextSplit, WrapsAtSpacesAndLineBreaks) {
    const struct {
        const wchar_t* text;
        std::size_t width;
        Parts lines;
    } table[] = {
        {L"one two three", 7, {L"one two", L"three"}},
        {L"one two three", 6, {L"one", L"two", L"three"}},
        {L"one two three", 13, {L"one two three"}},
        {L"abcdefgh ij", 3, {L"abc", L"def", L"gh", L"ij"}},
        {L"ab cdefg", 4, {L"ab", L"cdef", L"g"}},
        {L"  a  b    c  ", 4, {L"a  b", L"c"}},
        {L"a\r\nb\rc\nd", 9, {L"a", L"b", L"c", L"d"}},
        {L"ab cd\n\ne\r\n", 3, {L"ab", L"cd", L"", L"e", L""}},
        {L"   ", 1, {L""}},
        {L"", 1, {}},
        {L"abc", 1, {L"a", L"b", L"c"}},
        {L"a\tb", 2, {L"a\t", L"b"}},
    };
    for (const auto& row : table) {
        EXPECT_EQ(wrapped(row.text, row.width), row.lines) << row.text << row.width;
    }
}

TEST(TextSplit, TakesLongTexts) {
    EXPECT_EQ(wrapped(std::wstring(1'000'000, L'a'), 32767).size(), 31u);
    EXPECT_EQ(wrapped(std::wstring(1'000'000, L' ') + L"a", 1), Parts{L"a"});
    EXPECT_EQ(splitAt(std::wstring(1'000'000, L';'), L";").size(), 1'000'001u);
}

TEST(TextAlignment, CutsOrFillsToTheWidth) {
    const struct {
        const wchar_t *text, *left, *right, *centre;
    } table[] = {
        {L"", L"....", L"....", L"...."},
        {L"abc", L"abc.", L".abc", L"abc."},
        {L"a", L"a...", L"...a", L".a.."},
        {L"abcdef", L"abcd", L"abcd", L"abcd"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(aligned(row.text, 4, Side::Left, L'.'), row.left);
        EXPECT_EQ(aligned(row.text, 4, Side::Right, L'.'), row.right);
        EXPECT_EQ(aligned(row.text, 4, Side::Centre, L'.'), row.centre);
    }
    EXPECT_EQ(aligned(L"abc", 0, Side::Right, L'.'), L"");
}

}  // namespace
}  // namespace vela
