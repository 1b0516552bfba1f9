// The parts of a path, as text; nothing is looked up.
#pragma once

#include <string>
#include <string_view>

namespace vela {

struct PathParts {
    std::wstring folder;     // up to and with the last separator: backslash, slash or drive colon
    std::wstring name;       // of the file, without its extension
    std::wstring extension;  // without its point
};

// The extension follows the last point of the file name. "." and "..", which stand for folders, are
// names without one.
PathParts partsOf(std::wstring_view path);

// The folder part alone, and all that follows it.
std::wstring folderOf(std::wstring_view path);
std::wstring fileOf(std::wstring_view path);

// "C:" of a path on a drive, "\\server\share" of one on a share, also behind "\\?\"; otherwise
// empty.
std::wstring driveOf(std::wstring_view path);
// "server" of a path on a share; otherwise empty.
std::wstring serverOf(std::wstring_view path);

}  // namespace vela
