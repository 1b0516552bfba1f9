#include <filesystem>

#include "preferences/PPItem.h"
#include "preferences/RPItem.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

class PreferencesItems : public NoObjectsLeft {};

TEST_F(PreferencesItems, EachClassHasItsOwnCaseRules) {
    struct {
        const SectionKind& kind;
        const wchar_t *publicId, *afterPublic, *afterItem, *groupAfterItem, *empty;
    } const table[] = {{kUISection, L"Id", L" É1 ", L" b ç", L" g õ", L""},
                       {kDPSection, L"Id", L" É1 ", L" b ç", L" g õ", L""},
                       {kKVSection, L"Key", L" É1 ", L" B Ç", L" G Õ", L""},
                       {kPPSection, L"Id", L" É1 ", L" b ç", L" g õ", L""},
                       {kRPSection, L"Id", L"@@0", L"@@0", L" G Õ", L"@@0"}};
    for (const auto& row : table) {
        SCOPED_TRACE(std::filesystem::path(row.kind.id));
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
        putProperty(object.Get(), row.publicId, str(L" é1 "));
        putProperty(object.Get(), L"Group", str(L" vãO "));
        expectKey(row.afterPublic, L" VÃO ");
        item->put_Id(Bstr(L" b ç").get());
        item->put_Group(Bstr(L" g õ").get());
        expectKey(row.afterItem, row.groupAfterItem);
        item->put_Id(nullptr);
        item->put_Group(nullptr);
        expectKey(row.empty, L"");
    }
}

TEST_F(PreferencesItems, AReportParameterIsItsThreeFields) {
    const auto item = make<RPItem>();
    item->put_View(Bstr(L"a@b").get());
    item->put_Field(Bstr(L" ").get());
    item->put_Mode(-3);
    EXPECT_EQ(shown(asObject(item).Get(), L"Id"), L"a@b@ @-3");
}

TEST_F(PreferencesItems, PrintersStartWithOneCopyAndAreUpperCased) {
    const auto printer = asObject(make<PPItem>());
    putProperty(printer.Get(), L"PrinterName", str(L"hp ação"));
    const struct {
        const wchar_t *property, *value;
    } table[] = {{L"Copies", L"1"},
                 {L"Orientation", L"1"},
                 {L"PaperBin", L"0"},
                 {L"PaperSize", L"0"},
                 {L"PrinterName", L"HP AÇÃO"}};
    for (const auto& row : table) EXPECT_EQ(shown(printer.Get(), row.property), row.value);
}

}  // namespace
}  // namespace vela::test
