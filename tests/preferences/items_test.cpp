#include <filesystem>

#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

class PreferencesItems : public NoObjectsLeft {};

TEST_F(PreferencesItems, EachClassHasItsOwnCaseRules) {
    const struct {
        const SectionKind& kind;
        const wchar_t *publicId, *afterPublic, *afterItem, *empty;
    } table[] = {{kUISection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ", L"@"},
                 {kDPSection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ", L"@"},
                 {kKVSection, L"Key", L" É1 @ VÃO ", L" B Ç@ G Õ", L"@"},
                 {kPPSection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ", L"@"},
                 {kRPSection, L"Id", L"@@0@ VÃO ", L"@@0@ G Õ", L"@@0@"}};
    for (const auto& row : table) {
        SCOPED_TRACE(std::filesystem::path(row.kind.id));
        const auto object = row.kind.createItem();
        ComPtr<_IUPItem> item;
        ASSERT_EQ(object.As(&item), S_OK);
        const auto expectKey = [&](const wchar_t* key) {
            EXPECT_EQ(shown(object.Get(), row.publicId) + L"@" + shown(object.Get(), L"Group"),
                      key);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_Id) + L"@" +
                          textProperty(item.Get(), &_IUPItem::get_Group),
                      key);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_SearchKey), key);
        };
        putProperty(object.Get(), row.publicId, str(L" é1 "));
        putProperty(object.Get(), L"Group", str(L" vãO "));
        expectKey(row.afterPublic);
        item->put_Id(Bstr(L" b ç").get());
        item->put_Group(Bstr(L" g õ").get());
        expectKey(row.afterItem);
        item->put_Id(nullptr);
        item->put_Group(nullptr);
        expectKey(row.empty);
    }
}

}  // namespace
}  // namespace vela::test
