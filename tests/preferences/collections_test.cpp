#include "preferences/KVItem.h"
#include "preferences/UPSections.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr HRESULT kTaken = static_cast<HRESULT>(0x800A0000 | 457);
constexpr HRESULT kMismatch = static_cast<HRESULT>(0x800A0000 | 13);

class PreferencesCollections : public NoObjectsLeft {
  protected:
    static bool saved(_IUPSection* section) {
        VARIANT_BOOL saved = VARIANT_FALSE;
        EXPECT_EQ(section->get_Saved(&saved), S_OK);
        return isTrue(saved);
    }
    static ComPtr<IDispatch> find(_IUPSection* section, const wchar_t* id, const wchar_t* group) {
        ComPtr<IDispatch> found;
        EXPECT_EQ(itemsOf(section)->get_Item(Bstr(id).get(), Bstr(group).get(), &found), S_OK);
        return found;
    }
    static ComPtr<_IUPSection> at(_UPSections* sections, const Variant& index) {
        ComPtr<_IUPSection> found;
        EXPECT_EQ(sections->get_section(index, &found), S_OK);
        return found;
    }
    static void add(_UPSections* sections, ComPtr<_IUPSection> section) {
        EXPECT_EQ(sections->Add(section.GetAddressOf()), S_OK);
    }
    static short countOf(_UPSections* sections) {
        short count = -1;
        EXPECT_EQ(sections->get_Count(&count), S_OK);
        return count;
    }
};

TEST_F(PreferencesCollections, FindsItemsTrimmedInAnyCase) {
    const auto section = sectionWith(kUISection, L"MAIN", L"FORMS");
    EXPECT_TRUE(find(section.Get(), L" main ", L"  Forms"));
    EXPECT_FALSE(find(section.Get(), L"main\t", L"forms"));
    EXPECT_FALSE(find(section.Get(), L"main", L""));
    EXPECT_FALSE(find(section.Get(), L"", L""));
}

TEST_F(PreferencesCollections, AnAddedItemReplacesAndGoesToTheEnd) {
    const auto section = sectionWith(kKVSection, L"a", L"g", {{L"Value", L"1"}});
    EXPECT_EQ(addItem(section.Get(), L"b", L"g", {{L"Value", L"2"}}), S_OK);
    EXPECT_EQ(addItem(section.Get(), L"A", L"G", {{L"Value", L"3"}}), S_OK);
    EXPECT_EQ(contents(section.Get()), (Lines{L"B@G=2", L"A@G=3"}));
    // Without arguments the item's own identity stands.
    EXPECT_EQ(
        addItem(section.Get(), L"", L"", {{L"Key", L"b"}, {L"Group", L"g"}, {L"Value", L"4"}}),
        S_OK);
    EXPECT_EQ(contents(section.Get()), (Lines{L"A@G=3", L"B@G=4"}));
}

TEST_F(PreferencesCollections, AKeyWithBlanksIsNotFoundAndCollides) {
    const auto section = sectionWith(kUISection, L"a ", L"G", {{L"Tag", L"first"}});
    EXPECT_FALSE(find(section.Get(), L"a ", L"G"));
    section->put_Saved(VARIANT_TRUE);
    EXPECT_EQ(addItem(section.Get(), L"A ", L"g", {{L"Tag", L"second"}}), kTaken);
    EXPECT_EQ(contents(section.Get(), {L"Tag"}), Lines{L"a @G=first"});
    EXPECT_TRUE(saved(section.Get()));
}

TEST_F(PreferencesCollections, OnlyAddAndRemoveMarkTheSection) {
    const auto section = sectionWith(kKVSection, L"a", L"g");
    EXPECT_FALSE(saved(section.Get()));
    const auto items = itemsOf(section.Get());
    section->put_Saved(VARIANT_TRUE);
    EXPECT_EQ(items->Clear(), S_OK);
    EXPECT_TRUE(saved(section.Get()));
    EXPECT_EQ(contents(section.Get()), Lines{});
    EXPECT_EQ(items->Remove(Bstr(L"none").get(), nullptr), S_OK);
    EXPECT_FALSE(saved(section.Get()));
}

