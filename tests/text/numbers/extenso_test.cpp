#include "text/numbers/core/extenso.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vela {
namespace {

// What is written of single amounts, the examples of the documentation tell.
TEST(TextExtenso, NeverWritesTwoBlanksOrALostJoiningWord) {
    for (std::uint64_t seed = 1; seed != 0 && seed < (1ULL << 63); seed = seed * 3 + 7) {
        for (const wchar_t* name : {L"", L"Euros"}) {
            const std::wstring text = inWords(static_cast<Currency>(seed), name);
            for (const wchar_t* lost : {L"  ", L" e e "}) EXPECT_EQ(text.find(lost), text.npos);
            EXPECT_FALSE(text.ends_with(L" e ")) << seed;
        }
    }
    const Currency least = std::numeric_limits<Currency>::min();
    EXPECT_TRUE(inWords(least, L"").starts_with(L"Menos novecentos"));
}

}  // namespace
}  // namespace vela
