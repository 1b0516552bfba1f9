// How many objects exist, and the base of small ones with one interface of the platform's:
// reference count and identity.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>

namespace vela {

// Of all classes: while there are any, the module is in use.
inline constinit std::atomic<long> liveObjects = 0;

// The first base of whatever others may hold: it counts to the very end of the object, when all the
// rest of it has let go of what it held.
struct LiveObject {
    LiveObject() { ++liveObjects; }
    LiveObject(const LiveObject&) = delete;
    LiveObject& operator=(const LiveObject&) = delete;

  protected:
    ~LiveObject() { --liveObjects; }
};

// Begins with one reference, which goes to whoever made the object.
template <class Interface>
class Counted : LiveObject, public Interface {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) final {
        if (!result) return E_POINTER;
        *result = nullptr;
        const bool known = id == __uuidof(IUnknown) || id == __uuidof(Interface) || isAlso(id);
        if (!known) return E_NOINTERFACE;
        AddRef();
        *result = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return InterlockedIncrement(&references_); }
    ULONG STDMETHODCALLTYPE Release() final {
        const ULONG left = InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~Counted() = default;
    // Whether `id` is another name of the interface.
    virtual bool isAlso(REFIID) const { return false; }

  private:
    LONG references_ = 1;
};

}  // namespace vela