TEST_F(PreferencesCollections, RefuseWhatIsNoItem) {
    const auto items = make<UPItems>();
    ComPtr<IDispatch> nothing, noItem = asObject(make<UPItems>());
    EXPECT_EQ(items->Add(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(items->Add(nothing.GetAddressOf(), nullptr, nullptr), kMismatch);
    EXPECT_TRUE(FAILED(items->Add(noItem.GetAddressOf(), Bstr(L"a").get(), nullptr)));
    // A script's object that has the members is an item.
    auto script = asObject(scriptObject({{L"Id", Variant(std::wstring_view(L"x"))},
                                         {L"Group", Variant(std::wstring_view(L""))},
                                         {L"SearchKey", Variant(std::wstring_view(L"x@G"))}}));
    EXPECT_EQ(items->Add(script.GetAddressOf(), nullptr, Bstr(L"G").get()), S_OK);
    EXPECT_EQ(items->find(L"x", L"g").Get(), script.Get());
}

TEST_F(PreferencesCollections, ItemsMayOutliveTheirSection) {
    auto section = sectionWith(kKVSection, L"a", L"g");
    const auto items = itemsOf(section.Get());
    section.Reset();
    EXPECT_EQ(items->Remove(Bstr(L"a").get(), Bstr(L"g").get()), S_OK);
}

TEST_F(PreferencesCollections, SectionsAreTheirConstants) {
    struct {
        const SectionKind& kind;
        const wchar_t *id, *description, *properties, *lastField;
    } const table[] = {
        {kPPSection, L"PP", L"Printer Preferences",
         L"[printername][paperbin][papersize][orientation][copies]", L"PrinterName"},
        {kUISection, L"UI", L"User Interface",
         L"[screenwxh][width][height][left][top][windowstate][tag]", L"Tag"},
        {kDPSection, L"DP", L"Default Path", L"[path][file][ext]", L"Ext"},
        {kKVSection, L"KV", L"Key Value", L"[key][value]", L"Value"},
        {kRPSection, L"RP", L"Report Parameters", L"[view][field][mode][value]", L"View"},
    };
    for (const auto& row : table) {
        const auto section = makeSection(row.kind);
        EXPECT_EQ(section->put_Id(Bstr(L"x").get()), S_OK);
        EXPECT_EQ(section->put_Description(Bstr(L"x").get()), S_OK);
        EXPECT_EQ(textProperty(section.Get(), &_IUPSection::get_Id), row.id);
        EXPECT_EQ(textProperty(section.Get(), &_IUPSection::get_Description), row.description);
        EXPECT_EQ(textProperty(section.Get(), &_IUPSection::get_Properties), row.properties);
        EXPECT_TRUE(saved(section.Get()));
        EXPECT_EQ(contents(section.Get()), Lines{});
        EXPECT_EQ(itemsOf(section.Get()).Get(), itemsOf(section.Get()).Get());
        ComPtr<IDispatch> item;
        ASSERT_EQ(section->CreateItem(&item), S_OK);
        EXPECT_EQ(shown(item.Get(), row.lastField), L"");
    }
}

TEST_F(PreferencesCollections, SectionsAreFoundByIdThenByPosition) {
    const auto sections = make<UPSections>();
    const auto values = makeSection(kKVSection), paths = makeSection(kDPSection);
    add(sections.Get(), values);
    add(sections.Get(), paths);
    EXPECT_EQ(at(sections.Get(), Variant(std::wstring_view(L" kv "))).Get(), values.Get());
    EXPECT_EQ(at(sections.Get(), Variant(2L)).Get(), paths.Get());
    for (long position : {0L, -1L, 3L}) EXPECT_FALSE(at(sections.Get(), Variant(position)));
    EXPECT_FALSE(at(sections.Get(), Variant(std::wstring_view(L"UI"))));
    EXPECT_FALSE(at(sections.Get(), Variant()));
    EXPECT_FALSE(at(sections.Get(), Variant(asObject(values).Get())));

    const auto newer = makeSection(kKVSection);
    add(sections.Get(), newer);
    EXPECT_EQ(countOf(sections.Get()), 2);
    EXPECT_EQ(at(sections.Get(), Variant(1L)).Get(), paths.Get());
    EXPECT_EQ(at(sections.Get(), Variant(2L)).Get(), newer.Get());
    ComPtr<_IUPSection> nothing;
    EXPECT_EQ(sections->Add(nothing.GetAddressOf()), S_OK);
    EXPECT_EQ(sections->Remove(Variant(std::wstring_view(L"none"))), S_OK);
    EXPECT_EQ(sections->Remove(Variant(1L)), S_OK);
    EXPECT_EQ(countOf(sections.Get()), 1);
    EXPECT_EQ(at(sections.Get(), Variant(1L)).Get(), newer.Get());
}

class ForeignSection final : public SectionMembers<ForeignSection, _IUPSection> {
    using SectionMembers::SectionMembers;
};

TEST_F(PreferencesCollections, ASectionOfTheCallersOwnIsMarkedAndReleased) {
    const auto sections = make<UPSections>();
    const ComPtr<_IUPSection> section = make<ForeignSection>(kKVSection);
    add(sections.Get(), section);
    EXPECT_EQ(addItem(section.Get(), L"a", L"g"), S_OK);
    EXPECT_FALSE(saved(section.Get()));
}

}  // namespace
}  // namespace vela::test
