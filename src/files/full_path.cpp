#include "files/full_path.h"

#include <windows.h>

#include "files/core/path_parts.h"
#include "runtime/handles.h"

namespace vela {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool isReparsePoint(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// Only to ask about it. The missing file that a link leads to is made, until the handle is closed.
KernelHandle opened(const std::wstring& path) {
    KernelHandle found(CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                   FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (found || !isReparsePoint(path)) return found;
    return KernelHandle(CreateFileW(path.c_str(), DELETE, kShareAll, nullptr, CREATE_NEW,
                                    FILE_FLAG_DELETE_ON_CLOSE, nullptr));
}

// Where the file or folder is once all links are followed; empty when that cannot be told.
std::wstring finalPath(const std::wstring& path) {
    const KernelHandle file = opened(path);
    std::wstring final(GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0), L'\0');
    final.resize(
        GetFinalPathNameByHandleW(file.get(), final.data(), static_cast<DWORD>(final.size()), 0));
    return final;
}

bool equal(const std::wstring& one, const std::wstring& other) {
    return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

bool isDevice(const std::wstring& path) { return fullPath(path).starts_with(L"\\\\.\\"); }

std::wstring linkedFile(const std::wstring& path) {
    const std::wstring full = fullPath(path);
    if (isDevice(full)) return path;
    std::wstring folder = finalPath(folderOf(full));
    const std::wstring file = finalPath(full);
    if (folder.empty() || file.empty()) return path;
    // All but a link is where its folder is. Nothing but the places tells: not everywhere do the
    // attributes of a link show that it is one.
    if (!folder.ends_with(L'\\')) folder += L'\\';
    return equal(folder + fileOf(full), file) ? path : file;
}

}  // namespace vela
