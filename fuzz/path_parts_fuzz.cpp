// Input: a path, each byte one unit. Its parts make the path again, and none holds a separator.
#include "files/core/path_parts.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include "files/core/dialog_filter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring path(data, data + size);
    const auto require = [](bool holds) {
        if (!holds) std::abort();
    };
    const vela::PathParts parts = vela::partsOf(path);
    const std::wstring file = vela::fileOf(path);
    require(vela::folderOf(path) == parts.folder && parts.folder + file == path);
    require(file.find_first_of(L"\\/:") == file.npos);
    const bool hasPoint = file.size() > parts.name.size();
    require(parts.name + (hasPoint ? L"." : L"") + parts.extension == file);

    const std::wstring server = vela::serverOf(path);
    const std::wstring drive = vela::driveOf(path);
    require(server.find_first_of(L"\\/") == server.npos);
    require(vela::driveOf(drive) == drive);
    require(drive.empty() || vela::serverOf(drive) == server);

    const std::wstring filter = vela::dialogFilter(path);
    require(filter.empty() || filter.ends_with(std::wstring(2, L'\0')));
    require(vela::defaultExtension(path).find_first_of(L"*?") == filter.npos);
    return 0;
}
