// What is handed out for a for-each over a collection.
#include "automation/enumerator.h"

#include "frame/Collection.h"
#include "support/support.h"

namespace vela {
namespace {

class AutomationEnumerator : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        collection_ = make<Collection>();
        for (const wchar_t* key : {L"a", L"b", L"c", L"d"})
            collection_->entries().add(Variant(key));
        ComPtr<IUnknown> unknown;
        EXPECT_EQ(collection_->get_NewEnum(&unknown), S_OK);
        ASSERT_EQ(unknown.As(&elements_), S_OK);
    }
    // What is left to walk, at most so many.
    static std::wstring rest(IUnknown* elements, std::size_t most = 9) {
        std::wstring all;
        eachVariant(elements, [&](const Variant& element) {
            all += textOf(element);
            return all.size() < most;
        });
        return all;
    }
    ComPtr<Collection> collection_;
    ComPtr<IEnumVARIANT> elements_;
};

TEST_F(AutomationEnumerator, HandsOutSeveralAtOnceAndCountsThem) {
    Variant values[3];
    Variant last[3];
    ULONG fetched = 9;
    EXPECT_EQ(elements_->Next(3, values, &fetched), S_OK);
    EXPECT_EQ(fetched, 3u);
    EXPECT_EQ(textOf(values[2]), L"c");
    EXPECT_EQ(elements_->Next(3, last, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1u);
    EXPECT_EQ(last[1].vt, VT_EMPTY);
    EXPECT_EQ(elements_->Next(0, nullptr, nullptr), S_OK);
    EXPECT_EQ(elements_->Next(1, nullptr, nullptr), E_POINTER);
}

TEST_F(AutomationEnumerator, SkipsStartsAgainBranchesOffAndOutlivesTheCallersHold) {
    EXPECT_EQ(rest(elements_.Get(), 2), L"ab");
    ComPtr<IEnumVARIANT> branch;
    EXPECT_EQ(elements_->Clone(&branch), S_OK);
    collection_.Reset();
    EXPECT_EQ(rest(elements_.Get()), L"cd");
    EXPECT_EQ(rest(branch.Get()), L"cd");
    EXPECT_EQ(branch->Reset(), S_OK);
    EXPECT_EQ(branch->Skip(4), S_OK);
    EXPECT_EQ(branch->Skip(1), S_FALSE);
    EXPECT_EQ(elements_->Reset(), S_OK);
    EXPECT_EQ(rest(elements_.Get()), L"abcd");
}

TEST_F(AutomationEnumerator, RefusesWhatCannotBeWalked) {
    EXPECT_THROW(rest(nullptr), Error);
    EXPECT_THROW(rest(static_cast<_Collection*>(collection_.Get())), Error);
}

}  // namespace
}  // namespace vela
