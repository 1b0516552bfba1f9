#include "text/core/text_normalisation.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextNormalisation, ReplacesWithoutLookingAtWhatItInserted) {
    EXPECT_EQ(replaceAll(L"aaa", L"a", L"aa"), L"aaaaaa");
    EXPECT_EQ(replaceAll(L"abc", L"", L"x"), L"abc");
}

TEST(TextNormalisation, TrimsSpacesOnlyAndUpperCases) {
    EXPECT_EQ(normalisedIdentity(L"  ação ß "), L"AÇÃO ß");
    EXPECT_EQ(normalisedIdentity(L"\tab "), L"\tAB");
}

TEST(TextNormalisation, FillsHighPlaceholdersFirst) {
    std::vector<std::wstring> values;
    for (int i = 1; i <= 10; ++i) values.push_back(L"v" + std::to_wstring(i));
    EXPECT_EQ(filledTemplate(L"@X1 @X10 @X11 @x1", values, 0), L"v1 v10 v11 @x1");
    EXPECT_EQ(filledTemplate(L"@X1 @X2", {L"a"}, 1), L"@X1 a");
    EXPECT_EQ(filledTemplate(L"@X0 @X-1", {L"a", L"b"}, -2), L"b a");
}

TEST(TextNormalisation, RemovesAccentsAndKeepsTheLength) {
    EXPECT_EQ(withoutAccents(L"ÁÀÃÂáàãâÉÈÊËéèêëÍÌÎíìîÓÒÕÔóòõôÚÙÛúùûÇç"),
              L"AAAAaaaaEEEEeeeeIIIiiiOOOOooooUUUuuuCc");
    EXPECT_EQ(withoutAccents(L"Ä.ï-Öü,Ñ'z\tk9"), L" .       z k ");
}

}  // namespace
}  // namespace vela
