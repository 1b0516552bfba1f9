#include "text/text_filter.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextFilter, LeavesOutKindsOfCharacters) {
    constexpr std::wstring_view kText = L" aÇã-12\t\u00D7\u03A9\u0416\u0661. ";
    EXPECT_EQ(withoutSpaces(kText), L"aÇã-12\t\u00D7\u03A9\u0416\u0661.");
    EXPECT_EQ(withoutDigits(kText), L" aÇã-\t\u00D7\u03A9\u0416\u0661. ");
    EXPECT_EQ(withoutLetters(L" aÇã-12\t\u00D7\u03A9\u0416. "), L" -12\t\u00D7. ");
    EXPECT_EQ(withoutLetters(std::wstring_view(L"a\0\xD83D\xDE00z", 5)),
              std::wstring_view(L"\0\xD83D\xDE00", 3));
}

TEST(TextFilter, KeepsOrReplacesBySets) {
    EXPECT_EQ(onlyCharacters(L"b-a,b\u0416", L"\u0416bab"), L"bab\u0416");
    EXPECT_EQ(onlyCharacters(L"ab", L"", L"<>"), L"<><>");
    EXPECT_EQ(translated(L"abba", L"ab", L"ba"), L"baab");
    EXPECT_EQ(translated(L"aab", L"aa", L"xy"), L"xxb");
    EXPECT_EQ(translated(L"ab", L"a", L"xyz"), L"xb");
}

TEST(TextFilter, ReplacesWhatMatchesAMaskAlone) {
    const std::pair<const wchar_t*, const wchar_t*> table[] = {
        {L"?", L"----"}, {L"*", L"----"}, {L"b", L"a12-"}, {L"", L"a12b"}, {L"##", L"a12b"}};
    for (const auto& [mask, kept] : table) {
        EXPECT_EQ(withMatchesReplaced(L"a12b", *Wildcard::compile(mask), L"-"), kept) << mask;
    }
}

TEST(TextFilter, TellsNumbers) {
    // Without a minus and a fraction, with one of them, with both.
    const std::tuple<const wchar_t*, bool, bool, bool, bool> table[] = {
        {L"0123456789", true, true, true, true}, {L"-12", false, true, false, true},
        {L",5", false, false, true, true},       {L"5,", false, false, true, true},
        {L"-,5", false, false, false, true},
    };
    for (const auto& [text, plain, negative, fraction, both] : table) {
        EXPECT_EQ(isNumber(text, {false, L""}), plain) << text;
        EXPECT_EQ(isNumber(text, {true, L""}), negative) << text;
        EXPECT_EQ(isNumber(text, {false, L","}), fraction) << text;
        EXPECT_EQ(isNumber(text, {true, L","}), both) << text;
    }
    for (const wchar_t* other :
         {L"", L"-", L",", L"-,", L"1,5,", L"--1", L"1-", L"+1", L"\u0661"}) {
        EXPECT_FALSE(isNumber(other, {true, L","})) << other;
    }
}

}  // namespace
}  // namespace vela
