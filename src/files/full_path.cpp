#include "files/full_path.h"

#include <windows.h>

namespace vela {

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

bool isDevice(const std::wstring& path) { return fullPath(path).starts_with(L"\\\\.\\"); }

}  // namespace vela
