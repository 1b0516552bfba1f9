#include "files/path_parts.h"

namespace vela {

std::wstring folderOf(std::wstring_view path) {
    return std::wstring(path.substr(0, path.find_last_of(L"\\/:") + 1));
}

}  // namespace vela
