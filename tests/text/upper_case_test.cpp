// Upper-casing: one unit to one unit, the same for every locale.
#include "text/core/upper_case.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

// The edges of the letters, signs among them, what has no single capital, capitals on another page,
// surrogates, and the end of the table.
TEST(TextUpperCase, MapsUnitByUnit) {
    const std::wstring units =
        L"az`{Z 7\u00E0\u00F6\u00F7\u00DF\u00FF\u017E\u03C9\u044F\uFB01\uFF41\xD83D\xDE00\xFFFF";
    const std::wstring capitals =
        L"AZ`{Z 7\u00C0\u00D6\u00F7\u00DF\u0178\u017D\u03A9\u042F\uFB01\uFF21\xD83D\xDE00\xFFFF";
    EXPECT_EQ(upperCase(units + L'\0'), capitals + L'\0');
    EXPECT_EQ(upperCase(std::wstring_view()), L"");
    for (std::size_t i = 0; i < units.size(); ++i) EXPECT_EQ(upperCase(units[i]), capitals[i]) << i;
}

}  // namespace
}  // namespace vela
