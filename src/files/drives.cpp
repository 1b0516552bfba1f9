#include "files/drives.h"

#include <windows.h>

#include <winnetwk.h>

#include <cwchar>

#include "files/core/path_parts.h"
#include "files/full_path.h"

namespace vela {

namespace {

// A letter alone stands for its drive.
std::wstring located(const std::wstring& path) {
    const bool isLetter = path.size() == 1 && !driveOf(path + L":").empty();
    return fullPath(isLetter ? path + L":\\" : path);
}

// The share that a drive stands for; empty when it stands for none.
std::wstring shareBehind(const std::wstring& drive) {
    DWORD size = MAX_PATH;
    std::wstring share(size, L'\0');
    DWORD error = WNetGetConnectionW(drive.c_str(), share.data(), &size);
    if (error == ERROR_MORE_DATA) {
        share.resize(size);
        error = WNetGetConnectionW(drive.c_str(), share.data(), &size);
    }
    return error == NO_ERROR ? share.c_str() : L"";
}

}  // namespace

std::vector<std::wstring> driveLetters() {
    std::vector<std::wstring> letters;
    for (DWORD drives = GetLogicalDrives(), bit = 0; drives != 0; drives >>= 1, ++bit) {
        if (drives & 1) letters.emplace_back(1, static_cast<wchar_t>(L'A' + bit));
    }
    return letters;
}

std::wstring driveHolding(const std::wstring& path) { return driveOf(located(path)); }

std::wstring serialNumber(const std::wstring& path) {
    const std::wstring full = located(path);
    std::wstring root(full.size() + 2, L'\0');
    DWORD number = 0;
    if (full.empty() || driveOf(full).empty() ||
        !GetVolumePathNameW(full.c_str(), root.data(), static_cast<DWORD>(root.size())) ||
        !GetVolumeInformationW(root.c_str(), nullptr, 0, &number, nullptr, nullptr, nullptr, 0)) {
        return L"";
    }
    wchar_t digits[9];
    swprintf(digits, ARRAYSIZE(digits), L"%08lX", number);
    return digits;
}

SharePath sharePath(const std::wstring& path) {
    const std::wstring full = fullPath(path);
    const std::wstring drive = driveOf(full);
    const std::wstring share = shareBehind(drive);
    if (share.empty()) return {full, serverOf(full)};
    return {share + full.substr(full.find(L':') + 1), serverOf(share)};
}

}  // namespace vela
