// What type information tells of an object's properties.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <vector>

#include "automation/convert.h"

namespace vela {

// A property as its class declares it.
struct DeclaredProperty {
    std::wstring name;
    DISPID id;
    VARTYPE type;  // of its value; what is neither simple nor an alias of it is VT_USERDEFINED
};

// The type information of an object's default interface; null when it has none.
ComPtr<ITypeInfo> typeInformationOf(IDispatch* object);
// What a described interface is recognised by. An interface does not change under its id; the rest
// guards against one that did so while it was being written.
struct InterfaceIdentity {
    GUID id;
    WORD major, minor, functions, variables;

    bool operator==(const InterfaceIdentity&) const = default;
};
InterfaceIdentity identityOf(ITypeInfo* info);
// Those that can be read, and those that can be assigned by value, in the interface's order, those
// of the interfaces that it derives from first; none without type information.
std::vector<DeclaredProperty> readableProperties(ITypeInfo* info);
std::vector<DeclaredProperty> settableProperties(ITypeInfo* info);

}  // namespace vela
