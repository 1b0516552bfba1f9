#include "preferences/windows1252.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(PreferencesWindows1252, WritesBytesAndReferences) {
    struct {
        std::wstring text;
        const char* bytes;
        bool complete;
    } const table[] = {
        {L"a~\x7f", "a~\x7f", true},
        {L"é ÿ\xA0", "\xE9 \xFF\xA0", true},
        {L"€Žž™", "\x80\x8E\x9E\x99", true},
        {L"\x0416", "&#1046;", false},
        {L"\x81", "&#129;", false},
        {std::wstring{wchar_t(0xD83D), wchar_t(0xDE00), L'x'}, "&#128512;x", false},
        {L"", "", true},
    };
    for (const auto& row : table) {
        bool complete = false;
        EXPECT_EQ(toWindows1252(row.text, complete), row.bytes);
        EXPECT_EQ(complete, row.complete) << row.bytes;
    }
}

}  // namespace
}  // namespace vela
