// The type library that stands as a resource in this module.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace vela {

// The module that this code is in, and its path.
HMODULE moduleHandle();
std::wstring modulePath();
// The type library, loaded on first use and kept; null with the failure in `outcome`. Borrowed.
ITypeLib* typeLibrary(HRESULT* outcome = nullptr);
// The description of one interface or class.
HRESULT typeInfoOf(const GUID& id, ITypeInfo** info);

}  // namespace vela
