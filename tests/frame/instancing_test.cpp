// Who may create what, and what a created object answers.
#include "frame/built_library.h"
#include "frame/class_table.h"

namespace vela {
namespace {

using test::Described;

TEST(FrameInstancing, GivesEveryObjectItsWholeFace) {
    int offered = 0;
    test::eachDescription([&](const Described& described) {
        if (!described.isClass() || !described.isOffered()) return;
        SCOPED_TRACE(testing::PrintToString(described.name));
        ++offered;
        const auto object = test::create((L"VelaUtil10." + described.name).c_str());
        const GUID& face = described.implemented(0).attributes.guid;
        ComPtr<IUnknown> answered;
        EXPECT_EQ(object.CopyTo(face, reinterpret_cast<void**>(answered.GetAddressOf())), S_OK);
        ComPtr<ISupportErrorInfo> errors;
        ASSERT_EQ(object.As(&errors), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(face), S_OK);
        EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
        ComPtr<IProvideClassInfo> provider;
        ComPtr<ITypeInfo> classInfo;
        ASSERT_EQ(object.As(&provider), S_OK);
        ASSERT_EQ(provider->GetClassInfo(&classInfo), S_OK);
        EXPECT_EQ(test::nameOf(classInfo.Get()), described.name);
    });
    EXPECT_GT(offered, 20);
}

TEST(FrameInstancing, MakesWholeObjectsOfOfferedClassesOnly) {
    const test::Module module(test::modulePath());
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(module.classObject(ClassOf<_UPManager>::id(), factory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_FALSE(factory);
    ASSERT_EQ(module.classObject(ClassOf<_KVItem>::id(), factory), S_OK);
    const auto outer = test::create(L"VelaUtil10.KVItem");
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(outer.Get(), IID_PPV_ARGS(&object)), CLASS_E_NOAGGREGATION);
    ComPtr<_UIItem> other;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&other)), E_NOINTERFACE);
}

}  // namespace
}  // namespace vela
