#include "xml/xml_text.h"

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
    const struct {
        std::wstring text, held;
    } table[] = {
        {L"", L""},
        {L"<a b=\"c\">\t\r\n&]]>", L"<a b=\"c\">\t\r\n&]]>"},
        {units({0, 'a', 1, 8, 'b', 0xB, 0x1F, 0x7F}), units({'a', 'b', 0x7F})},
        {units({0xD83D, 0xDE00}), units({0xD83D, 0xDE00})},
        {units({'a', 0xD83D}), L"a"},
        {units({0xDE00, 0xD83D, 'a'}), L"a"},
        {units({0xFFFD, 0xFFFE, 0xFFFF}), units({0xFFFD})},
    };
    for (const auto& row : table) {
        EXPECT_EQ(xmlText(row.text), row.held);
        EXPECT_EQ(isXmlText(row.text), row.text == row.held);
    }
}

TEST(XmlText, TellsNamesFromWhatWouldBreakTheMarkup) {
    const std::wstring names[] = {L"a", L"_1", L"Pre\u00E7o-2.b\u00B7", L"\u4E2D",
                                  L"a" + units({0xD840, 0xDC00})};
    for (const std::wstring& name : names) EXPECT_TRUE(isXmlName(name));
    const std::wstring others[] = {L"",
                                   L" a",
                                   L"a b",
                                   L"1a",
                                   L"-a",
                                   L".",
                                   L"a:b",
                                   L"a<",
                                   L"a\"",
                                   L"a>b",
                                   L"a=",
                                   L"\u00D7",
                                   L"a/",
                                   L"a\n",
                                   L"a&",
                                   L"a\u2028",
                                   units({'a', 0}),
                                   L"a" + units({0xD840}),
                                   units({0xDC00, 'a'})};
    for (const std::wstring& name : others) EXPECT_FALSE(isXmlName(name)) << name.size();
}

}  // namespace
}  // namespace vela
