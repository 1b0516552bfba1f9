// SysUtil as scripts use it: the last error record, and helpers for anybody's collections.
#include "frame/SysUtil.h"

#include "support/support.h"

namespace vela {
namespace {

using test::arg;
using test::byReference;

class FrameSysUtil : public test::NoObjectsLeft {
  protected:
    // The result as text, or "error".
    std::wstring call(const wchar_t* name, std::vector<VARIANT> arguments) {
        const test::Called called = test::call(sys_.Get(), name, std::move(arguments));
        return called.outcome == S_OK ? textOf(called.result) : L"error";
    }
    std::wstring exists(VARIANT collection, const wchar_t* key) {
        return call(L"ExisteNaCollection", {collection, Variant(key)});
    }
    static void expectNoErrorLeft() {
        ComPtr<IErrorInfo> left;
        EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
    }
    ComPtr<_SysUtil> sys_ = make<SysUtil>();
};

// A collection of this library or of another, with one entry of the same text as its key.
Variant collection(const wchar_t* progId) {
    const auto made = test::create(progId);
    test::call(made.Get(), L"Add", {Variant(L"chave"), Variant(L"chave")}, DISPATCH_METHOD);
    return Variant(made.Get());
}
constexpr const wchar_t* kCollections[] = {L"VelaUtil10.Collection", L"Scripting.Dictionary"};

std::wstring countOf(const Variant& object) {
    return textOf(test::call(object.pdispVal, L"Count", {}, DISPATCH_PROPERTYGET).result);
}

TEST_F(FrameSysUtil, RecordsTheLastErrorForEveryObject) {
    call(L"SaveMyError", {arg(1L), arg(3021L), Variant(L"Sem registo"), Variant(L"Lista")});
    sys_ = make<SysUtil>();
    EXPECT_EQ(call(L"MyError", {arg(5L)}), L"(Lista) 3021 - Sem registo");
    call(L"SaveMyError", {arg(0L), arg(0L), Variant(), Variant()});
    EXPECT_EQ(call(L"MyError", {arg(5L)}), L"() 0 - ");
}

TEST_F(FrameSysUtil, FindsKeysInAnybodysCollection) {
    for (const wchar_t* progId : kCollections) {
        Variant variable = collection(progId);
        EXPECT_EQ(exists(byReference(variable), L"chave"), L"True");
        EXPECT_EQ(exists(variable, L"outra"), L"False");
        EXPECT_EQ(countOf(variable), L"1");  // asking adds nothing
    }
    EXPECT_EQ(exists(Variant(static_cast<IDispatch*>(nullptr)), L"chave"), L"False");
    EXPECT_EQ(exists(Variant(sys_.Get()), L"chave"), L"False");
    EXPECT_EQ(exists(arg(1L), L"chave"), L"error");
    expectNoErrorLeft();
}

TEST_F(FrameSysUtil, EmptiesAnybodysCollection) {
    for (const wchar_t* progId : kCollections) {
        Variant variable = collection(progId);
        EXPECT_EQ(call(L"ClearCollection", {byReference(variable)}), L"");
        EXPECT_EQ(countOf(variable), L"0");
    }
    // What is none is left alone, and let go of all the same.
    Variant noCollection(sys_.Get());
    Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(call(L"ClearCollection", {byReference(noCollection), arg(true)}), L"");
    EXPECT_EQ(noCollection.pdispVal, nullptr);
    EXPECT_EQ(call(L"ClearCollection", {byReference(nothing), arg(true)}), L"");
    expectNoErrorLeft();
}

}  // namespace
}  // namespace vela
