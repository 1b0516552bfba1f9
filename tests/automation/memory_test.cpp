// When memory ends, a member fails: nothing of C++ leaves an interface.
#include "automation/late_objects.h"
#include "frame/built_library.h"
#include "frame/class_table.h"
#include "notifications/NotificationEventArgs.h"
#include "notifications/shared_hub.h"
#include "preferences/Section.h"
#include "preferences/UPUtil.h"
#include "support/allocation.h"

namespace vela {
namespace {

using test::Described;
using test::FailingAllocation;

// Runs `body` again and again, each time with the next of its allocations failing; the number of
// the runs.
template <class Body>
int failEach(Body body) {
    for (int count = 1;; ++count) {
        const FailingAllocation failing(count);
        body();
        if (!failing.happened()) return count;
    }
}

// An object of every class that one can have.
std::vector<ComPtr<IDispatch>> oneOfEach() {
    std::vector<ComPtr<IDispatch>> objects;
    test::eachDescription([&](const Described& described) {
        const CreateFunction create = creatorOf(described.attributes.guid);
        if (!described.isClass() || !create) return;
        objects.emplace_back();
        EXPECT_EQ(create(IID_PPV_ARGS(&objects.back())), S_OK);
    });
    const auto add = [&](auto object) { EXPECT_EQ(object.As(&objects.emplace_back()), S_OK); };
    for (const SectionKind* kind : {&kPPSection, &kUISection, &kDPSection, &kKVSection}) {
        add(makeSection(*kind));
    }
    add(makeSection(kRPSection));
    const auto preferences = make<UPUtil>();
    add(preferences);
    add(test::got<ComPtr<_UPManager>>(preferences.Get(), &_UPUtil::get_ActiveUPM));
    add(test::got<ComPtr<_UPDataSources>>(preferences.Get(), &_UPUtil::get_ActiveDataSources));
    add(make<NotificationEventArgs>(1, L"A tag of more than a few characters", nullptr));
    add(sharedNotifications());
    add(sharedPulsar());
    return objects;
}

std::vector<DISPID> propertiesOf(ITypeInfo* info, UINT count) {
    std::vector<DISPID> properties;
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        EXPECT_EQ(info->GetFuncDesc(i, &function), S_OK);
        const bool plain = function->invkind == INVOKE_PROPERTYGET && function->cParams == 0;
        if (plain && function->memid >= 0) properties.push_back(function->memid);
        info->ReleaseFuncDesc(function);
    }
    return properties;
}

TEST(AutomationMemory, EndsInAnErrorWhereverItEnds) {
    int runs = 0;
    for (const auto& object : oneOfEach()) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(object->GetTypeInfo(0, 0, &info), S_OK);
        const Described described(info);
        SCOPED_TRACE(testing::PrintToString(described.name));
        for (const DISPID property : propertiesOf(info.Get(), described.attributes.cFuncs)) {
            SCOPED_TRACE(property);
            runs += failEach([&] {
                Variant value;
                DISPPARAMS none{};
                const HRESULT outcome = object->Invoke(property, IID_NULL, 0, DISPATCH_PROPERTYGET,
                                                       &none, &value, nullptr, nullptr);
                EXPECT_TRUE(outcome == S_OK || outcome == DISP_E_EXCEPTION) << outcome;
            });
        }
        ComPtr<IProvideClassInfo> provider;
        ASSERT_EQ(object.As(&provider), S_OK);
        runs += failEach([&] {
            ComPtr<ITypeInfo> again;
            object->GetTypeInfo(0, 0, &again);
            provider->GetClassInfo(again.ReleaseAndGetAddressOf());
        });
    }
    EXPECT_GT(runs, 200);
}

}  // namespace
}  // namespace vela
