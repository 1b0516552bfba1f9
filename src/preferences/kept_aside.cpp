#include "preferences/kept_aside.h"

#include "automation/error.h"
#include "files/whole_file.h"

namespace vela {

namespace {

constexpr int kMostCopies = 1000;

std::wstring copyName(const std::wstring& fileName, int number) {
    return fileName + (number == 0 ? L"" : L"." + std::to_wstring(number)) + L".bad";
}

bool exists(const std::wstring& name) {
    return GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// ERROR_FILE_EXISTS when the name is taken. Nobody else takes it between question and answer.
DWORD keepAs(const std::wstring& name, std::span<const std::byte> content, DWORD attributes) {
    FileReplacement copy(name);
    if (copy.error() == ERROR_SUCCESS && exists(name)) return ERROR_FILE_EXISTS;
    return copy.commit(content.data(), content.size(), attributes);
}

}  // namespace

void keepAside(const std::wstring& fileName, std::span<const std::byte> content) {
    const DWORD found = GetFileAttributesW(fileName.c_str());
    const DWORD attributes = found == INVALID_FILE_ATTRIBUTES ? FILE_ATTRIBUTE_NORMAL : found;
    DWORD error = ERROR_FILE_EXISTS;
    for (int i = 0; i < kMostCopies && error == ERROR_FILE_EXISTS; ++i) {
        error = keepAs(copyName(fileName, i), content, attributes);
    }
    if (error == ERROR_SUCCESS) return;
    throw Error{HRESULT_FROM_WIN32(error), kLibraryName,
                L"The unreadable document cannot be kept aside: " + fileName};
}

}  // namespace vela
