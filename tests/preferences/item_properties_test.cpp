#include "preferences/item_properties.h"

#include "automation/late_objects.h"

namespace vela::test {
namespace {

// What a property of that type is given for the text of a document: as its kind, ':' and its text.
std::wstring given(VARTYPE type, const wchar_t* stored) {
    Variant taken;
    const auto item = adopted(new LateObject);
    item->invoked = [&](DISPID, WORD, DISPPARAMS& call, VARIANT*, EXCEPINFO*) {
        taken = Variant(call.rgvarg[0]);
        return S_OK;
    };
    EXPECT_TRUE(assignStored(item.Get(), 0, type, stored));
    const std::wstring value =
        taken.vt == VT_DATE ? std::to_wstring(static_cast<long>(taken.date)) : textOf(taken);
    return std::to_wstring(taken.vt) + L":" + value;
}

TEST(PreferencesItemProperties, DatesAreHandedOverAsDates) {
    // Whatever the user's locale takes for the month.
    EXPECT_EQ(given(VT_DATE, L"03-04-2024"), L"7:45385");
    EXPECT_EQ(given(VT_DATE, L"30-12-1899"), L"7:0");
    EXPECT_EQ(given(VT_DATE, L"01-01-0100"), L"7:-657434");
    for (const wchar_t* text : {L"", L"31-02-2024", L"3-4-2024", L"03-04-24", L"03/04/2024"}) {
        EXPECT_EQ(given(VT_DATE, text), std::wstring(L"8:") + text);
    }
    EXPECT_EQ(given(VT_BSTR, L"03-04-2024"), L"8:03-04-2024");
}

TEST(PreferencesItemProperties, NumbersAreHandedOverAsNumbers) {
    for (const VARTYPE type : {VT_I2, VT_I4, VT_INT, VT_USERDEFINED}) {
        EXPECT_EQ(given(type, L"-12"), L"3:-12");
        EXPECT_EQ(given(type, L"007"), L"3:7");
        for (const wchar_t* text : {L"", L"-", L"1,5", L"12 ", L"1234567890"}) {
            EXPECT_EQ(given(type, text), std::wstring(L"8:") + text);
        }
    }
    EXPECT_EQ(given(VT_R8, L"12"), L"8:12");
}

}  // namespace
}  // namespace vela::test
