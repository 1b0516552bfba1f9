// Which classes callers can create, and how.
#pragma once

#include <atomic>

#include "contract.h"
#include "runtime/shared_instances.h"

namespace vela {

using CreateFunction = HRESULT (*)(REFIID id, void** result);

// The function that creates objects of a class; null for classes that callers cannot create or that
// are declared only.
CreateFunction creatorOf(const CLSID& id);

// The class object that COM asks for.
HRESULT makeClassFactory(CreateFunction create, REFIID id, void** result);

// A new object of a creatable class. Throws E_NOTIMPL when the class is declared and not offered.
ComPtr<IUnknown> createInstance(const CLSID& id);

// The apartment's shared instance of a creatable class, by its default interface.
template <class Interface>
ComPtr<Interface> sharedUtility() {
    return sharedInstance<Interface>([] {
        ComPtr<Interface> object;
        check(createInstance(ClassOf<Interface>::id()).As(&object));
        return object;
    });
}

// How many times LockServer has been called for and not undone.
extern std::atomic<long> serverLocks;

}  // namespace vela
