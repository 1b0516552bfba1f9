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
};

}  // namespace

HRESULT typeInfoOf(const GUID& id, ITypeInfo** info) noexcept {
    return guard(
        [&] { check(apartmentLocal<LoadedLibrary>().library->GetTypeInfoOfGuid(id, info)); });
}

}  // namespace vela
