// What is handed out for a for-each over a collection.
#include "automation/enumerator.h"

#include "automation/error.h"

#include "collections/Collection.h"
#include "support/support.h"

namespace vela {
namespace {

using AutomationEnumerator = test::NoObjectsLeft;

std::wstring rest(const ComPtr<IEnumVARIANT>& elements) {
    std::wstring all;
    eachVariant(elements.Get(),
                [&](const Variant& element) { return all += textOf(element), true; });
    return all;
}

TEST_F(AutomationEnumerator, HandsOutSeveralAtOnceSkipsStartsAgainAndBranchesOff) {
    auto collection = make<Collection>();
    for (const wchar_t* key : {L"a", L"b", L"c", L"d"}) collection->entries().add(Variant(key));
    ComPtr<IUnknown> unknown;
    ComPtr<IEnumVARIANT> elements;
    ComPtr<IEnumVARIANT> branch;
    EXPECT_EQ(collection->get_NewEnum(&unknown), S_OK);
    ASSERT_EQ(unknown.As(&elements), S_OK);
    collection.Reset();
    EXPECT_EQ(elements->Skip(2), S_OK);
    EXPECT_EQ(elements->Clone(&branch), S_OK);
    Variant values[3];
    ULONG fetched = 9;
    EXPECT_EQ(elements->Next(3, values, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(textOf(values[1]), L"d");
    EXPECT_EQ(elements->Next(1, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(rest(branch), L"cd");
    EXPECT_EQ(branch->Reset(), S_OK);
    EXPECT_EQ(rest(branch), L"abcd");
    EXPECT_EQ(branch->Skip(1), S_FALSE);
}

// Fails at its third value.
class Failing : public VariantSource {
  public:
    bool next(VARIANT* value) override {
        if (++count_ == 3) raise(RuntimeError::Overflow);
        return store(value, Variant(L"text")), true;
    }
    void reset() override {}
    std::unique_ptr<VariantSource> clone() const override {
        return std::make_unique<Failing>(*this);
    }

  private:
    int count_ = 0;
};

TEST_F(AutomationEnumerator, HandsOutNothingWhenItFails) {
    ComPtr<IEnumVARIANT> elements;
    ASSERT_EQ(makeEnumerator(std::make_unique<Failing>()).As(&elements), S_OK);
    VARIANT values[4] = {};
    ULONG fetched = 9;
    EXPECT_EQ(elements->Next(4, values, &fetched), static_cast<HRESULT>(0x800A0006));
    EXPECT_EQ(fetched, 0u);
    for (const VARIANT& value : values) EXPECT_EQ(value.vt, VT_EMPTY);
}

}  // namespace
}  // namespace vela
