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
    std::wstring path;
    DWORD length = GetTempPathW(0, nullptr);
    // Another thread may set a longer one between the calls.
    while (length > path.size()) {
        path.resize(length);
        length = GetTempPathW(length, path.data());
    }
    path.resize(length);
    if (path.ends_with(L'\\')) path.pop_back();
    return path;
}

}  // namespace vela
