#include "files/file_state.h"

#include <windows.h>

#include "files/core/path_parts.h"
#include "files/full_path.h"
#include "files/special_folders.h"
#include "runtime/handles.h"

namespace vela {

namespace {

DWORD attributesOf(const std::wstring& path) {
    return isDevice(path) ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(path.c_str());
}

bool opens(const std::wstring& path, DWORD how, DWORD flags) {
    const DWORD others = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const KernelHandle file(CreateFileW(path.c_str(), GENERIC_WRITE | (flags ? DELETE : 0), others,
                                        nullptr, how, FILE_ATTRIBUTE_NORMAL | flags, nullptr));
    return static_cast<bool>(file);
}

}  // namespace

bool fileExists(const std::wstring& path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool isProbablyFile(const std::wstring& path) {
    const bool nothing = attributesOf(path) == INVALID_FILE_ATTRIBUTES;
    return nothing ? !partsOf(path).extension.empty() : fileExists(path);
}

bool canBeWritten(const std::wstring& path) {
    // To those who may do anything the platform can open a read-only file, too.
    const DWORD attributes = attributesOf(path);
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isDevice(path) || (isThere && (attributes & FILE_ATTRIBUTE_READONLY))) return false;
    return opens(path, OPEN_EXISTING, 0) || opens(path, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
}

std::wstring newTemporaryFile() {
    // Room first: a file that is made must be told of.
    std::wstring path(MAX_PATH, L'\0');
    const std::wstring folder = temporaryFolder();
    const bool made =
        !folder.empty() && GetTempFileNameW(folder.c_str(), L"vel", 0, path.data()) != 0;
    path.resize(made ? path.find(L'\0') : 0);
    return path;
}

}  // namespace vela
