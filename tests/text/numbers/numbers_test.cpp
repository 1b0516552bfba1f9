// The algorithms behind MathUtil that need no platform.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "automation/core/runtime_error.h"
#include "text/numbers/core/bits.h"
#include "text/numbers/core/fixed_point.h"
#include "text/numbers/core/number_bases.h"
#include "text/numbers/core/rounding.h"

namespace vela {
namespace {

constexpr Currency kMost = std::numeric_limits<Currency>::max();
constexpr Currency kLeast = std::numeric_limits<Currency>::min();

// The number of the run-time error that `body` raises; 0 when it raises none.
template <class Body>
int raised(Body&& body) {
    try {
        body();
        return 0;
    } catch (const RuntimeFailure& failure) {
        return static_cast<int>(failure.error);
    }
}

TEST(TextNumbers, RoundAmountsHalfAwayFromZero) {
    // Amount, kind; what it becomes, or the error.
    const std::tuple<Currency, std::int16_t, Currency, int> table[] = {
        {500'000, 0, 1'000'000, 0}, {-499'000, 0, 0, 0},    {49'995, 1, 100'000, 0},
        {49'994, 1, 0, 0},          {25000, 2, 30000, 0},   {12345, 5, 12350, 0},
        {-23450, 4, -23500, 0},     {-12345, 9, -12345, 0}, {99'990'000, -2, 100'000'000, 0},
        {kLeast, 100, 0, 0},        {0, -3, 0, 11},         {10'000, 32767, 0, 6},
        {kMost / 100, 4, 0, 6},     {kLeast, 2, 0, 6},      {kMost, 2, 0, 6},
    };
    for (const auto& [amount, kind, expected, error] : table) {
        Currency found = 0;
        EXPECT_EQ(raised([&, a = amount, k = kind] { found = rounded(a, k); }), error)
            << amount << " " << kind;
        EXPECT_EQ(found, expected) << amount << " " << kind;
    }
}

TEST(TextNumbers, SplitNumbersAsCallersKnowIt) {
    const std::pair<double, std::int32_t> integers[] = {
        {2.7, 2}, {-1.2, -2}, {3, 2}, {4, 4}, {1, 0}, {-1, -2}, {2147483647.4, 2147483647}};
    for (const auto& [value, part] : integers) EXPECT_EQ(integerPart(value), part) << value;
    for (const double beyond : {2147483649.0, -2147483649.0, std::nan(""), HUGE_VAL}) {
        EXPECT_EQ(raised([&] { integerPart(beyond); }), 6);
    }
    const std::tuple<double, std::int16_t, std::int32_t> fractions[] = {
        {12.345, 2, 35}, {-12.345, 2, -35}, {12.344, 2, 34}, {2.675, 2, 68}, {0.05, 1, 1},
        {0.5, 0, 0},     {-0.75, 0, -1},    {0.999, 2, 100}, {7, 3, 0},      {1e300, 4, 0},
    };
    for (const auto& [value, decimals, part] : fractions) {
        EXPECT_EQ(fractionAsWhole(value, decimals), part) << value;
    }
    EXPECT_EQ(raised([] { fractionAsWhole(0.5, -1); }), 5);
    EXPECT_EQ(raised([] { fractionAsWhole(0.5, 10); }), 6);
    EXPECT_EQ(raised([] { fractionAsWhole(HUGE_VAL, 2); }), 6);
}

TEST(TextNumbers, TestTheBitsThatTheyKnow) {
    for (int x = -32768; x <= 32767; ++x) {
        const std::int64_t expected = x >= 0 && x <= 24 ? 1LL << x : x == 31 ? -2147483648LL : 0;
        ASSERT_EQ(powerOfTwo(x), expected) << x;
        ASSERT_EQ(isBitSet(-1, x), (x >= 1 && x <= 25) || x == 32) << x;
    }
    EXPECT_FALSE(isBitSet(~16, 5));
}

TEST(TextNumbers, WriteAndReadOtherBases) {
    const std::pair<std::int32_t, const wchar_t*> table[] = {
        {0, L"0"}, {35, L"Z"}, {36, L"10"}, {INT32_MAX, L"ZIK0ZJ"}};
    for (const auto& [value, text] : table) {
        EXPECT_EQ(toBase(value, 36), text);
        EXPECT_EQ(fromBase(text, 36), value);
    }
    EXPECT_EQ(toBase(-5, 36), L"0");
    for (const wchar_t* bad : {L"-1", L"é", L" 1", L"@"}) {
        EXPECT_EQ(raised([&] { fromBase(bad, 36); }), 5) << bad;
    }
    EXPECT_EQ(raised([] { fromBase(L"ZIK0ZK", 36); }), 6);
}

TEST(TextNumbers, ReadHexadecimalTextBySize) {
    const std::pair<const wchar_t*, std::int32_t> table[] = {
        {L"000012345678", 0x12345678}, {L"10000", 65536}, {L"FFFF", -1}, {L"1G", 1},
        {L"80000000", INT32_MIN},      {L"0FFFF", 65535}, {L" FF", 0},   {L"", 0},
    };
    for (const auto& [text, value] : table) EXPECT_EQ(longFromHex(text), value) << text;
    EXPECT_EQ(raised([] { longFromHex(L"100000000"); }), 6);
    EXPECT_EQ(bytesFromHex(L"aFfG1ZZ"), (std::vector<std::uint8_t>{0xAF, 0x0F, 1, 0}));
}

}  // namespace
}  // namespace vela
