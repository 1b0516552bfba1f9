// Connection points: who hears an event, and what listeners may do meanwhile.
#include "automation/events.h"

#include <olectl.h>

#include "automation/late_objects.h"

namespace vela {
namespace {

class Source final : public Object<Source, Unbuilt<_Pulsar>> {
  public:
    void tick() { fire(1, {test::arg(7L)}); }
};

class AutomationEvents : public test::NoObjectsLeft {
  protected:
    void SetUp() override {
        ASSERT_EQ(source_.As(&container_), S_OK);
        ASSERT_EQ(container_->FindConnectionPoint(__uuidof(__Pulsar), &point_), S_OK);
    }
    // Connects a listener that logs its name, then does as told.
    DWORD advise(
        wchar_t name, std::function<HRESULT()> then = [] { return S_OK; }) {
        const auto sink = adopted(new test::LateObject);
        sink->invoked = [this, name, then](DISPID id, WORD, DISPPARAMS& call, auto&&...) {
            EXPECT_EQ(id, 1);
            EXPECT_EQ(call.rgvarg[0].lVal, 7);
            heard_ += name;
            return then();
        };
        DWORD cookie = 0;
        EXPECT_EQ(point_->Advise(sink.Get(), &cookie), S_OK);
        EXPECT_NE(cookie, 0u);
        return cookie;
    }
    std::wstring heard() {
        source_->tick();
        return std::exchange(heard_, {});
    }
    std::wstring heard_;
    ComPtr<Source> source_ = make<Source>();
    ComPtr<IConnectionPointContainer> container_;
    ComPtr<IConnectionPoint> point_;
};

TEST_F(AutomationEvents, ReachEveryListenerUntilItLeaves) {
    const DWORD first = advise(L'a');
    EXPECT_NE(first, advise(L'b'));
    EXPECT_EQ(heard(), L"ab");
    const LONG before = liveObjects;
    EXPECT_EQ(point_->Unadvise(first), S_OK);
    EXPECT_EQ(liveObjects, before - 1);
    EXPECT_EQ(point_->Unadvise(first), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(heard(), L"b");
}

TEST_F(AutomationEvents, ReachThoseConnectedAtTheStartWhoeverComesGoesOrFails) {
    DWORD cookies[2] = {};
    cookies[0] = advise(L'a', [&] {
        for (const DWORD cookie : cookies) point_->Unadvise(cookie);
        advise(L'c');
        return guard([] { throw Error{E_FAIL, L"listener", L"no"}; });
    });
    cookies[1] = advise(L'b');
    EXPECT_EQ(heard(), L"ab");
    ComPtr<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, &left), S_FALSE);
    EXPECT_EQ(heard(), L"c");
}

TEST_F(AutomationEvents, ConnectOnlyWhatFits) {
    ComPtr<IConnectionPoint> found;
    EXPECT_EQ(container_->FindConnectionPoint(__uuidof(__cTCP), &found), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(container_->FindConnectionPoint(IID_IDispatch, &found), S_OK);
    DWORD cookie = 7;
    EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
    // No listener: it has no IDispatch.
    EXPECT_EQ(point_->Advise(point_.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0u);
    // A class without events has no points.
    EXPECT_EQ(test::create(L"VelaUtil10.KVItem").As(&container_), E_NOINTERFACE);
}

}  // namespace
}  // namespace vela
