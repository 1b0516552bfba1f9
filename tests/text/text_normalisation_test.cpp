#include "text/text_normalisation.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextNormalisation, ReplacesWithoutLookingAtWhatItInserted) {
    using Text = const wchar_t*;
    const std::tuple<Text, Text, Text, Text> table[] = {
        {L"aaa", L"a", L"aa", L"aaaaaa"}, {L"aaa", L"aa", L"b", L"ba"}, {L"abab", L"ab", L"", L""},
        {L"''", L"'", L"''", L"''''"},    {L"abc", L"", L"x", L"abc"},  {L"", L"a", L"b", L""},
        {L"abc", L"abcd", L"x", L"abc"},
    };
    for (const auto& [text, search, replacement, result] : table) {
        EXPECT_EQ(replaceAll(text, search, replacement), result) << text;
    }
}

TEST(TextNormalisation, TrimsSpacesOnlyAndUpperCases) {
    EXPECT_EQ(normalisedIdentity(L"  ação ß "), L"AÇÃO ß");
    EXPECT_EQ(normalisedIdentity(L"\tab "), L"\tAB");
    EXPECT_EQ(normalisedIdentity(L"   "), L"");
}

TEST(TextNormalisation, FillsHighPlaceholdersFirst) {
    std::vector<std::wstring> values;
    for (int i = 1; i <= 10; ++i) values.push_back(L"v" + std::to_wstring(i));
    EXPECT_EQ(filledTemplate(L"@X1 @X10 @X11 @x1", values, 0), L"v1 v10 v11 @x1");
    EXPECT_EQ(filledTemplate(L"@X1 @X2", {L"a"}, 1), L"@X1 a");
    EXPECT_EQ(filledTemplate(L"@X0 @X-1", {L"a", L"b"}, -2), L"b a");
    EXPECT_EQ(filledTemplate(L"@X1", {}, 0), L"@X1");
}

TEST(TextNormalisation, RemovesAccentsAndKeepsTheLength) {
    EXPECT_EQ(withoutAccents(L"ÁÀÃÂáàãâÉÈÊËéèêëÍÌÎíìîÓÒÕÔóòõôÚÙÛúùûÇç"),
              L"AAAAaaaaEEEEeeeeIIIiiiOOOOooooUUUuuuCc");
    EXPECT_EQ(withoutAccents(L"Ä.ï-Öü,Ñ'z\tk9"), L" .       z k ");
}

}  // namespace
}  // namespace vela
