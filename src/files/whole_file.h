// Reading a file whole, and replacing one so that it is never seen half-written.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "runtime/handles.h"

namespace vela {

using Bytes = std::vector<std::byte>;

// How long reading waits, in all, for others who keep the file or a part of it for themselves.
inline constexpr DWORD kMoment = 1000;    // ms
inline constexpr DWORD kPatience = 5000;  // ms

// Reads one file in parts, up to the size that it has when it is opened. Files of 2 GB and more are
// refused with ERROR_FILE_TOO_LARGE, devices with ERROR_INVALID_NAME. `patience` is in ms.
class FileReading {
  public:
    explicit FileReading(const std::wstring& path, DWORD patience = kMoment);

    // ERROR_SUCCESS, or why the file cannot be read (on).
    DWORD error() const { return error_; }
    // In bytes. Others may make the file shorter while it is read.
    std::size_t size() const { return size_; }
    // How many bytes of the next `size` were read; fewer at the end and after an error.
    std::size_t read(void* into, std::size_t size);

  private:
    void open(const std::wstring& path);
    bool waitedAfter(DWORD error);

    DWORD patience_;  // ms, what is left of it
    KernelHandle file_;
    std::size_t size_ = 0;
    DWORD error_ = ERROR_SUCCESS;
};

// ERROR_SUCCESS, or why the file could not be read; `content` is complete or empty.
DWORD readWholeFile(const std::wstring& path, Bytes& content, DWORD patience = kMoment);

// Makes a new file; ERROR_FILE_EXISTS when there is one. None is left behind by another failure.
DWORD writeNewFile(const std::wstring& path, const void* content, std::size_t size);

// Replaces one file. From its construction to its commit or end, others who replace the same file
// in this way wait: what is read meanwhile is still true when it is replaced. The new content goes
// into a sibling file (".vela.tmp" appended to the name) and takes the place of the old one in a
// single step; a process killed at any point leaves the old content or the new. Content that is
// flushed to the disk before that step holds against a power failure, too. The new file has the
// access rights that its folder gives to new files. A symbolic link stays, and the file that it
// leads to is replaced: the sibling is beside that one.
class FileReplacement {
  public:
    // Waits for others up to `patience` ms.
    explicit FileReplacement(const std::wstring& path, DWORD patience = kPatience);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // ERROR_SUCCESS, or why the file cannot be replaced.
    DWORD error() const { return error_; }
    // Adds to the new content.
    DWORD append(const void* content, std::size_t size);
    // Replaces the file, at most once. The attributes of the old one are kept; where there is none
    // the new one gets `attributes`. A read-only file is not replaced.
    DWORD commit(DWORD attributes);
    // Replaces the file by `content`, flushed to the disk.
    DWORD commit(const void* content, std::size_t size, DWORD attributes);

  private:
    DWORD open(DWORD patience);

    std::wstring path_;
    KernelHandle sibling_;
    DWORD error_ = ERROR_SUCCESS;
};

}  // namespace vela
