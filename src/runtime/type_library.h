// The module that this code is in, and the type library that is its resource.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "automation/convert.h"

namespace vela {

HMODULE moduleHandle();
std::wstring modulePath();
// Throws Error when it cannot be loaded.
ComPtr<ITypeLib> loadTypeLibrary();

}  // namespace vela
