#include "frame/class_table.h"

#include <algorithm>

#include "automation/counted.h"
#include "files/DirUtil.h"
#include "files/FileUtil.h"
#include "frame/Collection.h"
#include "frame/MyUtil.h"
#include "frame/SysUtil.h"
#include "frame/gUtil.h"
#include "frame/shared_instances.h"
#include "notifications/EventHistory.h"
#include "notifications/Notification.h"
#include "preferences/DPItem.h"
#include "preferences/KVItem.h"
#include "preferences/PPItem.h"
#include "preferences/Preferences.h"
#include "preferences/RPItem.h"
#include "preferences/RPManager.h"
#include "preferences/UIItem.h"
#include "security/Security.h"
#include "serialization/KeyValue.h"
#include "serialization/Serializer.h"
#include "serialization/Switches.h"
#include "system/GeoUtil.h"
#include "system/PlayUtil.h"
#include "system/RegistryUtil.h"
#include "system/cTCP.h"
#include "text/BubbleSort.h"
#include "text/DatetimeUtil.h"
#include "text/MathUtil.h"
#include "text/Quadrado.h"
#include "text/TextUtil.h"
#include "text/TickCount.h"

namespace vela {

LONG serverLocks = 0;

namespace {

struct Entry {
    const CLSID& id;
    CreateFunction create;
};

template <class Class>
Entry entry() {
    return {ClassOf<typename Class::Default>::id(), [](REFIID id, void** result) {
                return guard([&] { check(make<Class>()->QueryInterface(id, result)); });
            }};
}

class ClassFactory final : public Counted<IClassFactory> {
  public:
    explicit ClassFactory(CreateFunction create) : create_(create) {
        InterlockedIncrement(&liveObjects);
    }
    ~ClassFactory() override { InterlockedDecrement(&liveObjects); }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        return outer ? CLASS_E_NOAGGREGATION : create_(id, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock) InterlockedIncrement(&serverLocks);
        else InterlockedDecrement(&serverLocks);
        return S_OK;
    }

  private:
    CreateFunction create_;
};

}  // namespace

CreateFunction creatorOf(const CLSID& id) {
    static const Entry table[] = {
        entry<BubbleSort>(), entry<Collection>(),  entry<cTCP>(),         entry<DatetimeUtil>(),
        entry<DirUtil>(),    entry<DPItem>(),      entry<EventHistory>(), entry<FileUtil>(),
        entry<GeoUtil>(),    entry<gUtil>(),       entry<KeyValue>(),     entry<KVItem>(),
        entry<MathUtil>(),   entry<MyUtil>(),      entry<Notification>(), entry<PlayUtil>(),
        entry<PPItem>(),     entry<Preferences>(), entry<Quadrado>(),     entry<RegistryUtil>(),
        entry<RPItem>(),     entry<RPManager>(),   entry<Security>(),     entry<Serializer>(),
        entry<Switches>(),   entry<SysUtil>(),     entry<TextUtil>(),     entry<TickCount>(),
        entry<UIItem>(),
    };
    const auto found = std::find_if(std::begin(table), std::end(table),
                                    [&](const Entry& entry) { return entry.id == id; });
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
