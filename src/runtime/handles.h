// One owner for every kind of handle that the platform gives out.
//
// An owner holds one handle or none, and closes it once: at its own end, or when it is to hold
// another one. Closing leaves the thread's last error alone, which may still have to be read.
//
// What there is to know of a kind is in a class:
//
//     using Handle = ...;
//     static Handle none();                what is held instead of a handle
//     static bool isOpen(Handle handle);   whether there is something to close
//     static void close(Handle handle);
//
// Kinds whose headers few need stand beside their use.
#pragma once

#include <windows.h>

#include <utility>

namespace vela {

template <class Traits>
class Owner {
  public:
    using Handle = typename Traits::Handle;

    Owner() = default;
    explicit Owner(Handle handle) : handle_(handle) {}
    Owner(Owner&& other) noexcept : handle_(other.release()) {}
    Owner& operator=(Owner&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~Owner() { reset(); }

    explicit operator bool() const { return Traits::isOpen(handle_); }
    Handle get() const { return handle_; }
    // Where a callee is to put a handle; the one held now is closed.
    Handle* put() {
        reset();
        return &handle_;
    }
    Handle release() { return std::exchange(handle_, Traits::none()); }
    void reset(Handle handle = Traits::none()) {
        const Handle old = std::exchange(handle_, handle);
        if (!Traits::isOpen(old)) return;
        const DWORD error = GetLastError();
        Traits::close(old);
        SetLastError(error);
    }

  private:
    Handle handle_ = Traits::none();
};

// For kinds where null is no handle.
template <class Type>
struct NullIsNone {
    using Handle = Type;
    static Handle none() { return nullptr; }
    static bool isOpen(Handle handle) { return handle != nullptr; }
};

// For kinds where some functions give INVALID_HANDLE_VALUE instead.
struct NullOrInvalidIsNone : NullIsNone<HANDLE> {
    static bool isOpen(HANDLE handle) { return handle && handle != INVALID_HANDLE_VALUE; }
};

struct KernelHandleTraits : NullOrInvalidIsNone {
    static void close(HANDLE handle) { CloseHandle(handle); }
};
// A file, a process, an access token.
using KernelHandle = Owner<KernelHandleTraits>;

struct SearchHandleTraits : NullOrInvalidIsNone {
    static void close(HANDLE search) { FindClose(search); }
};
// A search for files.
using SearchHandle = Owner<SearchHandleTraits>;

struct RegistryKeyTraits : NullIsNone<HKEY> {
    static void close(HKEY key) { RegCloseKey(key); }
};
using RegistryKey = Owner<RegistryKeyTraits>;

struct ServiceHandleTraits : NullIsNone<SC_HANDLE> {
    static void close(SC_HANDLE service) { CloseServiceHandle(service); }
};
// A service, or the manager of a computer's services.
using ServiceHandle = Owner<ServiceHandleTraits>;

struct GlobalMemoryTraits : NullIsNone<HGLOBAL> {
    static void close(HGLOBAL memory) { GlobalFree(memory); }
};
using GlobalMemory = Owner<GlobalMemoryTraits>;

template <class Type>
struct LocalMemoryTraits : NullIsNone<Type*> {
    static void close(Type* memory) { LocalFree(memory); }
};
// What the platform allocates for a caller to free: here, a Type or several.
template <class Type>
using LocalMemory = Owner<LocalMemoryTraits<Type>>;

struct ScreenContextTraits : NullIsNone<HDC> {
    static void close(HDC screen) { ReleaseDC(nullptr, screen); }
};
// The device context of the whole screen, as GetDC(nullptr) lends it.
using ScreenContext = Owner<ScreenContextTraits>;

}  // namespace vela
