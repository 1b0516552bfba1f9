#include "text/extenso.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vela {
namespace {

// What is written of single amounts, the examples of the documentation tell.
TEST(TextExtenso, NeverWritesTwoBlanksOrALostJoiningWord) {
    for (std::uint64_t seed = 1; seed != 0 && seed < (1ULL << 63); seed = seed * 3 + 7) {
        for (const wchar_t* name : {L"", L"Euros", L"\"", L"\"\""}) {
            const std::wstring text = inWords(static_cast<Currency>(seed), name);
            EXPECT_EQ(text.find(L"  "), text.npos) << seed;
            EXPECT_EQ(text.find(L" e e "), text.npos) << seed;
            EXPECT_FALSE(text.ends_with(L" e ")) << seed;
        }
    }
    const Currency least = std::numeric_limits<Currency>::min();
    EXPECT_TRUE(inWords(least, L"").starts_with(L"Menos novecentos"));
}

}  // namespace
}  // namespace vela
