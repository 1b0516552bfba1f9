#include "frame/shared_instances.h"

#include <algorithm>
#include <vector>

namespace vela {

namespace {

struct Slot {
    GUID key;
    std::shared_ptr<void> instance;
    bool isObject;
};

struct Registry;
Registry& registry();

// Told by COM when the thread's apartment is about to end.
class ApartmentSpy : public IInitializeSpy {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = id == IID_IUnknown || id == IID_IInitializeSpy ? this : nullptr;
        return *result ? S_OK : E_NOINTERFACE;
    }
    // It lives as long as the module.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override {
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD references) override;
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override { return S_OK; }
};

struct Registry {
    std::vector<Slot> slots;
    std::vector<void (*)()> endActions;
    ApartmentSpy spy;
    ULARGE_INTEGER cookie{};
    DWORD owner = 0;  // the thread whose end releases everything; 0 while there is nothing

    void watch() {
        if (owner != 0) return;
        owner = GetCurrentThreadId();
        if (FAILED(CoRegisterInitializeSpy(&spy, &cookie))) cookie.QuadPart = 0;
    }

    void releaseAll() {
        // Releasing may ask for new instances, and for new actions.
        do {
            for (void (*action)() : std::exchange(endActions, {})) action();
            // The last made first: it may use those made before it.
            while (!slots.empty()) {
                const Slot last = std::move(slots.back());
                slots.pop_back();
            }
        } while (!endActions.empty());
        if (cookie.QuadPart != 0) CoRevokeInitializeSpy(cookie);
        cookie.QuadPart = 0;
        owner = 0;
    }
};

// Never destroyed: nothing of ours may run when the module is detached.
Registry& registry() {
    static Registry& instance = *new Registry;
    return instance;
}

HRESULT ApartmentSpy::PreUninitialize(DWORD references) {
    if (references == 1) guard([] { registry().releaseAll(); });
    return S_OK;
}

bool heldByCallers(const Slot& slot) {
    auto* object = static_cast<IUnknown*>(slot.instance.get());
    object->AddRef();
    return object->Release() > 1;
}

}  // namespace

std::shared_ptr<void> sharedSlot(const GUID& key, const MakeShared& make, bool isObject) {
    Registry& all = registry();
    const auto find = [&] {
        return std::find_if(all.slots.begin(), all.slots.end(),
                            [&](const Slot& slot) { return slot.key == key; });
    };
    if (const auto found = find(); found != all.slots.end()) return found->instance;
    all.watch();
    std::shared_ptr<void> made = make();
    // Making it may have asked for it.
    if (const auto found = find(); found != all.slots.end()) return found->instance;
    all.slots.push_back({key, made, isObject});
    return made;
}

void atApartmentEnd(void (*action)()) {
    Registry& all = registry();
    all.watch();
    auto& actions = all.endActions;
    if (std::find(actions.begin(), actions.end(), action) == actions.end())
        actions.push_back(action);
}

bool releaseIfUnused() {
    Registry& all = registry();
    // Shared objects that hold others, such as started preferences, count as in use.
    const auto idle = std::count_if(all.slots.begin(), all.slots.end(), [](const Slot& slot) {
        return slot.isObject && !heldByCallers(slot);
    });
    if (liveObjects != idle) return false;
    if (all.owner == 0) return true;
    if (all.owner != GetCurrentThreadId()) return false;
    all.releaseAll();
    return liveObjects == 0;
}

}  // namespace vela
