#include "xml/core/xml_text.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

// Built from units: a lone surrogate has no literal.
std::wstring units(std::initializer_list<unsigned> values) {
    std::wstring text;
    for (const unsigned value : values) text += static_cast<wchar_t>(value);
    return text;
}

TEST(XmlText, LosesOnlyWhatXmlCannotHold) {
    const std::pair<std::wstring, std::wstring> table[] = {
        {L"<a>\t\r\n&]]>", L"<a>\t\r\n&]]>"},
        {units({0, 'a', 1, 8, 'b', 0xB, 0x1F, 0x7F}), units({'a', 'b', 0x7F})},
        {units({0xD83D, 0xDE00}), units({0xD83D, 0xDE00})},
        {units({0xDE00, 0xD83D, 'a'}), L"a"},
        {units({0xFFFD, 0xFFFE, 0xFFFF}), units({0xFFFD})},
    };
    for (const auto& [text, held] : table) {
        EXPECT_EQ(xmlText(text), held);
        EXPECT_EQ(isXmlText(text), text == held);
    }
}

TEST(XmlText, TellsNamesFromWhatWouldBreakTheMarkup) {
    EXPECT_TRUE(isXmlName(L"_1"));
    EXPECT_TRUE(isXmlName(L"Pre\u00E7o-2.b\u00B7\u4E2D" + units({0xD840, 0xDC00})));
    // The zero at the end of the text is one of them.
    for (const unsigned unit : L" :<>\"=/&\n\u00D7\u2028\xD840") {
        EXPECT_FALSE(isXmlName(units({'a', unit}))) << unit;
        EXPECT_FALSE(isXmlName(units({'a', unit, 'b'}))) << unit;
    }
    for (const unsigned unit : L"1-.\u00B7\xDC00") EXPECT_FALSE(isXmlName(units({unit, 'a'})));
    EXPECT_FALSE(isXmlName(L""));
}

}  // namespace
}  // namespace vela
