#include "frame/class_table.h"

#include <algorithm>

#include "automation/counted.h"

namespace vela {

constinit std::atomic<long> serverLocks = 0;

namespace {

struct Entry {
    const GUID& (*id)();
    CreateFunction create;
};

template <class Interface>
constexpr Entry entry() {
    return {ClassOf<Interface>::id, ClassOf<Interface>::create};
}

class ClassFactory final : public Counted<IClassFactory> {
  public:
    explicit ClassFactory(CreateFunction create) : create_(create) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        return outer ? CLASS_E_NOAGGREGATION : create_(id, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        serverLocks += lock ? 1 : -1;
        return S_OK;
    }

  private:
    CreateFunction create_;
};

}  // namespace

CreateFunction creatorOf(const CLSID& id) {
    static constexpr Entry table[] = {
        entry<_BubbleSort>(), entry<_Collection>(),  entry<_cTCP>(),         entry<_DatetimeUtil>(),
        entry<_DirUtil>(),    entry<_DPItem>(),      entry<_EventHistory>(), entry<_FileUtil>(),
        entry<_GeoUtil>(),    entry<_gUtil>(),       entry<_KeyValue>(),     entry<_KVItem>(),
        entry<_MathUtil>(),   entry<_MyUtil>(),      entry<_Notification>(), entry<_PlayUtil>(),
        entry<_PPItem>(),     entry<_Preferences>(), entry<_Quadrado>(),     entry<_RegistryUtil>(),
        entry<_RPItem>(),     entry<_RPManager>(),   entry<_Security>(),     entry<_Serializer>(),
        entry<_Switches>(),   entry<_SysUtil>(),     entry<_TextUtil>(),     entry<_TickCount>(),
        entry<_UIItem>(),
    };
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [&](const Entry& entry) { return entry.id() == id; });
    return found == std::end(table) ? nullptr : found->create;
}

HRESULT makeClassFactory(CreateFunction create, REFIID id, void** result) {
    return guard([&] {
        const ComPtr<IClassFactory> factory = adopted(new ClassFactory(create));
        check(factory.CopyTo(id, result));
    });
}

ComPtr<IUnknown> createInstance(const CLSID& id) {
    const CreateFunction create = creatorOf(id);
    if (!create) raiseNotImplemented();
    ComPtr<IUnknown> object;
    check(create(IID_PPV_ARGS(&object)));
    return object;
}

}  // namespace vela
