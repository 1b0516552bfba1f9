#include "files/core/path_parts.h"

namespace vela {

namespace {

constexpr std::wstring_view kSeparators = L"\\/";
constexpr auto kNone = std::wstring_view::npos;

std::size_t folderLength(std::wstring_view path) { return path.find_last_of(L"\\/:") + 1; }

bool isSeparator(wchar_t unit) { return kSeparators.find(unit) != kNone; }

bool isDriveLetter(wchar_t unit) {
    return (unit >= L'A' && unit <= L'Z') || (unit >= L'a' && unit <= L'z');
}

// "server\share\..." of a path on a share; empty for other paths, of devices too.
std::wstring_view sharePart(std::wstring_view path) {
    std::wstring_view share;
    if (path.starts_with(L"\\\\?\\UNC\\")) share = path.substr(8);
    else if (path.size() > 2 && isSeparator(path[0]) && isSeparator(path[1]))
        share = path.substr(2);
    const bool isDevice = share.starts_with(L'.') || share.starts_with(L'?');
    return isDevice && (share.size() == 1 || isSeparator(share[1])) ? std::wstring_view() : share;
}

}  // namespace

std::wstring folderOf(std::wstring_view path) {
    return std::wstring(path.substr(0, folderLength(path)));
}

std::wstring fileOf(std::wstring_view path) {
    return std::wstring(path.substr(folderLength(path)));
}

PathParts partsOf(std::wstring_view path) {
    PathParts parts{folderOf(path), fileOf(path), L""};
    const std::size_t point = parts.name.rfind(L'.');
    if (point == kNone || parts.name == L"." || parts.name == L"..") return parts;
    parts.extension = parts.name.substr(point + 1);
    parts.name.resize(point);
    return parts;
}

std::wstring driveOf(std::wstring_view path) {
    const std::wstring server = serverOf(path);
    if (!server.empty()) {
        const std::wstring_view share = sharePart(path).substr(server.size() + 1);
        const std::wstring_view name = share.substr(0, share.find_first_of(kSeparators));
        return name.empty() ? L"" : L"\\\\" + server + L"\\" + std::wstring(name);
    }
    if (path.starts_with(L"\\\\?\\")) path.remove_prefix(4);
    const bool onDrive = path.size() >= 2 && path[1] == L':' && isDriveLetter(path[0]);
    return std::wstring(path.substr(0, onDrive ? 2 : 0));
}

std::wstring serverOf(std::wstring_view path) {
    const std::wstring_view share = sharePart(path);
    const std::size_t end = share.find_first_of(kSeparators);
    return std::wstring(share.substr(0, end == kNone ? 0 : end));
}

}  // namespace vela
