// Who may create what, and what a created object answers.
#include "frame/built_library.h"
#include "frame/shared_instances.h"

namespace vela {
namespace {

using test::Described;
using test::eachDescription;

TEST(FrameInstancing, MakesExactlyTheClassesThatAreOffered) {
    const test::Module module(test::modulePath());
    int offered = 0;
    eachDescription([&](const Described& described) {
        if (!described.isClass()) return;
        SCOPED_TRACE(testing::Message() << std::filesystem::path(described.name));
        const bool expected = described.isOffered();
        offered += expected;

        ComPtr<IClassFactory> factory;
        EXPECT_EQ(module.classObject(described.attributes.guid, factory),
                  expected ? S_OK : CLASS_E_CLASSNOTAVAILABLE);
        EXPECT_EQ(bool(factory), expected);
        ComPtr<IUnknown> object;
        EXPECT_EQ(CoCreateInstance(described.attributes.guid, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_PPV_ARGS(&object)),
                  expected ? S_OK : REGDB_E_CLASSNOTREG);
        CLSID found;
        EXPECT_EQ(SUCCEEDED(CLSIDFromProgID((L"VelaUtil10." + described.name).c_str(), &found)),
                  expected);
    });
    EXPECT_GT(offered, 20);
}

TEST(FrameInstancing, GivesEveryObjectItsWholeFace) {
    eachDescription([](const Described& described) {
        if (!described.isClass() || !described.isOffered()) return;
        SCOPED_TRACE(testing::Message() << std::filesystem::path(described.name));
        const auto object = test::create((L"VelaUtil10." + described.name).c_str());
        const Described face = described.implemented(0);
        ComPtr<IUnknown> answered;
        EXPECT_EQ(
            object.CopyTo(face.attributes.guid, reinterpret_cast<void**>(answered.GetAddressOf())),
            S_OK);
        ComPtr<ISupportErrorInfo> errors;
        ASSERT_EQ(object.As(&errors), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(face.attributes.guid), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
        ComPtr<IProvideClassInfo> classInfo;
        ComPtr<ITypeInfo> own;
        ASSERT_EQ(object.As(&classInfo), S_OK);
        ASSERT_EQ(classInfo->GetClassInfo(&own), S_OK);
        EXPECT_EQ(test::nameOf(own.Get()), described.name);

        // Late binding gives members the numbers that compiled clients have from the type library.
        UINT count = 0;
        ComPtr<ITypeInfo> typeInfo;
        EXPECT_EQ(object->GetTypeInfoCount(&count), S_OK);
        EXPECT_EQ(count, 1u);
        ASSERT_EQ(object->GetTypeInfo(0, 0, &typeInfo), S_OK);
        EXPECT_EQ(object->GetTypeInfo(1, 0, &own), DISP_E_BADINDEX);
        const Described members = Described(typeInfo).implemented(static_cast<UINT>(-1));
        for (UINT i = 0; i < members.attributes.cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            ASSERT_EQ(members.info->GetFuncDesc(i, &function), S_OK);
            std::wstring name = test::nameOf(members.info.Get(), function->memid);
            wchar_t* names = name.data();
            DISPID id = DISPID_UNKNOWN;
            EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
            EXPECT_EQ(id, function->memid) << std::filesystem::path(name);
            members.info->ReleaseFuncDesc(function);
        }
    });
}

TEST(FrameInstancing, RefusesAggregation) {
    const test::Module module(test::modulePath());
    ComPtr<IClassFactory> factory;
    ASSERT_EQ(module.classObject(ClassOf<_KVItem>::id(), factory), S_OK);
    const auto outer = test::create(L"VelaUtil10.KVItem");
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(outer.Get(), IID_PPV_ARGS(&object)), CLASS_E_NOAGGREGATION);
    ComPtr<_UIItem> other;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&other)), E_NOINTERFACE);
}

}  // namespace
}  // namespace vela
