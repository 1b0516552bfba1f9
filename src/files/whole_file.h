// Reading a file whole, and replacing one so that it is never seen half-written.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vela {

using Bytes = std::vector<std::byte>;

// ERROR_SUCCESS, or why the file could not be read; `content` is complete or empty. Files of 2 GB
// and more are refused with ERROR_FILE_TOO_LARGE.
DWORD readWholeFile(const std::wstring& path, Bytes& content);

// Makes a new file; ERROR_FILE_EXISTS when there is one. None is left behind by another failure.
DWORD writeNewFile(const std::wstring& path, const void* content, std::size_t size);

// Replaces one file. From its construction to its commit or end, others who replace the same file
// in this way wait: what is read meanwhile is still true when it is replaced. The new content goes
// into a sibling file (".tmp" appended to the name), is flushed to the disk, and takes the place of
// the old one in a single step; a process killed at any point leaves the old content or the new.
// The new file has the access rights that its folder gives to new files.
class FileReplacement {
  public:
    // Waits for others up to five seconds.
    explicit FileReplacement(const std::wstring& path);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // ERROR_SUCCESS, or why the file cannot be replaced.
    DWORD error() const { return error_; }
    // Replaces the file, at most once. The attributes of the old one are kept; where there is none
    // the new one gets `attributes`. A read-only file is not replaced.
    DWORD commit(const void* content, std::size_t size, DWORD attributes);

  private:
    std::wstring path_;
    HANDLE sibling_ = INVALID_HANDLE_VALUE;
    DWORD error_ = ERROR_SUCCESS;
};

}  // namespace vela
