#include "automation/type_library.h"

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

ITypeLib* typeLibrary(HRESULT* outcome) {
    // Never released: the platform keeps one object per library file, and nothing of ours may run
    // when the module goes.
    static ITypeLib* library = nullptr;
    HRESULT result = S_OK;
    if (!library) result = LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library);
    if (outcome) *outcome = result;
    return library;
}

namespace {

// The second type library of this module, loaded and kept as the first; null when that fails.
ITypeLib* innerLibrary() {
    static ITypeLib* library = nullptr;
    if (!library) LoadTypeLibEx((modulePath() + L"\\2").c_str(), REGKIND_NONE, &library);
    return library;
}

}  // namespace

HRESULT typeInfoOf(const GUID& id, ITypeInfo** info) {
    HRESULT outcome = S_OK;
    ITypeLib* library = typeLibrary(&outcome);
    if (!library) return outcome;
    outcome = library->GetTypeInfoOfGuid(id, info);
    if (SUCCEEDED(outcome)) return outcome;
    ITypeLib* inner = innerLibrary();
    return inner ? inner->GetTypeInfoOfGuid(id, info) : outcome;
}

}  // namespace vela
