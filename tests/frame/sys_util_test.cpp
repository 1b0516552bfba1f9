// SysUtil as scripts use it: the last error record, and helpers for anybody's collections.
#include "frame/SysUtil.h"

#include "frame/Collection.h"
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
        const Bstr reference(key);
        return call(L"ExisteNaCollection", {collection, arg(reference)});
    }
    ComPtr<_SysUtil> sys_ = make<SysUtil>();
};

// A registered Scripting.Dictionary with one entry, as callers also pass.
Variant dictionary() {
    const auto made = test::create(L"Scripting.Dictionary");
    const Bstr key(L"chave");
    EXPECT_EQ(test::call(made.Get(), L"Add", {arg(key), arg(1L)}, DISPATCH_METHOD).outcome, S_OK);
    return Variant(made.Get());
}

Variant collection() {
    const auto made = make<Collection>();
    made->entries().add(Variant(1L), L"chave");
    made->entries().add(Variant(2L));
    return Variant(static_cast<_Collection*>(made.Get()));
}

std::wstring countOf(const Variant& object) {
    return textOf(test::call(object.pdispVal, L"Count", {}, DISPATCH_PROPERTYGET).result);
}

TEST_F(FrameSysUtil, RecordsTheLastErrorForEveryObject) {
    const Bstr description(L"Sem registo");
    const Bstr source(L"Lista");
    call(L"SaveMyError", {arg(1L), arg(3021L), arg(description), arg(source)});
    sys_ = make<SysUtil>();
    EXPECT_EQ(call(L"MyError", {arg(1L)}), L"1");
    EXPECT_EQ(call(L"MyError", {arg(5L)}), L"(Lista) 3021 - Sem registo");
    call(L"SaveMyError", {arg(0L), arg(0L), Variant(), Variant()});
    EXPECT_EQ(call(L"MyError", {arg(5L)}), L"() 0 - ");
    EXPECT_EQ(call(L"ErroDeRede", {arg(3186L)}), L"True");
    EXPECT_EQ(call(L"ErroDeRede", {arg(40000L)}), L"error");
    EXPECT_EQ(call(L"ErroDeRede", {Variant(sys_.Get())}), L"error");
}

TEST_F(FrameSysUtil, FindsKeysInAnybodysCollection) {
    Variant ours = collection();
    Variant theirs = dictionary();
    Variant nothing(static_cast<IDispatch*>(nullptr));
    Variant noCollection(sys_.Get());
    EXPECT_EQ(exists(byReference(ours), L"CHAVE"), L"True");
    EXPECT_EQ(exists(ours, L"outra"), L"False");
    EXPECT_EQ(exists(ours, L"1"), L"False");
    EXPECT_EQ(exists(theirs, L"chave"), L"True");
    EXPECT_EQ(exists(theirs, L"outra"), L"False");
    EXPECT_EQ(countOf(theirs), L"1");  // asking adds nothing
    EXPECT_EQ(exists(byReference(nothing), L"chave"), L"False");
    EXPECT_EQ(exists(noCollection, L"chave"), L"False");
    EXPECT_EQ(exists(arg(1L), L"chave"), L"error");
    ComPtr<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
}

TEST_F(FrameSysUtil, EmptiesAnybodysCollection) {
    for (Variant variable : {collection(), dictionary()}) {
        EXPECT_EQ(call(L"ClearCollection", {byReference(variable)}), L"");
        EXPECT_EQ(countOf(variable), L"0");
    }
    // By value, without the flag: emptied, and nothing to let go of.
    Variant byValue = collection();
    EXPECT_EQ(call(L"ClearCollection", {byValue}), L"");
    EXPECT_EQ(countOf(byValue), L"0");
    // What is none is left alone, and let go of all the same.
    Variant noCollection(sys_.Get());
    Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(call(L"ClearCollection", {byReference(noCollection), arg(true)}), L"");
    EXPECT_EQ(noCollection.pdispVal, nullptr);
    EXPECT_EQ(call(L"ClearCollection", {byReference(nothing), arg(true)}), L"");
    ComPtr<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
}

}  // namespace
}  // namespace vela
