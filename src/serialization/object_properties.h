// The properties of any object, by name: how its class declares them, and their values as text.
#pragma once

#include <memory>

#include "automation/late_properties.h"
#include "collections/core/keyed_collection.h"

namespace vela {

// A value as read, no object any more, as text, and the type that decides how it is written.
struct ReadValue {
    Variant value;
    std::wstring text;
    VARTYPE type;
};

// What a class declares is asked for once and kept until the apartment ends.
class ObjectProperties {
  public:
    explicit ObjectProperties(ComPtr<IDispatch> object);

    // The property of that name, in any case. What the class's type information does not list has
    // the object's own spelling where it tells that, else the one asked with, and type VT_EMPTY.
    // Throws Error 438 when the object has no such member, 91 when there is no object.
    DeclaredProperty find(const std::wstring& name) const;

    // An object with both FromString and ToString gives what ToString returns, any other object its
    // default property. The type is the declared one; the value's own where none is. Throws what
    // the object raises, and Error for what is no text.
    ReadValue read(const DeclaredProperty& property) const;

  private:
    ComPtr<IDispatch> object_;
    std::shared_ptr<const KeyedCollection<DeclaredProperty>> declared_;
};

// The property list that an object asks for itself, through ISerializable or a property named
// SerializableProperties; empty when it has neither or fails.
std::wstring ownPropertyList(IDispatch* object);

}  // namespace vela
