// Which classes callers can create, and how.
#pragma once

#include "contract.h"

namespace vela {

using CreateFunction = HRESULT (*)(REFIID id, void** result);

// The function that creates objects of a class; null for classes that callers cannot create or that
// are declared only.
CreateFunction creatorOf(const CLSID& id);

// The class object that COM asks for.
HRESULT makeClassFactory(CreateFunction create, REFIID id, void** result);

// How many times LockServer has been called for and not undone.
extern LONG serverLocks;

}  // namespace vela
