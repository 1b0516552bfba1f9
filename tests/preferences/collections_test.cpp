#include <filesystem>

#include "preferences/UPSections.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

class PreferencesCollections : public NoObjectsLeft {
  protected:
    static bool saved(const ComPtr<_IUPSection>& section) {
        return yes(section.Get(), &_IUPSection::get_Saved);
    }
    static bool has(const ComPtr<_IUPSection>& section, const wchar_t* id, const wchar_t* group) {
        return got<ComPtr<IDispatch>>(itemsOf(section.Get()).Get(), &_UPItems::get_Item,
                                      Bstr(id).get(), Bstr(group).get()) != nullptr;
    }
};

TEST_F(PreferencesCollections, EachClassOfItemHasItsOwnCaseRules) {
    const struct {
        const SectionKind& kind;
        const wchar_t *publicId, *afterPublic, *afterItem;
    } table[] = {{kUISection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ"},
                 {kDPSection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ"},
                 {kKVSection, L"Key", L" É1 @ VÃO ", L" B Ç@ G Õ"},
                 {kPPSection, L"Id", L" É1 @ VÃO ", L" b ç@ g õ"},
                 {kRPSection, L"Id", L"@@0@ VÃO ", L"@@0@ G Õ"}};
    for (const auto& row : table) {
        SCOPED_TRACE(std::filesystem::path(row.kind.id));
        const auto object = row.kind.createItem();
        ComPtr<_IUPItem> item;
        ASSERT_EQ(object.As(&item), S_OK);
        const auto expectKey = [&](const std::wstring& key) {
            const std::wstring id = shown(object.Get(), row.publicId);
            EXPECT_EQ(id + L"@" + shown(object.Get(), L"Group"), key);
            EXPECT_EQ(textProperty(item.Get(), &_IUPItem::get_SearchKey), key);
        };
        putProperty(object.Get(), row.publicId, str(L" é1 "));
        putProperty(object.Get(), L"Group", str(L" vãO "));
        expectKey(row.afterPublic);
        item->put_Id(Bstr(L" b ç").get());
        item->put_Group(Bstr(L" g õ").get());
        expectKey(row.afterItem);
    }
}

TEST_F(PreferencesCollections, AnAddedItemReplacesAndGoesToTheEnd) {
    const auto section = sectionWith(kKVSection, L"a", L"g", {{L"Value", L"1"}});
    EXPECT_TRUE(has(section, L" a ", L"  g"));
    EXPECT_FALSE(has(section, L"a", L""));
    EXPECT_EQ(addItem(section.Get(), L"b", L"g", {{L"Value", L"2"}}), S_OK);
    EXPECT_EQ(addItem(section.Get(), L"A", L"G", {{L"Value", L"3"}}), S_OK);
    EXPECT_EQ(contents(section.Get()), L"B@G=2 A@G=3 ");
    // Without arguments the item's own identity stands.
    const Fields own{{L"Key", L"b"}, {L"Group", L"g"}, {L"Value", L"4"}};
    EXPECT_EQ(addItem(section.Get(), L"", L"", own), S_OK);
    EXPECT_EQ(contents(section.Get()), L"A@G=3 B@G=4 ");
}

TEST_F(PreferencesCollections, RefuseWhatTheyCannotKeep) {
    const auto section = sectionWith(kUISection, L"a ", L"G", {{L"Tag", L"first"}});
    const auto items = itemsOf(section.Get());
    EXPECT_FALSE(has(section, L"a ", L"G"));  // an identity with blanks
    section->put_Saved(VARIANT_TRUE);
    EXPECT_EQ(addItem(section.Get(), L"A ", L"g", {{L"Tag", L"second"}}), HRESULT(0x800A01C9));
    ComPtr<IDispatch> nothing, noItem = asObject(items);
    EXPECT_EQ(items->Add(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(items->Add(nothing.GetAddressOf(), nullptr, nullptr), HRESULT(0x800A000D));
    EXPECT_TRUE(FAILED(items->Add(noItem.GetAddressOf(), Bstr(L"a").get(), nullptr)));
    EXPECT_EQ(contents(section.Get(), L"Tag"), L"a @G=first ");
    EXPECT_TRUE(saved(section));
}

TEST_F(PreferencesCollections, OnlyAddAndRemoveMarkTheSection) {
    auto section = sectionWith(kKVSection, L"a", L"g");
    EXPECT_FALSE(saved(section));
    const auto items = itemsOf(section.Get());
    section->put_Saved(VARIANT_TRUE);
    EXPECT_EQ(items->Clear(), S_OK);
    EXPECT_TRUE(saved(section));
    EXPECT_EQ(contents(section.Get()), L"");
    EXPECT_EQ(items->Remove(Bstr(L"none").get(), nullptr), S_OK);
    EXPECT_FALSE(saved(section));
    section.Reset();  // which its items may outlive
    EXPECT_EQ(items->Remove(Bstr(L"a").get(), Bstr(L"g").get()), S_OK);
}

TEST_F(PreferencesCollections, NeverGiveAWrongSixteenBitCount) {
    const auto section = makeSection(kDPSection);
    const auto count = [&] { return call(itemsOf(section.Get()).Get(), L"Count"); };
    for (int i = 1; i <= 32767; ++i) addItem(section.Get(), std::to_wstring(i), L"");
    EXPECT_EQ(textOf(count().result), L"32767");
    addItem(section.Get(), L"one more", L"");
    EXPECT_EQ(count().error, HRESULT(0x800A0006));
}

class ForeignSection final : public SectionMembers<ForeignSection, _IUPSection> {
    using SectionMembers::SectionMembers;
};

TEST_F(PreferencesCollections, SectionsAreFoundByIdThenByPosition) {
    const auto sections = make<UPSections>();
    const auto at = [&](const Variant& index) {
        return got<ComPtr<_IUPSection>>(sections.Get(), &_UPSections::get_section, index);
    };
    const ComPtr<_IUPSection> values = makeSection(kKVSection), paths = makeSection(kDPSection);
    ComPtr<_IUPSection> newer = make<ForeignSection>(kKVSection);
    for (ComPtr<_IUPSection> section : {values, paths}) sections->Add(section.GetAddressOf());
    EXPECT_EQ(at(str(L" kv ")).Get(), values.Get());
    EXPECT_EQ(at(Variant(2L)).Get(), paths.Get());
    for (const Variant& index : {Variant(0L), Variant(-1L), Variant(3L), str(L"UI"), Variant(),
                                 Variant(asObject(values).Get())}) {
        EXPECT_FALSE(at(index)) << index.vt;
    }
    // A section of the caller's own takes another's place; it is marked, too, and released.
    sections->Add(newer.GetAddressOf());
    EXPECT_EQ(at(Variant(2L)).Get(), newer.Get());
    EXPECT_EQ(addItem(newer.Get(), L"a", L"g"), S_OK);
    EXPECT_FALSE(saved(newer));
    for (const Variant& index : {str(L"none"), Variant(1L)}) sections->Remove(index);
    EXPECT_EQ(at(Variant(1L)).Get(), newer.Get());
}

}  // namespace
}  // namespace vela::test
