// The instances that accessors hand out, one of each to an apartment.
//
// Each is made on its first request and lives until its apartment ends: hosts that free unused
// libraries do not make it lose what it holds.
#pragma once

#include "automation/object.h"
#include "runtime/apartment.h"

namespace vela {

namespace detail {

template <class Interface>
struct SharedInstance {
    bool isEmpty() const { return !object; }

    ComPtr<Interface> object;
};

}  // namespace detail

// The apartment's instance of the class whose default interface is `Interface`; `make` makes it.
// Throws what `make` throws.
template <class Interface, class Make>
ComPtr<Interface> sharedInstance(Make&& make) {
    auto& shared = apartmentLocal<detail::SharedInstance<Interface>>();
    if (!shared.object) {
        const ComPtr<Interface> made = make();
        // Making it may have asked for it.
        if (!shared.object) shared.object = made;
    }
    return shared.object;
}

}  // namespace vela
