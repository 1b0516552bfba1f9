// The type libraries that stand as resources in this module: the public one, and that of objects
// which callers cannot create.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace vela {

// The module that this code is in, and its path.
HMODULE moduleHandle();
std::wstring modulePath();
// The public type library, loaded on first use and kept; null with the failure in `outcome`.
// Borrowed.
ITypeLib* typeLibrary(HRESULT* outcome = nullptr);
// The description of one interface or class of either.
HRESULT typeInfoOf(const GUID& id, ITypeInfo** info);

}  // namespace vela
