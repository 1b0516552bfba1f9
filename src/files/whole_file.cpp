#include "files/whole_file.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vela {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kPatience = 5000;      // ms
constexpr DWORD kMoment = 1000;        // ms
constexpr DWORD kShortPatience = 100;  // ms
constexpr DWORD kPause = 10;           // ms
constexpr DWORD kOneCall = 16 << 20;

class Handle {
  public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (*this) CloseHandle(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

DWORD writeAll(HANDLE file, const void* content, std::size_t size) {
    const auto* from = static_cast<const char*>(content);
    while (size > 0) {
        DWORD written = 0;
        const DWORD part = static_cast<DWORD>((std::min<std::size_t>)(size, kOneCall));
        if (!WriteFile(file, from, part, &written, nullptr)) return GetLastError();
        from += written;
        size -= written;
    }
    return FlushFileBuffers(file) ? ERROR_SUCCESS : GetLastError();
}

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

// Gives the open file another name, in the place of a file that has it. That file may be open for a
// moment, in the hands of a reader.
DWORD renameOver(HANDLE file, const std::wstring& path) {
    const std::wstring target = fullPath(path);
    const std::size_t bytes = target.size() * sizeof(wchar_t);
    std::vector<std::byte> buffer(sizeof(FILE_RENAME_INFO) + bytes + sizeof(wchar_t));
    auto* info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    info->ReplaceIfExists = TRUE;
    info->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(info->FileName, target.data(), bytes);
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        if (SetFileInformationByHandle(file, FileRenameInfo, info,
                                       static_cast<DWORD>(buffer.size()))) {
            return ERROR_SUCCESS;
        }
        const DWORD error = GetLastError();
        const bool inUse = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        if (!inUse || GetTickCount64() - start > kMoment) return error;
        Sleep(kPause);
    }
}

void setAttributes(HANDLE file, DWORD attributes) {
    FILE_BASIC_INFO info{};
    info.FileAttributes = attributes;
    SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof info);
}

void deleteOnClose(HANDLE file) {
    FILE_DISPOSITION_INFO info{TRUE};
    SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info);
}

}  // namespace

DWORD readWholeFile(const std::wstring& path, Bytes& content) {
    content.clear();
    const Handle file(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return GetLastError();
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size)) return GetLastError();
    if (size.QuadPart > 0x7FFFFFFF) return ERROR_FILE_TOO_LARGE;
    content.resize(static_cast<std::size_t>(size.QuadPart));
    std::size_t done = 0;
    while (done < content.size()) {
        DWORD read = 0;
        const DWORD part =
            static_cast<DWORD>((std::min<std::size_t>)(content.size() - done, kOneCall));
        if (!ReadFile(file.get(), content.data() + done, part, &read, nullptr)) {
            content.clear();
            return GetLastError();
        }
        if (read == 0) break;
        done += read;
    }
    content.resize(done);
    return ERROR_SUCCESS;
}

DWORD writeNewFile(const std::wstring& path, const void* content, std::size_t size) {
    const Handle file(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return GetLastError();
    const DWORD error = writeAll(file.get(), content, size);
    if (error != ERROR_SUCCESS) deleteOnClose(file.get());
    return error;
}

FileReplacement::FileReplacement(const std::wstring& path) : path_(path) {
    const std::wstring name = path + L".tmp";
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        // Nobody else may write to the sibling: that makes it the lock, too. Once it has the file's
        // name, others may read it.
        sibling_ = CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                               OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
        if (sibling_ != INVALID_HANDLE_VALUE) {
            error_ = ERROR_SUCCESS;
            return;
        }
        error_ = GetLastError();
        // A sibling that is being deleted denies access, and so does a folder that may not be
        // written in: there is little sense in waiting long for that one.
        const bool held = error_ == ERROR_SHARING_VIOLATION || error_ == ERROR_DELETE_PENDING;
        const bool denied = error_ == ERROR_ACCESS_DENIED;
        // Asked once: the sibling may be gone the next moment.
        const DWORD attributes = GetFileAttributesW(name.c_str());
        const bool folder =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
        const ULONGLONG patience = held ? kPatience : denied ? kShortPatience : 0;
        if (folder || GetTickCount64() - start >= patience) return;
        Sleep(kPause);
    }
}

FileReplacement::~FileReplacement() {
    if (sibling_ == INVALID_HANDLE_VALUE) return;
    deleteOnClose(sibling_);
    CloseHandle(sibling_);
}

DWORD FileReplacement::commit(const void* content, std::size_t size, DWORD attributes) {
    if (error_ != ERROR_SUCCESS) return error_;
    const DWORD old = GetFileAttributesW(path_.c_str());
    if (old != INVALID_FILE_ATTRIBUTES) {
        if (old & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) {
            return error_ = ERROR_ACCESS_DENIED;
        }
        attributes = old;
    }
    // A process killed earlier may have left longer content.
    SetFilePointer(sibling_, 0, nullptr, FILE_BEGIN);
    if (!SetEndOfFile(sibling_)) return error_ = GetLastError();
    error_ = writeAll(sibling_, content, size);
    if (error_ != ERROR_SUCCESS) return error_;
    setAttributes(sibling_, attributes);
    error_ = renameOver(sibling_, path_);
    // Others wait for the sibling no longer; while it is open they could not replace the file.
    if (error_ == ERROR_SUCCESS) CloseHandle(std::exchange(sibling_, INVALID_HANDLE_VALUE));
    return error_;
}

}  // namespace vela
