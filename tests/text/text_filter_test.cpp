#include "text/text_filter.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextFilter, LeavesOutKindsOfCharacters) {
    constexpr std::wstring_view kText = L" aÇã-12\t\u00D7\u03A9\u0416. ";
    EXPECT_EQ(withoutSpaces(kText), L"aÇã-12\t\u00D7\u03A9\u0416.");
    EXPECT_EQ(withoutDigits(kText), L" aÇã-\t\u00D7\u03A9\u0416. ");
    EXPECT_EQ(withoutLetters(kText), L" -12\t\u00D7. ");
    EXPECT_EQ(withoutLetters(std::wstring_view(L"a\0\xD83D\xDE00z", 5)),
              std::wstring_view(L"\0\xD83D\xDE00", 3));
}

TEST(TextFilter, KeepsOrReplacesByASet) {
    EXPECT_EQ(onlyCharacters(L"b-a,b\0", L"bab"), L"bab");
    EXPECT_EQ(onlyCharacters(L"12,5 EUR", L"0123456789,", L"<>"), L"12,5<><><><>");
    EXPECT_EQ(onlyCharacters(L"ab", L"", L"x"), L"xx");
    EXPECT_EQ(onlyCharacters(L"", L"ab", L"x"), L"");
}

TEST(TextFilter, TranslatesEachCharacterOnce) {
    EXPECT_EQ(translated(L"abcab", L"ac", L"x"), L"xbxb");
    EXPECT_EQ(translated(L"abba", L"ab", L"ba"), L"baab");
    EXPECT_EQ(translated(L"aab", L"aa", L"xy"), L"xxb");
    EXPECT_EQ(translated(L"ab", L"", L"xyz"), L"ab");
    EXPECT_EQ(translated(L"ab", L"a", L"xyz"), L"xb");
}

TEST(TextFilter, ReplacesWhatMatchesAMaskAlone) {
    const struct {
        const wchar_t *mask, *expected;
    } table[] = {
        {L"#", L"a--b"}, {L"[!a-z]", L"a--b"}, {L"?", L"----"},  {L"*", L"----"},
        {L"b", L"a12-"}, {L"", L"a12b"},       {L"##", L"a12b"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(withMatchesReplaced(L"a12b", *Wildcard::compile(row.mask), L"-"), row.expected)
            << row.mask;
    }
}

TEST(TextFilter, TellsNumbers) {
    const struct {
        const wchar_t* text;
        bool plain, negative, fraction, both;
    } table[] = {
        {L"0123456789", true, true, true, true}, {L"", false, false, false, false},
        {L"-12", false, true, false, true},      {L"-", false, false, false, false},
        {L"1,5", false, false, true, true},      {L",5", false, false, true, true},
        {L"5,", false, false, true, true},       {L",", false, false, false, false},
        {L"-,", false, false, false, false},     {L"-,5", false, false, false, true},
        {L"1,5,", false, false, false, false},   {L"--1", false, false, false, false},
        {L"1-", false, false, false, false},     {L"+1", false, false, false, false},
        {L" 1", false, false, false, false},     {L"1.5", false, false, false, false},
        {L"\u0661", false, false, false, false},
    };
    for (const auto& row : table) {
        EXPECT_EQ(isNumber(row.text, {false, L""}), row.plain) << row.text;
        EXPECT_EQ(isNumber(row.text, {true, L""}), row.negative) << row.text;
        EXPECT_EQ(isNumber(row.text, {false, L","}), row.fraction) << row.text;
        EXPECT_EQ(isNumber(row.text, {true, L","}), row.both) << row.text;
    }
}

}  // namespace
}  // namespace vela
