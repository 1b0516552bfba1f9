#include "preferences/core/windows1252.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(PreferencesWindows1252, WritesBytesAndReferences) {
    const std::tuple<std::wstring, const char*, bool> table[] = {
        {L"a~\x7fé ÿ\xA0€™", "a~\x7f\xE9 \xFF\xA0\x80\x99", true},
        {L"\x0416", "&#1046;", false},
        {L"\x81", "&#129;", false},
        {std::wstring{wchar_t(0xD83D), wchar_t(0xDE00), L'x'}, "&#128512;x", false},
    };
    for (const auto& [text, bytes, wanted] : table) {
        bool complete = false;
        EXPECT_EQ(toWindows1252(text, complete), bytes);
        EXPECT_EQ(complete, wanted) << bytes;
    }
}

}  // namespace
}  // namespace vela
