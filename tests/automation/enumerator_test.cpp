// For-each over a collection, also one that changes meanwhile.
#include "automation/enumerator.h"

#include "frame/Collection.h"
#include "support/support.h"

namespace vela {
namespace {

class AutomationEnumerator : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        for (const wchar_t* key : {L"a", L"b", L"c", L"d"})
            collection_->entries().add(Variant(key), key);
    }
    void TearDown() override {
        collection_.Reset();
        NoObjectsLeft::TearDown();
    }
    ComPtr<IEnumVARIANT> enumerator() {
        ComPtr<IUnknown> unknown;
        ComPtr<IEnumVARIANT> elements;
        EXPECT_EQ(collection_->get_NewEnum(&unknown), S_OK);
        EXPECT_EQ(unknown.As(&elements), S_OK);
        return elements;
    }
    // What is left to walk, removing each element on the way where told.
    std::wstring rest(IUnknown* elements, bool removing = false, std::size_t most = 9) {
        std::wstring all;
        eachVariant(elements, [&](const Variant& element) {
            all += textOf(element);
            if (removing) collection_->entries().remove(textOf(element));
            return all.size() < most;
        });
        return all;
    }
    ComPtr<Collection> collection_ = make<Collection>();
};

TEST_F(AutomationEnumerator, HandsOutSeveralAtOnceAndCountsThem) {
    const auto elements = enumerator();
    Variant values[3];
    ULONG fetched = 9;
    EXPECT_EQ(elements->Next(3, values, &fetched), S_OK);
    EXPECT_EQ(fetched, 3u);
    EXPECT_EQ(textOf(values[2]), L"c");
    for (Variant& value : values) value = Variant();
    EXPECT_EQ(elements->Next(3, values, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(values[1].vt, VT_EMPTY);
    EXPECT_EQ(elements->Next(0, nullptr, nullptr), S_OK);
    EXPECT_EQ(elements->Next(1, nullptr, nullptr), E_POINTER);
}

TEST_F(AutomationEnumerator, SkipsStartsAgainBranchesOffAndOutlivesTheCallersHold) {
    const auto elements = enumerator();
    EXPECT_EQ(rest(elements.Get(), false, 2), L"ab");
    ComPtr<IEnumVARIANT> branch;
    EXPECT_EQ(elements->Clone(&branch), S_OK);
    collection_.Reset();
    EXPECT_EQ(rest(elements.Get()), L"cd");
    EXPECT_EQ(rest(branch.Get()), L"cd");
    EXPECT_EQ(branch->Reset(), S_OK);
    EXPECT_EQ(branch->Skip(4), S_OK);
    EXPECT_EQ(branch->Skip(1), S_FALSE);
    EXPECT_EQ(elements->Reset(), S_OK);
    EXPECT_EQ(rest(elements.Get()), L"abcd");
}

TEST_F(AutomationEnumerator, VisitsEachRemainingElementOnceWhateverChanges) {
    const auto elements = enumerator();
    ASSERT_EQ(elements->Skip(2), S_OK);
    // Two that were visited, and the next.
    for (const wchar_t* key : {L"a", L"b", L"c"}) collection_->entries().remove(key);
    collection_->entries().add(Variant(L"e"), L"e");
    EXPECT_EQ(rest(elements.Get()), L"de");
    EXPECT_EQ(rest(enumerator().Get(), true), L"de");
    EXPECT_EQ(collection_->entries().size(), 0u);
}

TEST_F(AutomationEnumerator, RefusesWhatCannotBeWalked) {
    EXPECT_THROW(rest(nullptr), Error);
    EXPECT_THROW(rest(static_cast<_Collection*>(collection_.Get())), Error);
}

}  // namespace
}  // namespace vela
