#include "files/delete_file.h"

#include <windows.h>

namespace vela {

bool deleteFile(const std::wstring& path) { return !path.empty() && DeleteFileW(path.c_str()); }

}  // namespace vela
