#include "preferences/DPItem.h"
#include "preferences/KVItem.h"
#include "preferences/PPItem.h"
#include "preferences/RPItem.h"
#include "preferences/UIItem.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

class PreferencesItems : public NoObjectsLeft {};

TEST_F(PreferencesItems, EachClassHasItsOwnCaseRules) {
    struct Row {
        const char* name;
        const SectionKind& kind;
        const wchar_t *publicId, *afterPublic, *afterItem, *groupAfterItem;
    } const table[] = {
        {"UI", kUISection, L"Id", L" É1 ", L" b ç", L" g õ"},
        {"DP", kDPSection, L"Id", L" É1 ", L" b ç", L" g õ"},
        {"KV", kKVSection, L"Key", L" É1 ", L" B Ç", L" G Õ"},
        {"PP", kPPSection, L"Id", L" É1 ", L" b ç", L" g õ"},
        {"RP", kRPSection, L"Id", L"@@0", L"@@0", L" G Õ"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        const auto object = row.kind.createItem();
        ComPtr<_IUPItem> item;
        ASSERT_EQ(object.As(&item), S_OK);
        const auto expectKey = [&](const std::wstring& id, const std::wstring& group) {
            EXPECT_EQ(shown(object.Get(), row.publicId), id);
            EXPECT_EQ(shown(object.Get(), L"Group"), group);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_Id), id);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_Group), group);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_SearchKey), id + L"@" + group);
        };
        putProperty(object.Get(), row.publicId, Variant(std::wstring_view(L" é1 ")));
        putProperty(object.Get(), L"Group", Variant(std::wstring_view(L" vãO ")));
        expectKey(row.afterPublic, L" VÃO ");
        EXPECT_EQ(item->put_Id(Bstr(L" b ç").get()), S_OK);
        EXPECT_EQ(item->put_Group(Bstr(L" g õ").get()), S_OK);
        expectKey(row.afterItem, row.groupAfterItem);
        EXPECT_EQ(item->put_Id(nullptr), S_OK);
        EXPECT_EQ(item->put_Group(nullptr), S_OK);
        expectKey(row.kind.id == std::wstring(L"RP") ? L"@@0" : L"", L"");
    }
}

TEST_F(PreferencesItems, AReportParameterIsItsThreeFields) {
    struct {
        const wchar_t *view, *field;
        SHORT mode;
        const wchar_t* identity;
    } const table[] = {{L"V1", L"Data", 2, L"V1@Data@2"},
                       {L"", L"", 0, L"@@0"},
                       {L"v", L"f", -3, L"v@f@-3"},
                       {L"a@b", L" ", 32767, L"a@b@ @32767"}};
    const auto item = make<RPItem>();
    for (const auto& row : table) {
        EXPECT_EQ(item->put_View(Bstr(row.view).get()), S_OK);
        EXPECT_EQ(item->put_Field(Bstr(row.field).get()), S_OK);
        EXPECT_EQ(item->put_Mode(row.mode), S_OK);
        EXPECT_EQ(shown(asObject(item).Get(), L"Id"), row.identity);
    }
}

TEST_F(PreferencesItems, StartAsDocumented) {
    const auto printer = asObject(make<PPItem>());
    EXPECT_EQ(shown(printer.Get(), L"Copies"), L"1");
    EXPECT_EQ(shown(printer.Get(), L"Orientation"), L"1");
    for (const wchar_t* zero : {L"PaperBin", L"PaperSize"}) {
        EXPECT_EQ(shown(printer.Get(), zero), L"0");
    }
    putProperty(printer.Get(), L"PrinterName", Variant(std::wstring_view(L"hp ação")));
    EXPECT_EQ(shown(printer.Get(), L"PrinterName"), L"HP AÇÃO");
}

}  // namespace
}  // namespace vela::test
