#include "text/core/text_filter.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextFilter, LeavesOutKindsOfCharacters) {
    constexpr std::wstring_view kText = L" aÇã-12\t\u00D7\u03A9\u0416\u0661. ";
    EXPECT_EQ(withoutSpaces(kText), L"aÇã-12\t\u00D7\u03A9\u0416\u0661.");
    EXPECT_EQ(withoutDigits(kText), L" aÇã-\t\u00D7\u03A9\u0416\u0661. ");
    EXPECT_EQ(withoutLetters(L" aÇã-12\t\u00D7\u03A9\u0416. "), L" -12\t\u00D7. ");
}

TEST(TextFilter, KeepsOrReplacesBySets) {
    EXPECT_EQ(onlyCharacters(L"b-a,b\u0416", L"\u0416bab"), L"bab\u0416");
    EXPECT_EQ(onlyCharacters(L"ab", L"", L"<>"), L"<><>");
    EXPECT_EQ(translated(L"abba", L"ab", L"ba"), L"baab");
    EXPECT_EQ(translated(L"aab", L"aa", L"xy"), L"xxb");
    EXPECT_EQ(translated(L"ab", L"a", L"xyz"), L"xb");
}

TEST(TextFilter, TellsNumbers) {
    // Without a minus and a fraction, with one of them; with both all of them are.
    const std::tuple<const wchar_t*, bool, bool, bool> table[] = {
        {L"0123456789", true, true, true}, {L"-12", false, true, false},
        {L",5", false, false, true},       {L"5,", false, false, true},
        {L"-,5", false, false, false},
    };
    for (const auto& [text, plain, negative, fraction] : table) {
        EXPECT_EQ(isNumber(text, {false, L""}), plain) << text;
        EXPECT_EQ(isNumber(text, {true, L""}), negative) << text;
        EXPECT_EQ(isNumber(text, {false, L","}), fraction) << text;
        EXPECT_TRUE(isNumber(text, {true, L","})) << text;
    }
    for (const wchar_t* other :
         {L"", L"-", L",", L"-,", L"1,5,", L"--1", L"1-", L"+1", L"\u0661"}) {
        EXPECT_FALSE(isNumber(other, {true, L","})) << other;
    }
}

}  // namespace
}  // namespace vela
