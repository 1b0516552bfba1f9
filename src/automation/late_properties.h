// What type information tells of an object's properties.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <vector>

namespace vela {

// The names of the properties that can be assigned by value, in the order of the object's default
// interface; none when it has no type information.
std::vector<std::wstring> settableProperties(IDispatch* object);

}  // namespace vela
