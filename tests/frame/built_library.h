// The built module as its users meet it: its type library and its exports.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "support/support.h"

namespace vela::test {

inline constexpr wchar_t kModuleName[] = L"Vela.Util.10.dll";

// Tests run in the folder of the built module.
inline std::wstring modulePath() {
    return (std::filesystem::current_path() / kModuleName).wstring();
}

inline std::wstring nameOf(ITypeInfo* info, MEMBERID member = MEMBERID_NIL) {
    Bstr name;
    info->GetDocumentation(member, name.put(), nullptr, nullptr, nullptr);
    return name.str();
}

// One description of the type library, with its attributes.
struct Described {
    ComPtr<ITypeInfo> info;
    TYPEATTR attributes;  // its pointers are not to be used
    std::wstring name;

    explicit Described(ComPtr<ITypeInfo> described) : info(std::move(described)) {
        TYPEATTR* found = nullptr;
        EXPECT_EQ(info->GetTypeAttr(&found), S_OK);
        attributes = *found;
        info->ReleaseTypeAttr(found);
        name = nameOf(info.Get());
    }
    // The interface that a class implements, or that an interface derives from; of a dual interface
    // -1 is the one of its virtual functions.
    Described implemented(UINT index) const {
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> found;
        EXPECT_EQ(info->GetRefTypeOfImplType(index, &reference), S_OK);
        EXPECT_EQ(info->GetRefTypeInfo(reference, &found), S_OK);
        return Described(found);
    }
    bool isClass() const { return attributes.typekind == TKIND_COCLASS; }
    // Whether this version makes objects of the class: three are still to come.
    bool isOffered() const {
        return (attributes.wTypeFlags & TYPEFLAG_FCANCREATE) && name != L"SecurityUtil" &&
               name != L"ExtractionManager" && name != L"ExtractionError";
    }
};

// Visits all that the built type library describes.
inline void eachDescription(const std::function<void(const Described&)>& visit) {
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library), S_OK);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfo(i, &info), S_OK);
        visit(Described(info));
    }
}

// A module loaded by its path. A copy under another path has objects and state of its own.
class Module {
  public:
    explicit Module(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
        EXPECT_NE(module_, nullptr);
    }
    ~Module() { FreeLibrary(module_); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    template <class... Parameters>
    HRESULT call(const char* name, Parameters... parameters) const {
        using Function = HRESULT(STDAPICALLTYPE*)(Parameters...);
        const auto function =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
        return function ? function(parameters...) : E_NOINTERFACE;
    }
    HRESULT classObject(const CLSID& id, ComPtr<IClassFactory>& factory) const {
        void** result = reinterpret_cast<void**>(factory.ReleaseAndGetAddressOf());
        return call<const CLSID&, const IID&, void**>("DllGetClassObject", id, IID_IClassFactory,
                                                      result);
    }
    template <class Interface>
    ComPtr<Interface> create() const {
        ComPtr<IClassFactory> factory;
        ComPtr<Interface> object;
        EXPECT_EQ(classObject(ClassOf<Interface>::id(), factory), S_OK);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
        return object;
    }

  private:
    HMODULE module_;
};

}  // namespace vela::test
