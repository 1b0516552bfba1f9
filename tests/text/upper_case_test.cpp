// Upper-casing: one unit to one unit, the same for every locale.
#include "text/upper_case.h"

#include <gtest/gtest.h>

namespace {

struct UnitCase {
    wchar_t unit;
    wchar_t upper;
    const char* what;
};

TEST(UpperCase, MapsUnits) {
    const UnitCase cases[] = {
        {L'\0', L'\0', "null"},
        {L'a', L'A', "first letter"},
        {L'z', L'Z', "last letter"},
        {L'`', L'`', "before the letters"},
        {L'{', L'{', "after the letters"},
        {L'Z', L'Z', "capital"},
        {L'\u00E0', L'\u00C0', "a grave"},
        {L'\u00F6', L'\u00D6', "o diaeresis"},
        {L'\u00F7', L'\u00F7', "division sign among the letters"},
        {L'\u00DF', L'\u00DF', "sharp s has no single capital"},
        {L'\u00FF', L'\u0178', "capital on another page"},
        {L'\u017E', L'\u017D', "z caron"},
        {L'\u03C9', L'\u03A9', "omega"},
        {L'\u044F', L'\u042F', "ya"},
        {L'\uFB01', L'\uFB01', "ligature"},
        {L'\uFF41', L'\uFF21', "full-width a"},
        {L'\u4E2D', L'\u4E2D', "ideograph"},
        {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xD83D), "high surrogate"},
        {static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xDE00), "low surrogate"},
        {static_cast<wchar_t>(0xFFFF), static_cast<wchar_t>(0xFFFF), "last unit"},
    };
    for (const UnitCase& c : cases) EXPECT_EQ(vela::upperCase(c.unit), c.upper) << c.what;
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
