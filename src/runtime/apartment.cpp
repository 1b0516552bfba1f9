#include "runtime/apartment.h"

#include <objbase.h>

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "automation/object.h"

namespace vela {

namespace {

// What goes may make anew what it needs for that, but not for ever; the rest is left behind.
constexpr int kMostEndings = 1000;

// Told by COM when the thread's apartment is about to end. It has no state, and lives as long as
// the module.
class ApartmentSpy : public IInitializeSpy {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = id == IID_IUnknown || id == IID_IInitializeSpy ? this : nullptr;
        return *result ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override {
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD references) override;
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override { return S_OK; }
};

constinit ApartmentSpy spy;
constinit std::atomic<long> apartments = 0;

class Apartment {
  public:
    Apartment() {
        check(CoRegisterInitializeSpy(&spy, &cookie_));
        ++apartments;
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() {
        ending_ = true;
        for (int i = 0; i < kMostEndings && !things_.empty(); ++i) {
            const auto last = std::move(things_.back());
            things_.pop_back();
            last.second->end();
        }
        for (auto& [key, thing] : things_) static_cast<void>(thing.release());
        CoRevokeInitializeSpy(cookie_);
        --apartments;
    }

    detail::ApartmentThing* find(std::size_t key) const {
        const auto found = std::find_if(things_.begin(), things_.end(),
                                        [&](const auto& thing) { return thing.first == key; });
        return found == things_.end() ? nullptr : found->second.get();
    }
    detail::ApartmentThing& add(std::size_t key, std::unique_ptr<detail::ApartmentThing> thing) {
        return *things_.emplace_back(key, std::move(thing)).second;
    }
    bool isEnding() const { return ending_; }
    bool holdsCachesOnly() const {
        return std::all_of(things_.begin(), things_.end(),
                           [](const auto& thing) { return thing.second->isCache(); });
    }

  private:
    // In the order in which they were made.
    std::vector<std::pair<std::size_t, std::unique_ptr<detail::ApartmentThing>>> things_;
    ULARGE_INTEGER cookie_{};
    bool ending_ = false;
};

// Plain pointers need no destructor, which a thread could run when the module is gone already.
constinit thread_local Apartment* current = nullptr;

// It is still this thread's while it ends: what goes may ask for what was made before it.
void endApartment() {
    if (current && current->isEnding()) return;
    delete current;
    current = nullptr;
}

HRESULT ApartmentSpy::PreUninitialize(DWORD references) {
    if (references == 1) endApartment();
    return S_OK;
}

}  // namespace

bool releaseIfUnused() {
    if (liveObjects != 0 || apartments > (current ? 1 : 0)) return false;
    if (current && (current->isEnding() || !current->holdsCachesOnly())) return false;
    endApartment();
    return liveObjects == 0 && apartments == 0;
}

namespace detail {

std::size_t nextThingKey() {
    static constinit std::atomic<std::size_t> last = 0;
    return ++last;
}

ApartmentThing* findThing(std::size_t key) { return current ? current->find(key) : nullptr; }

ApartmentThing& keepThing(std::size_t key, std::unique_ptr<ApartmentThing> made) {
    if (!current) current = new Apartment;
    ApartmentThing* const found = current->find(key);
    return found ? *found : current->add(key, std::move(made));
}

}  // namespace detail

}  // namespace vela
