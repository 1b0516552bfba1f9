#include "system/RegistryUtil.h"

#include "system/registry.h"

namespace vela {

namespace {

// Answers with the code that `body` gives; a failure of our own is a code, too.
template <class Body>
HRESULT answerCode(LONG* result, Body&& body) {
    if (!result) return E_POINTER;
    if (!quietly([&] { *result = body(); })) *result = ERROR_NOT_ENOUGH_MEMORY;
    SetLastError(static_cast<DWORD>(*result));
    return S_OK;
}

// As answerCode(), for a `body` that puts a text into its argument: the caller's own changes when
// the code is success.
template <class Body>
HRESULT answerCode(LONG* result, BSTR* content, Body&& body) {
    return answerCode(result, [&]() -> LONG {
        if (!content) return ERROR_INVALID_PARAMETER;
        std::wstring found;
        const LONG code = body(found);
        if (code == ERROR_SUCCESS) rewrite(content, found);
        return code;
    });
}

}  // namespace

HRESULT RegistryUtil::GetRegistryValue(regChaves root, BSTR key, BSTR value, BSTR* content,
                                       LONG* result) {
    return answerCode(result, content, [&](std::wstring& found) {
        return readRegistryText(rootKey(root), text(key), text(value), found);
    });
}

HRESULT RegistryUtil::SetRegistryValue(regChaves root, BSTR key, BSTR value, BSTR* content,
                                       LONG* result) {
    return answerCode(result, [&]() -> LONG {
        if (!content) return ERROR_INVALID_PARAMETER;
        return writeRegistryText(rootKey(root), text(key), text(value), text(*content));
    });
}

HRESULT RegistryUtil::GetFirstKey(regChaves root, BSTR key, BSTR* content, LONG* result) {
    index_ = 0;
    return GetNextKey(root, key, content, result);
}

HRESULT RegistryUtil::GetNextKey(regChaves root, BSTR key, BSTR* content, LONG* result) {
    return answerCode(result, content, [&](std::wstring& found) {
        const LONG code = registrySubkey(rootKey(root), text(key), index_, found);
        if (code == ERROR_SUCCESS) ++index_;
        return code;
    });
}

HRESULT RegistryUtil::DeleteKey(regChaves root, BSTR key, BSTR child, LONG* result) {
    return answerCode(result,
                      [&] { return deleteRegistryKey(rootKey(root), text(key), text(child)); });
}

HRESULT RegistryUtil::DeleteValue(regChaves root, BSTR key, BSTR value, LONG* result) {
    return answerCode(result,
                      [&] { return deleteRegistryValue(rootKey(root), text(key), text(value)); });
}

HRESULT ClassOf<_RegistryUtil>::create(REFIID id, void** result) {
    return createObject<RegistryUtil>(id, result);
}

}  // namespace vela
