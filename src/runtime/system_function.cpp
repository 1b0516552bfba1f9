#include "runtime/system_function.h"

#include <windows.h>

namespace vela::detail {

void* addressOf(const wchar_t* library, const char* name) {
    // Never freed: its threads and callbacks may outlive the call.
    const HMODULE module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module ? reinterpret_cast<void*>(GetProcAddress(module, name)) : nullptr;
}

}  // namespace vela::detail
