// The registry entries by which COM finds the library.
#pragma once

#include <windows.h>

namespace vela {

enum class RegistrationScope { Machine, User };

// Enters the type library and every class that callers can create, as the type library's own flags
// tell. On failure nothing stays behind.
HRESULT registerLibrary(RegistrationScope scope);
// Removes all that registerLibrary() enters, of this bitness. Succeeds when nothing was there.
HRESULT unregisterLibrary(RegistrationScope scope);

}  // namespace vela
