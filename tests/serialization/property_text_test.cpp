#include "serialization/property_text.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(SerializationPropertyText, ListsEntriesAsTheyStand) {
    const struct {
        const wchar_t* list;
        const wchar_t* entries;  // A or E and the name, each followed by a bar
    } table[] = {
        {L"@Code,@Active,/Description", L"ACode|AActive|EDescription|"},
        {L"Name,xName", L"Eame|EName|"},
        {L"", L"E|"},
        {L",@,/,a", L"E|A|E|E|"},
        {L"@a,", L"Aa|E|"},
        {L" @a, /b ,@@c,//d", L"E@a|E/b |A@c|E/d|"},
    };
    for (const auto& row : table) {
        std::wstring entries;
        for (const ListedProperty& listed : listedProperties(row.list)) {
            entries += listed.kind == PropertyKind::Attribute ? L'A' : L'E';
            entries.append(listed.name) += L'|';
        }
        EXPECT_EQ(entries, row.entries);
    }
}

TEST(SerializationPropertyText, ChangesOneLetterOfANameOnly) {
    const struct {
        const wchar_t *declared, *attribute, *other;
    } table[] = {{L"Code", L"code", L"Code"},
                 {L"screenWxH", L"screenWxH", L"ScreenWxH"},
                 {L"\u00C1rea", L"\u00E1rea", L"\u00C1rea"},
                 {L"\u00E7B", L"\u00E7B", L"\u00C7B"},
                 {L"_A", L"_A", L"_A"},
                 {L"", L"", L""}};
    for (const auto& row : table) {
        EXPECT_EQ(outputName(row.declared, PropertyKind::Attribute), row.attribute);
        EXPECT_EQ(outputName(row.declared, PropertyKind::Element), row.other);
    }
}

TEST(SerializationPropertyText, ReadsTheSignOfTheLeadingNumber) {
    const std::pair<std::vector<const wchar_t*>, bool> table[] = {
        {{L"1", L"15/11/2026", L" \t\n7", L"0.5", L"+3", L"0 0 1 ", L".02x"}, true},
        {{L"", L"00:00:00", L"-1", L"a1", L"0-1", L"+-1", L"++1", L"0+1", L"0.0.1"}, false}};
    for (const auto& [texts, above] : table) {
        for (const wchar_t* text : texts) EXPECT_EQ(beginsAboveZero(text), above) << text;
    }
}

TEST(SerializationPropertyText, WritesDatesWithFixedWidths) {
    EXPECT_EQ(dayMonthYear(5, 3, 326), L"05-03-0326");
    EXPECT_EQ(dayMonthYear(31, 12, 9999), L"31-12-9999");
}

}  // namespace
}  // namespace vela
