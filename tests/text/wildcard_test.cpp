// Patterns of the Like operator.
#include "text/core/wildcard.h"

#include <gtest/gtest.h>

#include <string>

namespace vela {
namespace {

bool matches(std::wstring_view pattern, std::wstring_view text) {
    const auto compiled = Wildcard::compile(pattern);
    EXPECT_TRUE(compiled);
    return compiled && compiled->matches(text);
}

TEST(TextWildcard, MatchesWholeTexts) {
    // With what matches and what does not.
    using Texts = std::vector<const wchar_t*>;
    const std::tuple<const wchar_t*, Texts, Texts> table[] = {
        {L"", {L""}, {L" "}},
        {L"US", {L"US"}, {L"USER", L"PLUS", L"us", L"U", L""}},
        {L"*E**R*", {L"ER", L"USER", L"SERVER"}, {L"RE", L"E"}},
        {L"A*B?C", {L"ABXC", L"ABBXBYC"}, {L"ABC", L"ABXCX"}},
        {L"A#", {L"A0", L"A9"}, {L"A", L"AA", L"A\u0660", L"A10"}},
        {L"[A-F09!]", {L"A", L"F", L"0", L"!"}, {L"G", L"@", L"-", L"1", L"", L"A0"}},
        {L"[!A-F]", {L"G", L"!"}, {L"A", L"F", L"", L"GG"}},
        {L"[*][?][#][[]", {L"*?#["}, {L"ab1["}},
        {L"[[]*]!-", {L"[]!-", L"[A]!-"}, {L"[!-", L"]!-"}},
        {L"A[]B", {L"AB"}, {L"A[]B", L"AXB"}},
        {L"[]]", {L"]"}, {L"", L"[]"}},
        {L"[!]", {L"!"}, {L"", L"A"}},
        {L"[!-A]", {L"B"}, {L"-", L"A"}},
        {L"[A-C-E]", {L"B", L"-", L"E"}, {L"D"}},
    };
    for (const auto& [pattern, matching, others] : table) {
        for (const auto* text : matching) EXPECT_TRUE(matches(pattern, text)) << pattern << text;
        for (const auto* text : others) EXPECT_FALSE(matches(pattern, text)) << pattern << text;
    }
    EXPECT_TRUE(matches({L"\0?", 2}, {L"\0\0", 2}));
}

TEST(TextWildcard, TellsBrokenPatterns) {
    for (const wchar_t* broken : {L"[", L"A[B", L"[!", L"[]]*[", L"[Z-A]", L"[AZ-Y]", L"[!B-A]"}) {
        EXPECT_FALSE(Wildcard::compile(broken)) << broken;
    }
}

// Each doubling of the number of runs would double the time of a matcher that tries them all.
TEST(TextWildcard, TakesNoExponentialTime) {
    std::wstring pattern;
    for (int i = 0; i < 500; ++i) pattern += L"*[A-B]?";
    EXPECT_FALSE(matches(pattern + L"C", std::wstring(20'000, L'A')));
    EXPECT_TRUE(matches(pattern + L"C", std::wstring(20'000, L'A') + L"C"));
}

}  // namespace
}  // namespace vela
