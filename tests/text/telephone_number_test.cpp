#include "text/core/telephone_number.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(TextTelephoneNumber, KnowsWhereTheCodeEnds) {
    const std::tuple<const wchar_t*, int, int> table[] = {
        {L"(22) 345-67.89", 22, 3456789}, {L"00351/96/0000001", 96, 1},
        {L"300 123 456", 300, 123456},    {L"112", 0, 112},
        {L"99999999", 0, 99999999},
    };
    for (const auto& [text, code, number] : table) {
        const TelephoneNumber found = telephoneNumber(text);
        EXPECT_EQ(std::pair(found.code, found.number), std::pair(code, number)) << text;
    }
    for (const wchar_t* unreadable :
         {L"", L"+351", L"+351 112", L"034 567 890", L"512 345 678", L"+351 +351 1", L"21 345 678a",
          L"21345678901234567890", L"\u0662\u0661"}) {
        const TelephoneNumber found = telephoneNumber(unreadable);
        EXPECT_EQ(std::pair(found.code, found.number), std::pair(0, 0)) << unreadable;
    }
}

}  // namespace
}  // namespace vela
