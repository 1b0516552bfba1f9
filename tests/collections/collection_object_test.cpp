// Collection as scripts use it.
#include "collections/Collection.h"

#include "automation/enumerator.h"
#include "automation/late_objects.h"

namespace vela {
namespace {

constexpr HRESULT runtime(int number) { return static_cast<HRESULT>(0x800A0000u | number); }

class CollectionsCollection : public test::NoObjectsLeft {
  protected:
    test::Called call(const wchar_t* name, const std::vector<Variant>& arguments = {}) {
        return test::callWith(collection_.Get(), name, arguments);
    }
    // Every item in order, as For-each sees them.
    std::wstring all() {
        std::wstring joined;
        eachVariant(call(L"NewEnum").result.punkVal, [&](const Variant& value) {
            joined += textOf(value);
            return true;
        });
        return joined;
    }
    ComPtr<_Collection> collection_ = make<Collection>();
    const Variant missing_ = Variant::missing();
};

TEST_F(CollectionsCollection, PlacesItemsWhereTold) {
    const struct {
        std::vector<Variant> arguments;
        const wchar_t* after;
    } steps[] = {
        {{Variant(L"m"), Variant(L"Meio")}, L"m"},
        {{Variant(L"z")}, L"mz"},
        {{Variant(L"a"), missing_, Variant(1L)}, L"amz"},
        {{Variant(L"l"), Variant(L""), Variant(L"MEIO")}, L"almz"},
        {{Variant(L"n"), missing_, missing_, Variant(L"meio")}, L"almnz"},
        {{Variant(L"!"), missing_, missing_, Variant(5L)}, L"almnz!"},
    };
    for (const auto& [arguments, after] : steps) {
        EXPECT_EQ(call(L"Add", arguments).outcome, S_OK);
        EXPECT_EQ(all(), after);
    }
    EXPECT_EQ(call(L"Remove", {Variant(L"meIO")}).outcome, S_OK);
    EXPECT_EQ(call(L"Remove", {Variant(1L)}).outcome, S_OK);
    EXPECT_EQ(all(), L"lnz!");
    EXPECT_EQ(textOf(call(L"Item", {Variant(L"")}).result), L"l");
    EXPECT_EQ(textOf(call(L"Item", {Variant(test::arg(2.0))}).result), L"n");
}

TEST_F(CollectionsCollection, RaisesTheUsualErrorsAndThenHoldsWhatItHeld) {
    call(L"Add", {Variant(L"a"), Variant(L"acção")});
    call(L"Add", {Variant(L"b")});
    Variant null;
    null.vt = VT_NULL;
    const Variant x(L"x");
    const struct {
        const wchar_t* member;
        std::vector<Variant> arguments;
        int error;
    } cases[] = {
        {L"Item", {Variant(L"c")}, 5},
        {L"Item", {Variant(L"1")}, 5},  // a text is a key, never a position
        {L"Item", {Variant(0L)}, 9},
        {L"Item", {Variant(3L)}, 9},
        {L"Item", {null}, 13},
        {L"Item", {Variant(test::arg(1e12))}, 6},
        {L"Remove", {Variant(3L)}, 9},
        {L"Add", {x, Variant(L"ACÇÃO")}, 457},
        {L"Add", {x, Variant(7L)}, 13},
        {L"Add", {x, missing_, Variant(L"c")}, 5},
        {L"Add", {x, missing_, Variant(3L)}, 9},
        {L"Add", {x, missing_, missing_, Variant(0L)}, 9},
        {L"Add", {x, missing_, Variant(1L), Variant(1L)}, 5},
    };
    for (const auto& [member, arguments, error] : cases) {
        SCOPED_TRACE(testing::Message() << member << " error " << error);
        const test::Called called = call(member, arguments);
        EXPECT_EQ(called.outcome, DISP_E_EXCEPTION);
        EXPECT_EQ(called.error, runtime(error));
        EXPECT_EQ(called.source, L"VelaUtil10");
        EXPECT_FALSE(called.description.empty());
        EXPECT_EQ(all(), L"ab");
    }
    EXPECT_EQ(call(L"Add").outcome, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(CollectionsCollection, HoldsTheValueThatAVariableHad) {
    Variant variable(L"v");
    test::call(collection_.Get(), L"Add", {test::byReference(variable)});
    variable = Variant(L"other");
    EXPECT_EQ(all(), L"v");
}

}  // namespace
}  // namespace vela
