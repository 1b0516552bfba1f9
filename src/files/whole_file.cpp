#include "files/whole_file.h"

#include <algorithm>
#include <cstring>

#include "files/full_path.h"

namespace vela {

namespace {

constexpr wchar_t kSiblingSuffix[] = L".vela.tmp";  // no file of anybody else's
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kShortPatience = 100;  // ms
constexpr DWORD kPause = 10;           // ms
constexpr DWORD kOneCall = 16 << 20;

DWORD writeAll(HANDLE file, const void* content, std::size_t size) {
    const auto* from = static_cast<const char*>(content);
    while (size > 0) {
        DWORD written = 0;
        const DWORD part = static_cast<DWORD>((std::min<std::size_t>)(size, kOneCall));
        if (!WriteFile(file, from, part, &written, nullptr)) return GetLastError();
        from += written;
        size -= written;
    }
    return ERROR_SUCCESS;
}

DWORD flushed(HANDLE file) { return FlushFileBuffers(file) ? ERROR_SUCCESS : GetLastError(); }

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

FileReading::FileReading(const std::wstring& path, DWORD patience) : patience_(patience) {
    if (isDevice(path)) error_ = ERROR_INVALID_NAME;
    else open(path);
    LARGE_INTEGER size{};
    if (error_ != ERROR_SUCCESS) return;
    if (!GetFileSizeEx(file_.get(), &size)) error_ = GetLastError();
    else if (size.QuadPart > 0x7FFFFFFF) error_ = ERROR_FILE_TOO_LARGE;
    else size_ = static_cast<std::size_t>(size.QuadPart);
}

void FileReading::open(const std::wstring& path) {
    do {
        file_.reset(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        error_ = file_ ? DWORD{ERROR_SUCCESS} : GetLastError();
    } while (waitedAfter(error_));
}

// Whether the error may be gone now: it tells of others' use, and there was patience left.
bool FileReading::waitedAfter(DWORD error) {
    const bool inUse = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
    if (!inUse || patience_ == 0) return false;
    const DWORD pause = (std::min)(patience_, kPause);
    Sleep(pause);
    patience_ -= pause;
    return true;
}

std::size_t FileReading::read(void* into, std::size_t size) {
    auto* to = static_cast<char*>(into);
    std::size_t done = 0;
    while (error_ == ERROR_SUCCESS && done < size) {
        DWORD read = 0;
        const DWORD part = static_cast<DWORD>((std::min<std::size_t>)(size - done, kOneCall));
        if (!ReadFile(file_.get(), to + done, part, &read, nullptr)) {
            const DWORD error = GetLastError();
            if (!waitedAfter(error)) error_ = error;
        } else if (read == 0) {
            break;
        }
        done += read;
    }
    return done;
}

DWORD readWholeFile(const std::wstring& path, Bytes& content, DWORD patience) {
    content.clear();
    FileReading file(path, patience);
    content.resize(file.size());
    content.resize(file.read(content.data(), content.size()));
    if (file.error() != ERROR_SUCCESS) content.clear();
    return file.error();
}

DWORD writeNewFile(const std::wstring& path, const void* content, std::size_t size) {
    if (isDevice(path)) return ERROR_INVALID_NAME;
    const KernelHandle file(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                        CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return GetLastError();
    DWORD error = writeAll(file.get(), content, size);
    if (error == ERROR_SUCCESS) error = flushed(file.get());
    if (error != ERROR_SUCCESS) deleteOnClose(file.get());
    return error;
}

FileReplacement::FileReplacement(const std::wstring& path, DWORD patience)
    : path_(linkedFile(path)) {
    error_ = path.empty() || isDevice(path) ? DWORD{ERROR_INVALID_NAME} : open(patience);
    // A process killed earlier may have left content.
    if (error_ == ERROR_SUCCESS && !SetEndOfFile(sibling_.get())) error_ = GetLastError();
}

FileReplacement::~FileReplacement() {
    if (sibling_) deleteOnClose(sibling_.get());
}

DWORD FileReplacement::open(DWORD patience) {
    const std::wstring name = path_ + kSiblingSuffix;
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        // Nobody else may write to the sibling: that makes it the lock, too. Once it has the file's
        // name, others may read it.
        sibling_.reset(CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                                   OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr));
        if (sibling_) return ERROR_SUCCESS;
        const DWORD error = GetLastError();
        // A sibling that is being deleted denies access, and so does a folder that may not be
        // written in: there is little sense in waiting long for that one.
        const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING;
        const bool denied = error == ERROR_ACCESS_DENIED;
        // Asked once: the sibling may be gone the next moment.
        const DWORD attributes = GetFileAttributesW(name.c_str());
        const bool folder =
            attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
        const DWORD left = held ? patience : denied ? (std::min)(patience, kShortPatience) : 0;
        if (folder || GetTickCount64() - start >= left) return error;
        Sleep(kPause);
    }
}

DWORD FileReplacement::append(const void* content, std::size_t size) {
    if (error_ == ERROR_SUCCESS) error_ = writeAll(sibling_.get(), content, size);
    return error_;
}

DWORD FileReplacement::commit(DWORD attributes) {
    if (error_ != ERROR_SUCCESS) return error_;
    const DWORD old = GetFileAttributesW(path_.c_str());
    if (old != INVALID_FILE_ATTRIBUTES) {
        if (old & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) {
            return error_ = ERROR_ACCESS_DENIED;
        }
        attributes = old;
    }
    setAttributes(sibling_.get(), attributes);
    error_ = renameOver(sibling_.get(), path_);
    // Others wait for the sibling no longer; while it is open they could not replace the file.
    if (error_ == ERROR_SUCCESS) sibling_.reset();
    return error_;
}

DWORD FileReplacement::commit(const void* content, std::size_t size, DWORD attributes) {
    if (append(content, size) == ERROR_SUCCESS) error_ = flushed(sibling_.get());
    return commit(attributes);
}

}  // namespace vela
