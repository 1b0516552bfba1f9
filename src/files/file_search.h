// Files by a path with wildcards in its last part, as the platform matches them: * any run of
// characters, ? any one. Hidden files count, folders and devices do not; nothing that matches is no
// failure.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vela {

std::size_t countFiles(const std::wstring& mask);

// Their names, without the folder, in the order in which the file system gives them.
std::vector<std::wstring> namesOfFiles(const std::wstring& mask);

}  // namespace vela
