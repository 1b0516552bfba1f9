// Deleting a file.
#pragma once

#include <string>

namespace vela {

// Deletes one file, hidden ones too. False, without an error, when there is no such file or it may
// not be deleted (read-only, in use, a folder). Wildcards are not expanded.
bool deleteFile(const std::wstring& path);

}  // namespace vela
