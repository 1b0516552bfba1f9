// Upper-casing: one unit to one unit, the same for every locale.
#include "text/upper_case.h"

#include <gtest/gtest.h>

namespace {

// Unit by unit: the edges of the letters, signs among them, what has no single capital, capitals on
// another page, surrogates, and the ends of the table.
TEST(UpperCase, MapsUnits) {
    const std::wstring units =
        L"az`{Z\u00E0\u00F6\u00F7\u00DF\u00FF\u017E\u03C9\u044F\uFB01\uFF41\u4E2D";
    const std::wstring capitals =
        L"AZ`{Z\u00C0\u00D6\u00F7\u00DF\u0178\u017D\u03A9\u042F\uFB01\uFF21\u4E2D";
    for (std::size_t i = 0; i < units.size(); ++i) {
        EXPECT_EQ(vela::upperCase(units[i]), capitals[i]) << i;
    }
    for (const int same : {0, 0xD83D, 0xDE00, 0xFFFF}) {
        EXPECT_EQ(vela::upperCase(static_cast<wchar_t>(same)), static_cast<wchar_t>(same));
    }
}

TEST(UpperCase, MapsTextsUnitByUnit) {
    EXPECT_EQ(vela::upperCase(std::wstring_view()), L"");
    EXPECT_EQ(vela::upperCase(L"Stra\u00DFe 7 \u00E9t\u00E9"), L"STRA\u00DFE 7 \u00C9T\u00C9");
    EXPECT_EQ(vela::upperCase(std::wstring_view(L"a\0b", 3)), std::wstring(L"A\0B", 3));
}

TEST(UpperCase, LeavesUnitsBeyondTheTableAlone) {
    if (sizeof(wchar_t) == 2) GTEST_SKIP() << "every unit is in the table";
    EXPECT_EQ(vela::upperCase(static_cast<wchar_t>(0x10428)), static_cast<wchar_t>(0x10428));
    EXPECT_EQ(vela::upperCase(static_cast<wchar_t>(-1)), static_cast<wchar_t>(-1));
}

}  // namespace
