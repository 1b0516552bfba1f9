// Keys and values of the registry that are there. Contents are counted, and stored, as bytes of the
// ANSI code page (see text/ansi_bytes.h); names may hold any character. Nothing here makes a key.
//
// Every function returns the system's code of the first call that failed, or ERROR_SUCCESS. Names
// end at their first NUL. Throws std::bad_alloc.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace vela {

// The handle of a predefined key, from its number.
HKEY rootKey(long number);

// Reads the first 512 bytes' worth of a value of any type as text: without NULs, trimmed of spaces.
// ERROR_MORE_DATA when the value is longer. `content` is set on success only.
LONG readRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                      std::wstring& content);

// Stores a REG_SZ of as many bytes as `content` has characters: no terminator.
LONG writeRegistryText(HKEY root, std::wstring_view key, std::wstring_view value,
                       std::wstring_view content);

// The name of the subkey at a position, from 0; ERROR_NO_MORE_ITEMS behind the last. `found` is set
// on success only.
LONG registrySubkey(HKEY root, std::wstring_view key, DWORD index, std::wstring& found);

// Deletes a child, which must have no children of its own. No child has the empty name.
LONG deleteRegistryKey(HKEY root, std::wstring_view key, std::wstring_view child);
LONG deleteRegistryValue(HKEY root, std::wstring_view key, std::wstring_view value);

}  // namespace vela
