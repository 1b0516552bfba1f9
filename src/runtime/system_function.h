// Functions of system libraries that few programs need: loaded on first use, so that nobody else
// pays for them, and from the system's own folder only.
#pragma once

namespace vela {

namespace detail {
void* addressOf(const wchar_t* library, const char* name);
}

// Sets `function` to an exported function; false when the library or the function is not there.
template <class Function>
bool findFunction(Function& function, const wchar_t* library, const char* name) {
    function = reinterpret_cast<Function>(detail::addressOf(library, name));
    return function != nullptr;
}

}  // namespace vela
