// Who may create what, and what a created object answers.
#include <algorithm>

#include "frame/built_library.h"
#include "frame/shared_instances.h"

namespace vela {
namespace {

using test::Described;
using test::eachDescription;

bool isOffered(const std::wstring& name) {
    return std::find(std::begin(test::kOfferedClasses), std::end(test::kOfferedClasses), name) !=
           std::end(test::kOfferedClasses);
}

TEST(FrameInstancing, MakesExactlyTheClassesThatAreOffered) {
    const test::Module module(test::modulePath());
    int offered = 0;
    eachDescription([&](const Described& described) {
        if (!described.isClass()) return;
        SCOPED_TRACE(testing::Message() << std::filesystem::path(described.name));
        const bool expected = isOffered(described.name);
        EXPECT_TRUE(!expected || described.isCreatable());
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
    EXPECT_EQ(offered, static_cast<int>(std::size(test::kOfferedClasses)));
}

TEST(FrameInstancing, GivesEveryObjectItsWholeFace) {
    eachDescription([](const Described& described) {
        if (!described.isClass() || !isOffered(described.name)) return;
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

TEST(FrameInstancing, SaysThatAnAccessorsClassIsNotOfferedYet) {
    struct Accessor {
        const wchar_t* object;
        const wchar_t* name;
        const wchar_t* given;  // the class
    };
    for (const auto& [object, name, given] : std::initializer_list<Accessor>{
             {L"VelaUtil10.MyUtil", L"MyMath", L"MathUtil"},
             {L"VelaUtil10.MyUtil", L"MyText", L"TextUtil"},
             {L"VelaUtil10.MyUtil", L"MyFile", L"FileUtil"},
             {L"VelaUtil10.MyUtil", L"MyDatetime", L"DatetimeUtil"},
             {L"VelaUtil10.MyUtil", L"MySys", L"SysUtil"},
             {L"VelaUtil10.MyUtil", L"MyRegistry", L"RegistryUtil"},
             {L"VelaUtil10.MyUtil", L"MySecurity", L"SecurityUtil"},
             {L"VelaUtil10.SysUtil", L"Directories", L"DirUtil"},
             {L"VelaUtil10.SysUtil", L"Geo", L"GeoUtil"},
             {L"VelaUtil10.SysUtil", L"Play", L"PlayUtil"},
             {L"VelaUtil10.SysUtil", L"EventHistory", L"EventHistory"}}) {
        const test::Called called = test::call(test::create(object).Get(), name);
        EXPECT_EQ(called.error, isOffered(given) ? S_OK : E_NOTIMPL) << name;
        EXPECT_EQ(called.result.vt == VT_DISPATCH && called.result.pdispVal, isOffered(given));
    }
}

}  // namespace
}  // namespace vela
