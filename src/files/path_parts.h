// The parts of a path, as text; nothing is looked up.
#pragma once

#include <string>
#include <string_view>

namespace vela {

// Everything up to and including the last backslash, slash or drive colon; empty when there is
// none.
std::wstring folderOf(std::wstring_view path);

}  // namespace vela
