#include "serialization/core/property_text.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(SerializationPropertyText, ChangesOneLetterOfANameOnly) {
    const struct {
        const wchar_t *declared, *attribute, *other;
    } table[] = {{L"screenWxH", L"screenWxH", L"ScreenWxH"},
                 {L"\u00C1REA", L"\u00E1REA", L"\u00C1REA"},
                 {L"_A", L"_A", L"_A"},
                 {L"", L"", L""}};
    for (const auto& row : table) {
        EXPECT_EQ(outputName(row.declared, PropertyKind::Attribute), row.attribute);
        EXPECT_EQ(outputName(row.declared, PropertyKind::Element), row.other);
    }
}

TEST(SerializationPropertyText, ReadsTheSignOfTheLeadingNumber) {
    const std::pair<std::vector<const wchar_t*>, bool> table[] = {
        {{L"15/11/2026", L" \t\n7", L"0.5", L"+3", L"0 0 1 ", L".02x"}, true},
        {{L"", L"00:00:00", L"-1", L"a1", L"+-1", L"0+1", L"0.0.1"}, false}};
    for (const auto& [texts, above] : table) {
        for (const wchar_t* text : texts) EXPECT_EQ(beginsAboveZero(text), above) << text;
    }
}

}  // namespace
}  // namespace vela
