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
    // What is left to walk, from where the enumerator stands.
    static std::wstring rest(IEnumVARIANT* elements) {
        std::wstring all;
        eachVariant(elements, [&](const Variant& element) {
            all += textOf(element);
            return true;
        });
        return all;
    }
    void remove(const wchar_t* key) { collection_->entries().remove(key); }

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
    EXPECT_EQ(elements->Next(1, values, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(elements->Next(0, nullptr, nullptr), S_OK);
    EXPECT_EQ(elements->Next(1, nullptr, nullptr), E_POINTER);
}

TEST_F(AutomationEnumerator, SkipsStartsAgainAndBranchesOff) {
    const auto elements = enumerator();
    EXPECT_EQ(elements->Skip(2), S_OK);
    ComPtr<IEnumVARIANT> branch;
    EXPECT_EQ(elements->Clone(&branch), S_OK);
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
    remove(L"a");  // visited
    remove(L"b");  // the last one visited
    remove(L"c");  // the next
    collection_->entries().add(Variant(L"e"), L"e");
    EXPECT_EQ(rest(elements.Get()), L"de");

    std::wstring emptied;
    eachVariant(enumerator().Get(), [&](const Variant& element) {
        emptied += textOf(element);
        remove(emptied.substr(emptied.size() - 1).c_str());
        return true;
    });
    EXPECT_EQ(emptied, L"de");
    EXPECT_EQ(collection_->entries().size(), 0u);
}

TEST_F(AutomationEnumerator, OutlivesTheCallersHoldOnTheCollection) {
    const auto elements = enumerator();
    collection_.Reset();
    EXPECT_EQ(rest(elements.Get()), L"abcd");
}

TEST_F(AutomationEnumerator, StopsWhenToldAndRefusesWhatCannotBeWalked) {
    int visited = 0;
    eachVariant(enumerator().Get(), [&](const Variant&) { return ++visited < 2; });
    EXPECT_EQ(visited, 2);
    EXPECT_THROW(eachVariant(nullptr, [](const Variant&) { return true; }), Error);
    EXPECT_THROW(eachVariant(static_cast<_Collection*>(collection_.Get()),
                             [](const Variant&) { return true; }),
                 Error);
}

}  // namespace
}  // namespace vela
