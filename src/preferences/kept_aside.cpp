#include "preferences/kept_aside.h"

#include "automation/error.h"

namespace vela {

namespace {

constexpr int kMostCopies = 1000;

std::wstring copyName(const std::wstring& fileName, int number) {
    return fileName + (number == 0 ? L"" : L"." + std::to_wstring(number)) + L".bad";
}

}  // namespace

void keepAside(const std::wstring& fileName) {
    DWORD error = ERROR_FILE_EXISTS;
    for (int i = 0; i < kMostCopies && error == ERROR_FILE_EXISTS; ++i) {
        if (CopyFileW(fileName.c_str(), copyName(fileName, i).c_str(), TRUE)) return;
        error = GetLastError();
    }
    throw Error{HRESULT_FROM_WIN32(error), kLibraryName,
                L"The unreadable document cannot be kept aside: " + fileName};
}

}  // namespace vela
