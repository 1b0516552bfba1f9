// The system's folders. Paths end without a separator; empty where the system knows none.
#pragma once

#include <string>

namespace vela {

// By the platform's number for it, CSIDL_...
std::wstring specialFolder(int number);

// The user's folder for temporary files.
std::wstring temporaryFolder();

}  // namespace vela
