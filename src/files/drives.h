// Drives, shares and volumes.
#pragma once

#include <string>
#include <vector>

namespace vela {

// The machine's drives, as "C".
std::vector<std::wstring> driveLetters();

// The drive or share of a path, as "C:" or "\\server\share". A letter alone is a drive, other
// relative paths go by the current folder. Empty for the empty path and for devices.
std::wstring driveHolding(const std::wstring& path);

// The number of the volume that holds the path, 8 hexadecimal digits; empty when there is none.
// Nothing else than the volume need be there.
std::wstring serialNumber(const std::wstring& path);

struct SharePath {
    std::wstring path;    // whole; by server and share where it is on one
    std::wstring server;  // its name; empty where the path is on no share
};
// Where a path is: also one that goes through a drive letter which stands for a share, or that is
// relative to a folder on one.
SharePath sharePath(const std::wstring& path);

}  // namespace vela
