// The library-wide instances that accessors hand out.
//
// Each is made on its first request and lives until the library goes. Nothing may run when the
// module is detached, so the instances are released at the last CoUninitialize of the thread that
// made the first of them, while COM still works; objects with unsaved state save it then.
#pragma once

#include <functional>
#include <memory>

#include "contract.h"

namespace vela {

using MakeShared = std::function<std::shared_ptr<void>()>;

// The instance under `key`, made by `make` when there is none. `isObject` tells that it is a
// pointer to a COM object, which callers may hold too.
std::shared_ptr<void> sharedSlot(const GUID& key, const MakeShared& make, bool isObject);

// Has `action` run once at the end of the apartment, before the shared instances are released; once
// more after that when their release asks for it again.
void atApartmentEnd(void (*action)());

// Whether callers hold no object of this library. The shared instances are then released, so that
// the module may be unloaded. False on threads other than the one that owns them.
bool releaseIfUnused();

// A new object of a creatable class; E_NOTIMPL when the class is declared but not offered yet.
ComPtr<IUnknown> createInstance(const CLSID& id);

// The shared instance of the class whose default interface is `Interface`.
template <class Interface, class Make>
ComPtr<Interface> sharedInstance(Make&& make) {
    const auto slot = sharedSlot(
        ClassOf<Interface>::id(),
        [&] {
            ComPtr<Interface> object = make();
            return std::shared_ptr<void>(
                object.Detach(), [](void* held) { static_cast<Interface*>(held)->Release(); });
        },
        true);
    return static_cast<Interface*>(slot.get());
}
template <class Interface>
ComPtr<Interface> sharedInstance() {
    return sharedInstance<Interface>([] {
        ComPtr<Interface> object;
        check(createInstance(ClassOf<Interface>::id()).As(&object));
        return object;
    });
}

}  // namespace vela
