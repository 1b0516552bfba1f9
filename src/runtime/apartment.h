// What lives as long as an apartment.
//
// The library is apartment-threaded: every apartment that uses it has its own of all that is
// shared, and nothing of it is ever touched from another thread.
//
//     apartmentLocal<T>()
//
// is the apartment's own T, made on first use. Nothing may run when the module is detached, so it
// goes at the last CoUninitialize of its thread, while COM still works, the last made first. A T
// may have:
//
//     void end();                  called before it is destroyed; what it throws is dropped
//     base class ApartmentCache    it holds nothing that could not be made anew,
//     bool isEmpty() const;        or that only while this is true
#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>

#include "automation/error.h"

namespace vela {

// What holds only this lets the module go, and then goes with it.
struct ApartmentCache {};

// Whether nothing of the library is in use: no object, shared ones included, and in no apartment
// anything but caches. Those of this apartment are then released; while another one has some, the
// answer is no, for only its own thread may touch them.
bool releaseIfUnused();

namespace detail {

struct ApartmentThing {
    virtual ~ApartmentThing() = default;
    virtual void end() noexcept {}
    virtual bool isCache() const { return false; }
};

template <class T>
struct Held final : ApartmentThing {
    void end() noexcept override {
        if constexpr (requires { value.end(); }) quietly([&] { value.end(); });
    }
    bool isCache() const override {
        if constexpr (requires { value.isEmpty(); }) return value.isEmpty();
        return std::is_base_of_v<ApartmentCache, T>;
    }

    T value;
};

// A number of its own for each T.
std::size_t nextThingKey();
template <class T>
std::size_t thingKey() {
    static const std::size_t key = nextThingKey();
    return key;
}

// Null when the apartment has none.
ApartmentThing* findThing(std::size_t key);
// The thing that is there, or else `made`, which the apartment now owns. Throws when COM does not
// tell of the apartment's end.
ApartmentThing& keepThing(std::size_t key, std::unique_ptr<ApartmentThing> made);

}  // namespace detail

// Throws what making a T throws. The reference is good until the apartment ends.
template <class T>
T& apartmentLocal() {
    const std::size_t key = detail::thingKey<T>();
    detail::ApartmentThing* found = detail::findThing(key);
    // Making it may have asked for it.
    if (!found) found = &detail::keepThing(key, std::make_unique<detail::Held<T>>());
    return static_cast<detail::Held<T>*>(found)->value;
}

// The same; null when the apartment has none.
template <class T>
T* apartmentLocalIfAny() {
    detail::ApartmentThing* found = detail::findThing(detail::thingKey<T>());
    return found ? &static_cast<detail::Held<T>*>(found)->value : nullptr;
}

}  // namespace vela
