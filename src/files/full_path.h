// Paths as the platform resolves them.
#pragma once

#include <string>

namespace vela {

// The path from its drive or share on, resolved by the current folder; empty for the empty path.
// Nothing need be there.
std::wstring fullPath(const std::wstring& path);

// Whether the platform takes the path for a device (NUL, C:\Data\CON, COM1:) and not for a file.
// Devices are never opened here: to read one may wait for ever.
bool isDevice(const std::wstring& path);

// The file that a symbolic link leads to, through as many links as there are, as a path behind
// "\\?\"; the path as given when it is no link. A link to a missing file leads to where that file
// would be; Wine does not show such a link, which therefore counts as a missing file itself.
std::wstring linkedFile(const std::wstring& path);

}  // namespace vela
