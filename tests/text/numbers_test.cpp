// The algorithms behind MathUtil that need no platform.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "automation/runtime_error.h"
#include "text/bits.h"
#include "text/fixed_point.h"
#include "text/number_bases.h"
#include "text/rounding.h"

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
    struct {
        Currency amount;
        std::int16_t kind;
        Currency expected;
    } const table[] = {
        {23450, 4, 23500},
        {-23450, 4, -23500},
        {25000, 2, 30000},
        {150'000, 1, 200'000},
        {149'000, 1, 100'000},
        {500'000, 0, 1'000'000},
        {-499'000, 0, 0},
        {12345, 5, 12350},
        {12345, 6, 12345},
        {-12345, 9, -12345},
        {12345, 100, 0},
        {5'000'000, -1, 10'000'000},
        {9'999'0000, -2, 10'000 * kCurrencyOne},
    };
    for (const auto& row : table) {
        EXPECT_EQ(rounded(row.amount, row.kind), row.expected) << row.amount << " " << row.kind;
    }
}

TEST(TextNumbers, ReportAmountsThatDoNotFit) {
    struct {
        Currency amount;
        std::int16_t kind;
        int error;
    } const table[] = {
        {10'000, -3, 11}, {10'000, -32768, 11}, {10'000, 17, 6},     {10'000, 32767, 6},
        {kMost, 4, 6},    {kLeast, 2, 6},       {kMost, 2, 6},       {kMost - 5'000, 2, 0},
        {kLeast, 100, 0}, {0, -3, 11},          {kMost / 100, 4, 6},
    };
    for (const auto& row : table) {
        EXPECT_EQ(raised([&] { rounded(row.amount, row.kind); }), row.error)
            << row.amount << " " << row.kind;
    }
}

TEST(TextNumbers, MultiplyAmountsExactly) {
    struct {
        Currency left, right, expected;
    } const table[] = {
        {15'000, 15'000, 22'500},
        {1, 5'000, 0},
        {3, 5'000, 2},
        {1, 5'001, 1},
        {kMost, 10'000, kMost},
        {kLeast, 10'000, kLeast},
        {10'000, kLeast, kLeast},
        {kMost, 1, 922337203685478},
        {3'037'000'499, 3'037'000'499, 922337203092625},
    };
    for (const auto& row : table) {
        EXPECT_EQ(product(row.left, row.right), row.expected) << row.left << " " << row.right;
    }
    EXPECT_EQ(raised([] { product(kMost, 10'001); }), 6);
    EXPECT_EQ(raised([] { product(kLeast, -10'000); }), 6);
    EXPECT_EQ(currencyOf(0.00005), 0);
    EXPECT_EQ(currencyOf(0.00025), 2);
    EXPECT_EQ(currencyOf(-2.34565), -23456);
    for (const double beyond : {922337203685477.6, -1e300, std::nan("")}) {
        EXPECT_EQ(raised([&] { currencyOf(beyond); }), 6);
    }
}

TEST(TextNumbers, WriteEveryDigitOfAnAmount) {
    constexpr Currency kLargest = std::numeric_limits<Currency>::max();
    EXPECT_EQ(pointText(0), L"0");
    EXPECT_EQ(pointText(120'000), L"12");
    EXPECT_EQ(pointText(-500), L"-0.05");
    EXPECT_EQ(pointText(kLargest), L"922337203685477.5807");
    EXPECT_EQ(pointText(-kLargest - 1), L"-922337203685477.5808");
}

TEST(TextNumbers, SplitNumbersAsCallersKnowIt) {
    struct {
        double value;
        std::int32_t expected;
    } const integers[] = {{2.7, 2}, {3.2, 3}, {-1.2, -2}, {3, 2},   {4, 4},
                          {0, 0},   {1, 0},   {2, 2},     {-1, -2}, {2147483647.4, 2147483647}};
    for (const auto& row : integers) EXPECT_EQ(integerPart(row.value), row.expected) << row.value;
    for (const double beyond : {2147483649.0, -2147483649.0, std::nan(""), HUGE_VAL}) {
        EXPECT_EQ(raised([&] { integerPart(beyond); }), 6);
    }
    struct {
        double value;
        std::int16_t decimals;
        std::int32_t expected;
    } const fractions[] = {
        {12.345, 2, 35}, {-12.345, 2, -35}, {12.344, 2, 34}, {2.675, 2, 68}, {7, 3, 0},
        {0.5, 1, 5},     {0.05, 1, 1},      {0.25, 1, 3},    {0.5, 0, 0},    {0.75, 0, 1},
        {1.5, 0, 0},     {-0.75, 0, -1},    {0.999, 2, 100}, {1e300, 4, 0},
    };
    for (const auto& row : fractions) {
        EXPECT_EQ(fractionAsWhole(row.value, row.decimals), row.expected) << row.value;
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
    struct {
        std::int32_t value;
        const wchar_t* text;
    } const table[] = {{0, L"0"}, {35, L"Z"}, {36, L"10"}, {1295, L"ZZ"}, {2147483647, L"ZIK0ZJ"}};
    for (const auto& row : table) {
        EXPECT_EQ(toBase(row.value, 36), row.text);
        EXPECT_EQ(fromBase(row.text, 36), row.value);
    }
    EXPECT_EQ(toBase(-5, 36), L"0");
    EXPECT_EQ(toBase(10, 2), L"1010");
    EXPECT_EQ(fromBase(L"zz", 36), 1295);
    EXPECT_EQ(fromBase(L"", 36), 0);
    EXPECT_EQ(fromBase(L"0000000000001", 36), 1);
    struct {
        const wchar_t* text;
        int base, error;
    } const failures[] = {
        {L"-1", 36, 5},       {L"é", 36, 5},        {L" 1", 36, 5},     {L"2", 2, 5},
        {L"", 1, 5},          {L"1", 37, 5},        {L"ZIK0ZK", 36, 6}, {L"ZIK0ZJ", 36, 0},
        {L"zzzzzzz!", 36, 6}, {L"!zzzzzzz", 36, 5},
    };
    for (const auto& row : failures) {
        EXPECT_EQ(raised([&] { fromBase(row.text, row.base); }), row.error) << row.text;
    }
    EXPECT_EQ(raised([] { toBase(1, 1); }), 5);
}

TEST(TextNumbers, ReadHexadecimalTextBySize) {
    struct {
        const wchar_t* text;
        std::int32_t expected;
    } const table[] = {
        {L"FFFF", -1},
        {L"10000", 65536},
        {L"0FFFF", 65535},
        {L"FFFFFFFF", -1},
        {L"80000000", std::numeric_limits<int>::min()},
        {L"000012345678", 0x12345678},
        {L"", 0},
        {L"1G", 1},
        {L" FF", 0},
        {L"FFFF&", -1},
    };
    for (const auto& row : table) EXPECT_EQ(longFromHex(row.text), row.expected) << row.text;
    EXPECT_EQ(raised([] { longFromHex(L"100000000"); }), 6);
}

TEST(TextNumbers, TurnBytesIntoHexadecimalTextAndBack) {
    const std::vector<std::uint8_t> bytes{0x00, 0x0A, 0xFF};
    EXPECT_EQ(hexText(bytes), L"000AFF");
    EXPECT_EQ(bytesFromHex(L"000aFf"), bytes);
    EXPECT_EQ(bytesFromHex(L"FFA"), (std::vector<std::uint8_t>{0xFF, 0x0A}));
    EXPECT_EQ(bytesFromHex(L"1GG1ZZ"), (std::vector<std::uint8_t>{1, 0, 0}));
    EXPECT_TRUE(bytesFromHex(L"").empty());
}

}  // namespace
}  // namespace vela
