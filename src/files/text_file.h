// Whole files as text: bytes through the ANSI code page (see text/ansi_bytes.h), and enciphered
// text (see text/text_transforms.h). Everything here throws Error when it fails, and
// std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

#include "automation/convert.h"

namespace vela {

// The content as it is when the file is opened, also while others write to it.
Bstr readText(const std::wstring& path);

// Replaces the file, or makes a new one, in one step: whatever fails, and wherever the process is
// killed, the old content or the new is there. That is left to the system to bring to the disk, as
// with any file that a program writes; a power failure before that may cost both.
void writeText(const std::wstring& path, std::wstring_view text);

Bstr readEncrypted(const std::wstring& path, std::wstring_view key);
void writeEncrypted(const std::wstring& path, std::wstring_view text, std::wstring_view key);

// From one file to another, or to itself.
void encryptFile(const std::wstring& from, const std::wstring& to, std::wstring_view key);
void decryptFile(const std::wstring& from, const std::wstring& to, std::wstring_view key);

}  // namespace vela
