#include "frame/registration.h"

#include <functional>

#include "automation/type_info.h"
#include "frame/class_table.h"
#include "runtime/handles.h"
#include "runtime/type_library.h"

namespace vela {

namespace {

constexpr SYSKIND kSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

void checkRegistry(LSTATUS status) { check(HRESULT_FROM_WIN32(status)); }

// While it lives, what this process writes below HKEY_CLASSES_ROOT (the platform's type library
// functions included) goes to the machine's or the user's classes.
class ClassesRoot {
  public:
    explicit ClassesRoot(RegistrationScope scope) {
        const HKEY root = scope == RegistrationScope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
        RegistryKey classes;
        checkRegistry(RegCreateKeyExW(root, L"Software\\Classes", 0, nullptr, 0,
                                      KEY_READ | KEY_WRITE, nullptr, classes.put(), nullptr));
        checkRegistry(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes.get()));
    }
    ~ClassesRoot() { RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr); }
    ClassesRoot(const ClassesRoot&) = delete;
    ClassesRoot& operator=(const ClassesRoot&) = delete;
};

void write(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    RegistryKey opened;
    checkRegistry(RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                                  opened.put(), nullptr));
    checkRegistry(RegSetValueExW(opened.get(), name, 0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(value.c_str()),
                                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))));
}

void removeTree(const std::wstring& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    if (status == ERROR_FILE_NOT_FOUND) return;
    checkRegistry(status);
    // Some versions empty the key and leave it.
    RegDeleteKeyW(HKEY_CLASSES_ROOT, key.c_str());
}

std::wstring braced(const GUID& id) {
    wchar_t buffer[40];
    StringFromGUID2(id, buffer, ARRAYSIZE(buffer));
    return buffer;
}

struct LibraryAttributes {
    GUID id;
    WORD major, minor;
    LCID locale;
};

LibraryAttributes describe(ITypeLib* library) {
    TLIBATTR* found = nullptr;
    check(library->GetLibAttr(&found));
    const LibraryAttributes attributes{found->guid, found->wMajorVerNum, found->wMinorVerNum,
                                       found->lcid};
    library->ReleaseTLibAttr(found);
    return attributes;
}

std::wstring nameOf(ITypeLib* library, INT index) {
    Bstr name;
    check(library->GetDocumentation(index, name.put(), nullptr, nullptr, nullptr));
    return name.str();
}

// Calls `visit(id, progId)` for every class that the type library marks as creatable.
void eachCreatableClass(ITypeLib* library,
                        const std::function<void(const GUID&, const std::wstring&)>& visit) {
    const std::wstring libraryName = nameOf(library, -1);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        check(library->GetTypeInfo(i, &info));
        const auto attributes = attributesOf(info.Get());
        const bool creatable = attributes && attributes->typekind == TKIND_COCLASS &&
                               (attributes->wTypeFlags & TYPEFLAG_FCANCREATE);
        if (creatable)
            visit(attributes->guid, libraryName + L"." + nameOf(library, static_cast<INT>(i)));
    }
}

void registerClass(const GUID& id, const std::wstring& progId, const LibraryAttributes& library,
                   const std::wstring& path) {
    const std::wstring key = L"CLSID\\" + braced(id);
    write(key, nullptr, progId);
    write(key + L"\\InprocServer32", nullptr, path);
    write(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    write(key + L"\\ProgID", nullptr, progId);
    write(key + L"\\Programmable", nullptr, L"");
    write(key + L"\\TypeLib", nullptr, braced(library.id));
    write(key + L"\\Version", nullptr,
          std::to_wstring(library.major) + L"." + std::to_wstring(library.minor));
    write(progId, nullptr, progId);
    write(progId + L"\\CLSID", nullptr, braced(id));
}

}  // namespace

HRESULT registerLibrary(RegistrationScope scope) {
    const HRESULT outcome = guard([&] {
        const ComPtr<ITypeLib> library = loadTypeLibrary();
        const LibraryAttributes attributes = describe(library.Get());
        std::wstring path = modulePath();
        const ClassesRoot root(scope);
        check(RegisterTypeLib(library.Get(), path.data(), nullptr));
        eachCreatableClass(library.Get(), [&](const GUID& id, const std::wstring& progId) {
            if (creatorOf(id)) registerClass(id, progId, attributes, path);
        });
    });
    if (FAILED(outcome)) unregisterLibrary(scope);
    return outcome;
}

HRESULT unregisterLibrary(RegistrationScope scope) {
    return guard([&] {
        const ComPtr<ITypeLib> library = loadTypeLibrary();
        const LibraryAttributes attributes = describe(library.Get());
        const ClassesRoot root(scope);
        eachCreatableClass(library.Get(), [&](const GUID& id, const std::wstring& progId) {
            removeTree(L"CLSID\\" + braced(id));
            removeTree(progId);
        });
        const HRESULT outcome = UnRegisterTypeLib(attributes.id, attributes.major, attributes.minor,
                                                  attributes.locale, kSystem);
        // Either means that there was nothing to remove, depending on the platform.
        if (outcome != TYPE_E_REGISTRYACCESS && outcome != E_INVALIDARG) check(outcome);
    });
}

}  // namespace vela
