#include "runtime/type_library.h"

#include "automation/object.h"
#include "runtime/apartment.h"

namespace vela {

HMODULE moduleHandle() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&moduleHandle), &module);
    return module;
}

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(moduleHandle(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeLib> loadTypeLibrary() {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library));
    return library;
}

namespace {

struct LoadedLibrary : ApartmentCache {
    const ComPtr<ITypeLib> library = loadTypeLibrary();
    ComPtr<ITypeLib> inner;  // of objects that callers cannot create
};

}  // namespace

HRESULT typeInfoOf(const GUID& id, ITypeInfo** info) noexcept {
    return guard([&] {
        auto& loaded = apartmentLocal<LoadedLibrary>();
        if (SUCCEEDED(loaded.library->GetTypeInfoOfGuid(id, info))) return;
        const std::wstring second = modulePath() + L"\\2";
        if (!loaded.inner) check(LoadTypeLibEx(second.c_str(), REGKIND_NONE, &loaded.inner));
        check(loaded.inner->GetTypeInfoOfGuid(id, info));
    });
}

}  // namespace vela
