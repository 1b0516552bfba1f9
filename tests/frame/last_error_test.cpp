#include "frame/core/last_error.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FrameLastError, GivesEachPartAsText) {
    const ErrorRecord record{1, 3021, L"Sem registo", L"Lista"};
    const wchar_t* const expected[] = {
        L"", L"1", L"Sem registo", L"3021", L"Lista", L"(Lista) 3021 - Sem registo", L""};
    for (int part = 0; part < 7; ++part) EXPECT_EQ(partOf(record, part), expected[part]) << part;
    EXPECT_EQ(partOf({-7, -2147483647 - 1, L"", L""}, 5), L"() -2147483648 - ");
}

TEST(FrameLastError, KnowsExactlyTheNetworkErrors) {
    int known = 0;
    for (int number = -32768; number <= 32767; ++number) known += isNetworkError(number);
    EXPECT_EQ(known, 20);
    for (const int number : {3006, 3186, 3189, 3218, 3262}) EXPECT_TRUE(isNetworkError(number));
    for (const int number : {3185, 3263, 3007, 0, -3006}) EXPECT_FALSE(isNetworkError(number));
}

}  // namespace
}  // namespace vela
