#include "files/special_folders.h"

#include <windows.h>

#include <shlobj.h>

namespace vela {

std::wstring specialFolder(int number) {
    wchar_t path[MAX_PATH];
    const HRESULT outcome = SHGetFolderPathW(nullptr, number, nullptr, SHGFP_TYPE_CURRENT, path);
    return outcome == S_OK ? path : L"";
}

std::wstring temporaryFolder() {
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(ARRAYSIZE(path), path);
    if (length == 0 || length >= ARRAYSIZE(path)) return L"";
    return std::wstring(path, length - (path[length - 1] == L'\\' ? 1 : 0));
}

}  // namespace vela
