#include "automation/late_bound.h"
#include "preferences/UPSections.h"
#include "preferences/preferences_support.h"

namespace vela::test {
namespace {

constexpr HRESULT kTaken = static_cast<HRESULT>(0x800A0000 | 457);
constexpr HRESULT kMismatch = static_cast<HRESULT>(0x800A0000 | 13);

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

TEST_F(PreferencesCollections, AnAddedItemReplacesAndGoesToTheEnd) {
    const auto section = sectionWith(kKVSection, L"a", L"g", {{L"Value", L"1"}});
    EXPECT_TRUE(has(section, L" a ", L"  g"));
    EXPECT_FALSE(has(section, L"a\t", L"g"));
    EXPECT_FALSE(has(section, L"a", L""));
    EXPECT_EQ(addItem(section.Get(), L"b", L"g", {{L"Value", L"2"}}), S_OK);
    EXPECT_EQ(addItem(section.Get(), L"A", L"G", {{L"Value", L"3"}}), S_OK);
    EXPECT_EQ(contents(section.Get()), L"B@G=2 A@G=3 ");
    // Without arguments the item's own identity stands.
    const Fields own{{L"Key", L"b"}, {L"Group", L"g"}, {L"Value", L"4"}};
    EXPECT_EQ(addItem(section.Get(), L"", L"", own), S_OK);
    EXPECT_EQ(contents(section.Get()), L"A@G=3 B@G=4 ");
}

TEST_F(PreferencesCollections, AKeyWithBlanksIsNotFoundAndCollides) {
    const auto section = sectionWith(kUISection, L"a ", L"G", {{L"Tag", L"first"}});
    EXPECT_FALSE(has(section, L"a ", L"G"));
    section->put_Saved(VARIANT_TRUE);
    EXPECT_EQ(addItem(section.Get(), L"A ", L"g", {{L"Tag", L"second"}}), kTaken);
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

TEST_F(PreferencesCollections, TakeAnyObjectThatHasTheMembersOfAnItem) {
    const auto items = make<UPItems>();
    ComPtr<IDispatch> nothing, noItem = asObject(items);
    EXPECT_EQ(items->Add(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(items->Add(nothing.GetAddressOf(), nullptr, nullptr), kMismatch);
    EXPECT_TRUE(FAILED(items->Add(noItem.GetAddressOf(), Bstr(L"a").get(), nullptr)));
    const auto item = adopted(new LateObject);
    item->names = {L"Id", L"Group", L"SearchKey"};
    item->invoked = [](DISPID, WORD, DISPPARAMS&, VARIANT* result, EXCEPINFO*) {
        if (result) *result = Variant(L"x@G").release();
        return S_OK;
    };
    ComPtr<IDispatch> object = item;
    EXPECT_EQ(items->Add(object.GetAddressOf(), nullptr, Bstr(L"G").get()), S_OK);
    EXPECT_EQ(items->find(L"x", L"g").Get(), object.Get());
}

class ForeignSection final : public SectionMembers<ForeignSection, _IUPSection> {
    using SectionMembers::SectionMembers;
};

TEST_F(PreferencesCollections, SectionsAreFoundByIdThenByPosition) {
    const auto sections = make<UPSections>();
    const auto at = [&](const Variant& index) {
        return got<ComPtr<_IUPSection>>(sections.Get(), &_UPSections::get_section, index);
    };
    const ComPtr<_IUPSection> values = makeSection(kKVSection), paths = makeSection(kDPSection),
                              newer = make<ForeignSection>(kKVSection);
    for (ComPtr<_IUPSection> section : {values, paths}) sections->Add(section.GetAddressOf());
    EXPECT_TRUE(saved(values));
    EXPECT_EQ(values->put_Id(Bstr(L"x").get()), S_OK);  // without effect
    EXPECT_EQ(at(str(L" kv ")).Get(), values.Get());
    EXPECT_EQ(at(Variant(2L)).Get(), paths.Get());
    for (const Variant& index : {Variant(0L), Variant(-1L), Variant(3L), str(L"UI"), Variant(),
                                 Variant(asObject(values).Get())}) {
        EXPECT_FALSE(at(index)) << index.vt;
    }
    for (ComPtr<_IUPSection> section : {newer, {}}) sections->Add(section.GetAddressOf());
    EXPECT_EQ(got<short>(sections.Get(), &_UPSections::get_Count), 2);
    EXPECT_EQ(at(Variant(2L)).Get(), newer.Get());
    // A section of the caller's own is marked, too, and released in the end.
    EXPECT_EQ(addItem(newer.Get(), L"a", L"g"), S_OK);
    EXPECT_FALSE(saved(newer));
    EXPECT_EQ(sections->Remove(str(L"none")), S_OK);
    EXPECT_EQ(sections->Remove(Variant(1L)), S_OK);
    EXPECT_EQ(got<short>(sections.Get(), &_UPSections::get_Count), 1);
    EXPECT_EQ(at(Variant(1L)).Get(), newer.Get());
}

}  // namespace
}  // namespace vela::test
